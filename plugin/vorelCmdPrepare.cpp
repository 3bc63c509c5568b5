// The prepare steps of vorelCmd's edits: each copies the model's hand-over members and builds
// the components, indices and values its write step needs, so that a later redo writes the
// same edit whatever the model shows by then.
#include "HFnDagNode.h"
#include "HFnSingleIndexedComponent.h"
#include "HFnSkinCluster.h"
#include "HGlobal.h"
#include "commandModelAccess.h"
#include "editorPointers.h"
#include "vorelCmd.h"
#include "weightTableModel.h"
#include "weightWriting.h"

#include <QHash>

using namespace commandModelAccess;
using weightWriting::singleVertexComponent;
using weightWriting::wholeShapeComponent;

namespace {

// The weight the table shows for `column` in the row `offset` rows below the shape's header
// row; 0 outside the table.
double shownWeight(const WeightRows& rows, int headerRow, int offset, int column) {
    const int row = headerRow + 1 + offset;
    if (headerRow < 0 || row >= rows.size() || column < 0 || column + 1 >= rows.at(row).size())
        return 0.0;
    return rows.at(row).at(column + 1);
}

} // namespace

bool vorelCmd::prepareLimitInfluences() {
    editShapes.clear();
    influenceCounts.clear();
    editComponents.clear();
    requestedRows = editorModel->getPendingRows();
    maxInfluences = editorModel->getMaxInfluences();
    // Each cluster's influences are counted once, not once per row.
    QHash<int, unsigned> countOfShape;
    for (int r : qAsConst(requestedRows)) {
        if (r < 0 || r >= weightRows.size())
            continue;
        const WeightRow& row = weightRows.at(r);
        const int shape = static_cast<int>(row.at(0));
        if (row.at(0) < 0.0) {
            HGlobal::displayError("There is an error accessing shape index.");
            return false;
        }
        if (!countOfShape.contains(shape))
            countOfShape.insert(shape, influenceCount(skinClusters[static_cast<unsigned>(shape)]));
        const unsigned count = countOfShape.value(shape);
        int vertex = 0;
        if (!vertexOfRow(*editorModel, r, vertex)) {
            HGlobal::displayError("There is some error with parsing the vertex index value.");
            return false;
        }
        const HObject component = singleVertexComponent(vertex);
        int nonZero = 0;
        for (int i = 1; i < row.size(); ++i)
            if (row.at(i) > 0.0)
                ++nonZero;
        if (nonZero >= 2 && nonZero > maxInfluences) {
            overLimitRows.append(r);
            editShapes.append(shape);
            influenceCounts.append(static_cast<int>(count));
            editComponents.append(component);
            nonZeroCounts.append(nonZero);
        }
    }
    return true;
}

bool vorelCmd::prepareRound() {
    newWeights.clear();
    setComponents.clear();
    influenceCounts.clear();
    for (unsigned shape = 0; shape < shapePaths.length(); ++shape) {
        const HObject component = wholeShapeComponent(shapePaths[shape], shapeComponents[shape]);
        HDagPathArray influences;
        const unsigned count = HFnSkinCluster(skinClusters[shape]).influenceObjects(influences);
        QList<int> columns;
        for (unsigned k = 0; k < count; ++k)
            columns.append(editorModel->columnOfInfluence(influences[k]));
        const int headerRow = editorModel->rowOfShape(shapePaths[shape]);
        const unsigned elements = HFnSingleIndexedComponent(component).elementCount();
        HDoubleArray values;
        values.setLength(elements * count);
        for (unsigned j = 0; j < elements; ++j)
            for (unsigned k = 0; k < count; ++k)
                values[j * count + k] =
                    shownWeight(weightRows, headerRow, static_cast<int>(j), columns[k]);
        newWeights.append(values);
        setComponents.append(component);
        influenceCounts.append(static_cast<int>(count));
    }
    return true;
}

