// The sample character: a figure of six meshes (3,156 vertices) on a skeleton of twenty
// joints, each mesh bound to the joints near it. A few vertices of the body are left broken on
// purpose, so that the Vorel window has something to show and fix:
//   body.vtx[450] and body.vtx[451]  six influences each, where the body allows four
//   body.vtx[480]                    weights summing to 1.35
//   body.vtx[481]                    weights summing to 0.7
// samples/character.vscene is made from this script; see the README for the command.

// The skeleton: the hips 10 units above the ground, the head at 17, arms along X.
joint -n root -p 0 10 0;
joint -n spine1 -p 0 11.5 0;
joint -n spine2 -p 0 13 0;
joint -n chest -p 0 14.5 0;
joint -n neck -p 0 16 0;
joint -n head -p 0 17 0;
select -r chest;
joint -n clavicleL -p 1 15.5 0;
joint -n shoulderL -p 2 15.5 0;
joint -n elbowL -p 4.5 15.5 0;
joint -n wristL -p 7 15.5 0;
select -r chest;
joint -n clavicleR -p -1 15.5 0;
joint -n shoulderR -p -2 15.5 0;
joint -n elbowR -p -4.5 15.5 0;
joint -n wristR -p -7 15.5 0;
select -r root;
joint -n hipL -p 1 9.5 0;
joint -n kneeL -p 1 5 0;
joint -n ankleL -p 1 0.5 0;
select -r root;
joint -n hipR -p -1 9.5 0;
joint -n kneeR -p -1 5 0;
joint -n ankleR -p -1 0.5 0;
select -cl;

// Each joint in a colour of its own, so that the weight table's columns tell them apart.
setAttr root.useObjectColor 1; setAttr root.objectColor 0;
setAttr spine1.useObjectColor 1; setAttr spine1.objectColor 1;
setAttr spine2.useObjectColor 1; setAttr spine2.objectColor 2;
setAttr chest.useObjectColor 1; setAttr chest.objectColor 3;
setAttr neck.useObjectColor 1; setAttr neck.objectColor 4;
setAttr head.useObjectColor 1; setAttr head.objectColor 5;
setAttr clavicleL.useObjectColor 1; setAttr clavicleL.objectColor 6;
setAttr shoulderL.useObjectColor 1; setAttr shoulderL.objectColor 7;
setAttr elbowL.useObjectColor 1; setAttr elbowL.objectColor 0;
setAttr wristL.useObjectColor 1; setAttr wristL.objectColor 1;
setAttr clavicleR.useObjectColor 1; setAttr clavicleR.objectColor 2;
setAttr shoulderR.useObjectColor 1; setAttr shoulderR.objectColor 3;
setAttr elbowR.useObjectColor 1; setAttr elbowR.objectColor 4;
setAttr wristR.useObjectColor 1; setAttr wristR.objectColor 5;
setAttr hipL.useObjectColor 1; setAttr hipL.objectColor 6;
setAttr kneeL.useObjectColor 1; setAttr kneeL.objectColor 7;
setAttr ankleL.useObjectColor 1; setAttr ankleL.objectColor 0;
setAttr hipR.useObjectColor 1; setAttr hipR.objectColor 1;
setAttr kneeR.useObjectColor 1; setAttr kneeR.objectColor 2;
setAttr ankleR.useObjectColor 1; setAttr ankleR.objectColor 3;

// The meshes, placed over the skeleton.
polyCylinder -n body -r 1.6 -h 7 -sx 32 -sy 28;
setAttr body.translate 0 12.5 0;
polySphere -n skull -r 1.1 -sx 24 -sy 16;
setAttr skull.translate 0 17.3 0;
polyCylinder -n armL -r 0.45 -h 6.5 -sx 16 -sy 26;
setAttr armL.translate 4.8 15.5 0;
setAttr armL.rotate 0 0 90;
polyCylinder -n armR -r 0.45 -h 6.5 -sx 16 -sy 26;
setAttr armR.translate -4.8 15.5 0;
setAttr armR.rotate 0 0 90;
polyCylinder -n legL -r 0.6 -h 9.5 -sx 16 -sy 30;
setAttr legL.translate 1 4.95 0;
polyCylinder -n legR -r 0.6 -h 9.5 -sx 16 -sy 30;
setAttr legR.translate -1 4.95 0;
select -cl;

// Binding: every vertex gets weights falling off with its distance to the mesh's joints.
skinCluster -n bodySkin -mi 4 root spine1 spine2 chest neck clavicleL clavicleR hipL hipR body;
skinCluster -n skullSkin -mi 2 neck head skull;
skinCluster -n armLSkin -mi 3 clavicleL shoulderL elbowL wristL armL;
skinCluster -n armRSkin -mi 3 clavicleR shoulderR elbowR wristR armR;
skinCluster -n legLSkin -mi 3 root hipL kneeL ankleL legL;
skinCluster -n legRSkin -mi 3 root hipR kneeR ankleR legR;

// The broken vertices: written without normalising, every influence of the body given.
skinCluster -e -normalizeWeights 0 bodySkin;
skinPercent -t root -tv 0 -t spine1 -tv 0.1 -t spine2 -tv 0.3 -t chest -tv 0.3 -t neck -tv 0.1 -t clavicleL -tv 0.1 -t clavicleR -tv 0.1 -t hipL -tv 0 -t hipR -tv 0 -nrm false bodySkin body.vtx[450:451];
skinPercent -t root -tv 0 -t spine1 -tv 0.25 -t spine2 -tv 0.6 -t chest -tv 0.5 -t neck -tv 0 -t clavicleL -tv 0 -t clavicleR -tv 0 -t hipL -tv 0 -t hipR -tv 0 -nrm false bodySkin body.vtx[480];
skinPercent -t root -tv 0 -t spine1 -tv 0.2 -t spine2 -tv 0.5 -t chest -tv 0 -t neck -tv 0 -t clavicleL -tv 0 -t clavicleR -tv 0 -t hipL -tv 0 -t hipR -tv 0 -nrm false bodySkin body.vtx[481];
skinCluster -e -normalizeWeights 1 bodySkin;
select -r body;
