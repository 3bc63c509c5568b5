// The model's members, its life (callback registration), the lookups that tie rows to shapes
// and columns to influences, and the two mode flags.
#include "weightTableModel.h"

#include "HDagPathArray.h"
#include "HEventMessage.h"
#include "HFnDagNode.h"
#include "HFnSkinCluster.h"
#include "HMessage.h"
#include "HQtUtil.h"

bool weightTableModel::autoUpdate = false;
bool weightTableModel::selectionGuard = false;

weightTableModel::weightTableModel(QObject* parent)
    : QAbstractTableModel(parent), precision(3), lastPrecision(3), maxInfluences(4),
      lastMaxInfluences(4), filterOn(false), hilightOn(false), skinPaintSmoothMode(false),
      smoothSkinWeightsMode(false), topRightValue(0.0), tableSelection(nullptr),
      selectionChangedCallbackId(0), sceneOpenedCallbackId(0), undoCallbackId(0), redoCallbackId(0),
      weightsChangedCallbackId(0), sceneJustOpened(false) {
    selectionChangedCallbackId =
        HEventMessage::addEventCallback("SelectionChanged", selectionChangedCallback, this);
    sceneOpenedCallbackId =
        HEventMessage::addEventCallback("SceneOpened", sceneOpenedCallback, this);
    undoCallbackId = HEventMessage::addEventCallback("Undo", undoRedoCallback, this);
    redoCallbackId = HEventMessage::addEventCallback("Redo", undoRedoCallback, this);
    weightsChangedCallbackId =
        HEventMessage::addEventCallback("SkinWeightsChanged", weightsChangedCallback, this);
}

weightTableModel::~weightTableModel() {
    HMessage::removeCallback(selectionChangedCallbackId);
    HMessage::removeCallback(sceneOpenedCallbackId);
    HMessage::removeCallback(undoCallbackId);
    HMessage::removeCallback(redoCallbackId);
    HMessage::removeCallback(weightsChangedCallbackId);
}

int weightTableModel::columnOfInfluence(const HDagPath& influence) const {
    return influenceColumns.value(HQtUtil::toQString(influence.fullPathName()), -1);
}

int weightTableModel::columnOfInfluenceName(const HString& fullPathName) const {
    return influenceColumns.value(HQtUtil::toQString(fullPathName), -1);
}

int weightTableModel::rowOfShape(const HDagPath& shape) const {
    int loaded = -1;
    for (unsigned i = 0; i < shapePaths.length() && loaded == -1; ++i)
        if (shapePaths[i] == shape)
            loaded = static_cast<int>(i);
    return rowOfShapeIndex(loaded);
}

bool weightTableModel::vertexOfRow(int row, int& vertex) const {
    if (row < 0 || static_cast<unsigned>(row) >= rowNames.length())
        return false;
    const HString& name = rowNames[static_cast<unsigned>(row)];
    return weightRows::vertexIndexOfRowName(name.asChar(), static_cast<int>(name.length()), vertex);
}

int weightTableModel::loadedShapeOfRow(int row) const {
    if (row < 0 || row >= weightRows.size())
        return -1;
    return weightRows::shapeOfRow(weightRows[row], shapePaths.length());
}

int weightTableModel::shapeIndexOfNode(const HDagPath& shape) const {
    const HString name = HFnDagNode(shape).name();
    int found = -1;
    for (unsigned i = 0; i < shapePaths.length(); ++i)
        if (HFnDagNode(shapePaths[i]).name() == name)
            found = static_cast<int>(i);
    return found;
}

int weightTableModel::influenceIndexByName(const HObject& skinCluster, const HString& name) const {
    HDagPathArray influences;
    unsigned count = HFnSkinCluster(skinCluster).influenceObjects(influences);
    for (unsigned i = 0; i < count; ++i)
        if (HFnDagNode(influences[i]).name() == name)
            return static_cast<int>(i);
    return -1;
}

void weightTableModel::addInfluence(const HDagPath& influence) {
    const QString fullPath = HQtUtil::toQString(influence.fullPathName());
    if (influenceColumns.contains(fullPath))
        return;
    influencePaths.append(influence);
    influenceColumns.insert(fullPath, static_cast<int>(influencePaths.length()) - 1);
}

void weightTableModel::setAutoUpdate(bool autoUpdateVal) {
    autoUpdate = autoUpdateVal;
}

void weightTableModel::setSkinPaintSmoothMode(bool mode) {
    skinPaintSmoothMode = mode;
}

bool weightTableModel::getSkinPaintSmoothMode() {
    return skinPaintSmoothMode;
}

void weightTableModel::setSmoothSkinWeightsMode(bool mode) {
    smoothSkinWeightsMode = mode;
}

bool weightTableModel::getSmoothSkinWeightsMode() {
    return smoothSkinWeightsMode;
}
