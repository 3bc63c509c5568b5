// A cylinder along Y bound to a chain of three joints, with its mesh selected: a small scene
// to try the Vorel window on. Run it with `vorel-host -s samples/skinned-cylinder.cmd`.
polyCylinder -r 0.5 -h 4 -sx 12 -sy 8 -n body;
select -cl;
joint -p 0 -2 0 -n hip;
joint -p 0 0 0 -n knee;
joint -p 0 2 0 -n ankle;
skinCluster -n bodySkin -mi 3 hip knee ankle body;
select -r body;
