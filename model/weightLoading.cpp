// Loading the table from the scene's selection, and writing a table-shaped weight list back.
#include "HDoubleArray.h"
#include "HFnDagNode.h"
#include "HFnDependencyNode.h"
#include "HFnSingleIndexedComponent.h"
#include "HFnSkinCluster.h"
#include "HGlobal.h"
#include "HIntArray.h"
#include "HItSelectionList.h"
#include "HPlug.h"
#include "HPlugArray.h"
#include "HQtUtil.h"
#include "weightTableModel.h"
#include "weightWriting.h"

#include <vector>

using namespace weightRows;

namespace {

// The nodes of `type` that feed `plug` (its sources).
void appendSourceNodes(const HPlug& plug, HFn::Type type, std::vector<HObject>& nodes) {
    HPlugArray sources;
    plug.connectedTo(sources, true, false);
    for (unsigned i = 0; i < sources.length(); ++i) {
        HObject node = sources[i].node();
        if (node.apiType() == type)
            nodes.push_back(node);
    }
}

// The skin clusters deforming a shape, found through its object groups: each group's colour
// is fed by the cluster's set, whose "usedBy" is fed by the cluster. One entry per hit.
std::vector<HObject> skinClustersOf(const HObject& shape) {
    std::vector<HObject> sets;
    HPlug instances = HFnDependencyNode(shape).findPlug("instObjGroups", true);
    for (unsigned i = 0; i < instances.numElements(); ++i) {
        HPlug groups = instances[i].child(0);
        for (unsigned j = 0; j < groups.numElements(); ++j)
            appendSourceNodes(groups[j].child(2), HFn::kSet, sets);
    }
    std::vector<HObject> clusters;
    for (const HObject& set : sets) {
        HPlug usedBy = HFnDependencyNode(set).findPlug("usedBy", true);
        for (unsigned k = 0; k < usedBy.numElements(); ++k)
            appendSourceNodes(usedBy[k], HFn::kSkinClusterFilter, clusters);
    }
    return clusters;
}

HString vertexRowName(int vertex) {
    HString number;
    number.set(static_cast<double>(vertex));
    return HString("vtx[") + number + "]";
}

} // namespace

void weightTableModel::refreshSkinClusterData() {
    beginResetModel();
    takeLoadUndoCopies();
    HSelectionList selection;
    HGlobal::getActiveSelectionList(selection);
    // With automatic updating, a click into empty space keeps the table.
    const bool keepTable = autoUpdate && selection.isEmpty();
    if (!keepTable) {
        skinClusters.clear();
        shapePaths.clear();
        shapeComponents.clear();
        rowNames.clear();
        influencePaths.clear();
        influenceColumns.clear();
        weightRows.clear();
        collectSelectedShapes(selection);
        // Rows are rounded as they are read: the last positive weight of each takes the
        // remainder, until a vertex without weight ends that for every later row.
        uncorrectedFrom = kCorrectedThroughout;
        bool correcting = true;
        if (skinClusters.length() != 0 && shapePaths.length() != 0)
            for (unsigned shape = 0; shape < shapePaths.length(); ++shape)
                appendShapeRows(shape, correcting);
        // What was kept of the previous table belongs to it; only the load's own undo copies
        // (the previous table whole) stay.
        updateRowNamesKey();
        forgetTableCopies();
    }
    rebuildColumnLabels();
    if (keepTable && !weightRows.isEmpty())
        roundAllRowsToPrecision();
    if (!keepTable)
        followScene();
    endResetModel();
}

void weightTableModel::takeLoadUndoCopies() {
    keepTable(undoTable);
}

void weightTableModel::collectSelectedShapes(const HSelectionList& selection) {
    for (HItSelectionList it(selection); !it.isDone(); it.next()) {
        HDagPath path;
        HObject component;
        it.getDagPath(path, component);
        const bool vertexSelection =
            !component.isNull() && component.apiType() == HFn::kMeshVertComponent;
        if (path.node().hasFn(HFn::kTransform))
            path.extendToShape();
        // Faces, edges and other components are not weights to show.
        if (!component.isNull() && !vertexSelection)
            continue;
        for (const HObject& cluster : skinClustersOf(path.node())) {
            skinClusters.append(cluster);
            shapePaths.append(path);
            shapeComponents.append(component);
            HDagPathArray influences;
            HFnSkinCluster(cluster).influenceObjects(influences);
            for (unsigned i = 0; i < influences.length(); ++i)
                addInfluence(influences[i]);
        }
    }
}

void weightTableModel::appendShapeRows(unsigned shape, bool& correcting) {
    const HDagPath& path = shapePaths[shape];
    rowNames.append(HFnDagNode(path).name());
    const HObject vertices = weightWriting::wholeShapeComponent(path, shapeComponents[shape]);
    HIntArray indices;
    HFnSingleIndexedComponent(vertices).getElements(indices);
    for (int vertex : indices)
        rowNames.append(vertexRowName(vertex));
    // Rows equal to those of the table before (kept for the table's undo) are shared with it.
    appendSceneRows(weightRows, shape, vertices, undoTable.weightRows, SceneRows::kLoaded,
                    correcting);
    // A failed read leaves fewer rows than names; the names follow the rows.
    rowNames.setLength(static_cast<unsigned>(weightRows.size()));
}

void weightTableModel::rebuildColumnLabels() {
    influenceNames.clear();
    influenceColors.clear();
    for (unsigned i = 0; i < influencePaths.length(); ++i) {
        HFnDagNode influence(influencePaths[i]);
        influenceNames.append(influence.name());
        const HColor color = influence.dormantColor();
        influenceColors.append(QColor::fromRgbF(color.r, color.g, color.b, 1.0));
    }
}

void weightTableModel::writeWeightRowsToScene(const WeightRows& rows, quint64 rowsKey) {
    if (rows.isEmpty())
        return;
    // The scene takes other weights than the table shows.
    rowsFollowScene = false;
    if (!matchesTable(rows, rowsKey)) {
        HGlobal::displayError("There is a problem with restoring weight data.");
        return;
    }
    for (int r = 0; r < rows.size(); ++r) {
        const WeightRow& row = rows[r];
        if (!isVertexRow(row))
            continue;
        const int shape = static_cast<int>(row[0]);
        if (shape >= static_cast<int>(shapePaths.length()))
            continue;
        const HObject& cluster = skinClusters[static_cast<unsigned>(shape)];
        int vertex = 0;
        if (!vertexIndexOfRowName(headerData(r, Qt::Vertical, Qt::DisplayRole).toString(),
                                  vertex)) {
            HGlobal::displayError("There is some error with parsing the vertex index value.");
            return;
        }
        HFnSingleIndexedComponent single;
        HObject component = single.create(HFn::kMeshVertComponent);
        single.addElement(vertex);
        HDoubleArray values;
        HIntArray indices;
        for (int c = 0; c + 1 < row.size(); ++c) {
            if (row[c + 1] < 0.0)
                continue;
            values.append(row[c + 1]);
            const HString name =
                HQtUtil::toHString(headerData(c, Qt::Horizontal, Qt::DisplayRole).toString());
            const int index = influenceIndexByName(cluster, name);
            if (index != -1)
                indices.append(index);
        }
        if (values.length() != indices.length()) {
            HGlobal::displayInfo(
                "Weight list length and Joint list length doesn't match for this component.");
            return;
        }
        HFnSkinCluster(cluster).setWeights(shapePaths[static_cast<unsigned>(shape)], component,
                                           indices, values, true);
    }
}
