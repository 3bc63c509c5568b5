polySphere("-n", "ball", "-sx", 6, "-sy", 4);
select(`ls -sl`);
selectType -v 1;
setToolTo PntPaintSkinWeightsTool;
currentCtx;
refresh -f;
pluginInfo -q -ls;