bool vorelCmd::prepareReplace() {
    floodValue = editorModel->getFloodValue();
    targetColumn = editorModel->getPendingColumn();
    floodShapes = editorModel->getPendingShapes();
    clusterNodes.clear();
    targetPaths.clear();
    influenceIndices.clear();
    influenceCounts.clear();
    setComponents.clear();
    if (floodShapes.isEmpty())
        return false;
    const HString influence = columnName(*editorModel, targetColumn);
    bool prepared = false;
    for (int shape : qAsConst(floodShapes)) {
        if (shape < 0 || static_cast<unsigned>(shape) >= shapePaths.length())
            continue;
        const unsigned s = static_cast<unsigned>(shape);
        targetPaths.append(shapePaths[s]);
        clusterNodes.append(skinClusters[s]);
        influenceCounts.append(static_cast<int>(influenceCount(skinClusters[s])));
        // An influence the cluster lacks gives -1: that shape's write fails with the host's status.
        influenceIndices.append(editorModel->influenceIndexByName(skinClusters[s], influence));
        setComponents.append(wholeShapeComponent(shapePaths[s], shapeComponents[s]));
        prepared = true;
    }
    return prepared;
}

bool vorelCmd::prepareCells() {
    return prepareCells(editorModel->getPendingCells(), editorModel->getPendingValues(), true);
}

bool vorelCmd::prepareCells(const QModelIndexList& requested, const QList<double>& values,
                            bool checkRows) {
    cellValues = values;
    cells = requested;
    editShapes.clear();
    editComponents.clear();
    influenceIndices.clear();
    influenceCounts.clear();
    if (cells.isEmpty())
        return false;
    for (const QModelIndex& cell : qAsConst(cells)) {
        const int r = cell.row();
        if (r < 0 || r >= weightRows.size()) {
            HGlobal::displayInfo(checkRows ? "There is an error getting row number"
                                           : "This is not a valid cell to edit.");
            return false;
        }
        const int shape = static_cast<int>(weightRows.at(r).at(0));
        if (weightRows.at(r).at(0) < 0.0) {
            HGlobal::displayInfo("This is not a valid cell to edit.");
            return false;
        }
        int vertex = 0;
        if (!vertexOfRow(*editorModel, r, vertex)) {
            HGlobal::displayInfo("There is something wrong accessing the vertex number.");
            return false;
        }
        editShapes.append(shape);
        editComponents.append(singleVertexComponent(vertex));
        const HObject& cluster = skinClusters[static_cast<unsigned>(shape)];
        const int influence =
            editorModel->influenceIndexByName(cluster, columnName(*editorModel, cell.column()));
        if (influence == -1) {
            HGlobal::displayInfo("There is something wrong getting the joint index.");
            return false;
        }
        influenceIndices.append(influence);
        influenceCounts.append(static_cast<int>(influenceCount(cluster)));
    }
    return true;
}

bool vorelCmd::prepareColumnDrag() {
    targetPaths.clear();
    clusterNodes.clear();
    setComponents.clear();
    targetColumn = editorModel->getPendingColumn();
    const double sliderValue = editorModel->getSliderValue();
    const double sliderDelta = editorModel->getSliderDelta();
    const bool sliderAbsolute = editorModel->getSliderAbsolute();
    columnInfluences.clear();
    influenceCounts.clear();
    newWeights.clear();
    if (targetColumn < 0 || static_cast<unsigned>(targetColumn) >= influencePaths.length())
        return false;
    HStatus status;
    HFnDagNode influenceNode(influencePaths[static_cast<unsigned>(targetColumn)], &status);
    if (!status)
        return false;
    const HString influence = influenceNode.name();
    for (unsigned shape = 0; shape < shapePaths.length(); ++shape) {
        const int k = editorModel->influenceIndexByName(skinClusters[shape], influence);
        // A shape that is not bound to the influence keeps its weights.
        if (k == -1)
            continue;
        HIntArray indices;
        indices.append(k);
        columnInfluences.append(indices);
        clusterNodes.append(skinClusters[shape]);
        targetPaths.append(shapePaths[shape]);
        influenceCounts.append(static_cast<int>(influenceCount(skinClusters[shape])));
        const HObject component = wholeShapeComponent(shapePaths[shape], shapeComponents[shape]);
        const int headerRow = editorModel->rowOfShape(shapePaths[shape]);
        const unsigned elements = HFnSingleIndexedComponent(component).elementCount();
        HDoubleArray values;
        values.setLength(elements);
        for (unsigned j = 0; j < elements; ++j) {
            const double value = sliderAbsolute ? sliderValue
                                                : shownWeight(weightRows, headerRow,
                                                              static_cast<int>(j), targetColumn) +
                                                      sliderDelta;
            values[j] = qBound(0.0, value, 1.0);
        }
        newWeights.append(values);
        setComponents.append(component);
    }
    return static_cast<bool>(status);
}
