// The prepare steps of vorelCmd's edits: each copies the model's hand-over members and builds
// the components, indices and values its write step needs, so that a later redo writes the
// same edit whatever the model shows by then. A shape's rows are found by their marker; when
// the table does not hold a row for every vertex an edit must write, nothing is prepared.
#include "HDagPathArray.h"
#include "HFnDagNode.h"
#include "HFnSingleIndexedComponent.h"
#include "HFnSkinCluster.h"
#include "HGlobal.h"
#include "HQtUtil.h"
#include "commandModelAccess.h"
#include "editorPointers.h"
#include "vorelCmd.h"
#include "weightTableModel.h"
#include "weightWriting.h"
#include "windowEditCommands.h"

#include <QHash>

using namespace commandModelAccess;
using weightWriting::singleVertexComponent;
using weightWriting::wholeShapeComponent;

namespace {

// Whether the shape's vertex rows (found by their marker, in table order) give one row per
// element of the shape's component, the j-th row to the j-th element.
bool rowsFitComponent(const QVector<int>& rows, const HObject& component) {
    return static_cast<unsigned>(rows.size()) ==
           HFnSingleIndexedComponent(component).elementCount();
}

} // namespace

bool vorelCmd::prepareLimitInfluences() {
    std::unique_ptr<applyButtonCmd> limit(new applyButtonCmd(editorWindow, editorModel));
    if (!limit->prepare(editorModel->getPendingLimit(), *editorModel))
        return false;
    edit = std::move(limit);
    return true;
}

bool vorelCmd::prepareRound() {
    newWeights.clear();
    setComponents.clear();
    influenceCounts.clear();
    const QVector<QVector<int>> rowsOfShape =
        weightRows::vertexRowsByShape(weightRows, shapePaths.length());
    for (unsigned shape = 0; shape < shapePaths.length(); ++shape) {
        const HObject component = wholeShapeComponent(shapePaths[shape], shapeComponents[shape]);
        const QVector<int> columns = clusterColumns(*editorModel, skinClusters[shape]).columnOfInfluence;
        const int count = columns.size();
        const QVector<int>& rows = rowsOfShape[static_cast<int>(shape)];
        HDoubleArray values;
        bool found = rowsFitComponent(rows, component);
        values.setLength(found ? static_cast<unsigned>(rows.size() * count) : 0);
        for (int j = 0; found && j < rows.size(); ++j) {
            const WeightRow& row = weightRows.at(rows[j]);
            for (int k = 0; found && k < count; ++k) {
                found = columns[k] >= 0 && columns[k] + 1 < row.size();
                if (found)
                    values[static_cast<unsigned>(j * count + k)] = row.at(columns[k] + 1);
            }
        }
        if (!found) {
            // Nothing is written when some vertex has no row to take its weights from.
            newWeights.clear();
            setComponents.clear();
            influenceCounts.clear();
            reportNotSetUp();
            return false;
        }
        newWeights.append(values);
        setComponents.append(component);
        influenceCounts.append(count);
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

bool vorelCmd::prepareCells(bool typed) {
    std::unique_ptr<cellValuesCmd> cells;
    if (typed)
        cells.reset(new setCellDataCmd(editorWindow, editorModel));
    else
        cells.reset(new dragSliderCmd(editorWindow, editorModel));
    if (!cells->prepare(editorModel->getPendingCellValues(), *editorModel,
                        cellValuesCmd::Rules{true, true}))
        return false;
    edit = std::move(cells);
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
    const QVector<QVector<int>> rowsOfShape =
        weightRows::vertexRowsByShape(weightRows, shapePaths.length());
    for (unsigned shape = 0; shape < shapePaths.length(); ++shape) {
        const int k = editorModel->influenceIndexByName(skinClusters[shape], influence);
        // A shape that is not bound to the influence keeps its weights.
        if (k == -1)
            continue;
        const HObject component = wholeShapeComponent(shapePaths[shape], shapeComponents[shape]);
        const QVector<int>& rows = rowsOfShape[static_cast<int>(shape)];
        if (!rowsFitComponent(rows, component)) {
            // Nothing is written when some vertex has no row to move from.
            targetPaths.clear();
            clusterNodes.clear();
            setComponents.clear();
            columnInfluences.clear();
            influenceCounts.clear();
            newWeights.clear();
            reportNotSetUp();
            return false;
        }
        HIntArray indices;
        indices.append(k);
        columnInfluences.append(indices);
        clusterNodes.append(skinClusters[shape]);
        targetPaths.append(shapePaths[shape]);
        influenceCounts.append(static_cast<int>(influenceCount(skinClusters[shape])));
        HDoubleArray values;
        values.setLength(static_cast<unsigned>(rows.size()));
        for (int j = 0; j < rows.size(); ++j) {
            const WeightRow& row = weightRows.at(rows[j]);
            const double shown = targetColumn + 1 < row.size() ? row.at(targetColumn + 1) : 0.0;
            values[static_cast<unsigned>(j)] =
                qBound(0.0, sliderAbsolute ? sliderValue : shown + sliderDelta, 1.0);
        }
        newWeights.append(values);
        setComponents.append(component);
    }
    return static_cast<bool>(status);
}
