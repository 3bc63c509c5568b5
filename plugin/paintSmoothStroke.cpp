#include "paintSmoothStroke.h"

#include "HFnDagNode.h"
#include "HFnSingleIndexedComponent.h"
#include "HFnSkinCluster.h"
#include "HGlobal.h"
#include "HIntArray.h"
#include "HQtUtil.h"
#include "HSelectionList.h"
#include "normalisationGuard.h"
#include "weightTableModel.h"

namespace {

const char* const kPaintContext = "pntAttrSkinContext";

HString headerText(const weightTableModel& model, int section, Qt::Orientation orientation) {
    return HQtUtil::toHString(model.headerData(section, orientation, Qt::DisplayRole).toString());
}

HString numberText(double value) {
    HString text;
    text.set(value);
    return text;
}

HStatus run(const HString& command) {
    return HGlobal::executeCommand(command, false, false);
}

int queryFlag(const HString& command) {
    int value = 0;
    HGlobal::executeCommand(command, value, false, false);
    return value;
}

HStatus setInfluenceLocks(const weightTableModel& model, const QList<int>& columns, bool locked) {
    HStatus status;
    for (int column : columns)
        status = run("setAttr " + headerText(model, column, Qt::Horizontal) +
                     ".lockInfluenceWeights " + (locked ? "1" : "0"));
    return status;
}

} // namespace

void paintSmoothStroke::prepare(const weightTableModel& model) {
    lockColumns = model.getPendingLockColumns();
    column = model.getPendingColumn();
    opacity = model.getPaintSmoothOpacity();
    const QModelIndexList pendingCells = model.getPendingCells();
    const QList<int> pendingShapes = model.getPendingShapes();
    const WeightRows rows = model.getWeightRows();
    cells.clear();
    shapes.clear();
    for (const QModelIndex& cell : pendingCells) {
        if (cell.column() != column || cell.row() < 0 || cell.row() >= rows.size())
            continue;
        const WeightRow& row = rows[cell.row()];
        if (column + 1 >= row.size() || row[column + 1] < 0.0)
            continue;
        for (int shape : pendingShapes) {
            if (shape == row[0]) {
                cells.append(cell);
                shapes.append(shape);
            }
        }
    }
}

HStatus paintSmoothStroke::paint(const weightTableModel& model) {
    components.clear();
    clusters.clear();
    shapePaths.clear();
    oldWeights.clear();
    influenceCounts.clear();
    const HObjectArray modelClusters = model.getSkinClusters();
    const HDagPathArray modelPaths = model.getShapePaths();
    HString selection("select -r ");
    for (int i = 0; i < cells.size(); ++i) {
        int vertex = 0;
        const QString rowName =
            model.headerData(cells[i].row(), Qt::Vertical, Qt::DisplayRole).toString();
        const unsigned shape = static_cast<unsigned>(shapes[i]);
        if (!weightRows::vertexIndexOfRowName(rowName, vertex) || shape >= modelPaths.length()) {
            HGlobal::displayInfo("There is something wrong accessing the vertex number.");
            return HS::kFailure;
        }
        HFnSingleIndexedComponent single;
        HObject component = single.create(HFn::kMeshVertComponent);
        single.addElement(vertex);
        HDoubleArray weights;
        unsigned count = 0;
        HFnSkinCluster(modelClusters[shape])
            .getWeights(modelPaths[shape], component, weights, count);
        components.append(component);
        clusters.append(modelClusters[shape]);
        shapePaths.append(modelPaths[shape]);
        oldWeights.append(weights);
        influenceCounts.append(count);
        selection += HFnDagNode(modelPaths[shape].transform()).name() + "." +
                     HQtUtil::toHString(rowName) + " ";
    }

    const HString previousContext = HGlobal::executeCommandStringResult("currentCtx");
    const int allComponents = queryFlag("selectType -q -ocm -alc");
    const int vertices = queryFlag("selectType -q -ocm -vertex");
    HSelectionList previousSelection;
    HGlobal::getActiveSelectionList(previousSelection);
    const HString influence = headerText(model, column, Qt::Horizontal);

    setInfluenceLocks(model, lockColumns, true);
    run(HString("selectType -ocm -alc false;\n") + "selectType -ocm -vertex true;\n" + selection +
        ";\n" + "PntPaintSkinWeightsTool;\n" + "pntAttrSkinToolScript 4;\n" +
        "pntAttrSkinJointMenu(" + "\"pntJoinListPopupMenu\", \"pntAttrSkinPaintCtx\" );\n" +
        "pntAttrPaintOperation pntAttrSkinPaintCtx Smooth;\n" +
        "pntAttrSkinPaintCtx -e -skinPaintMode 1 pntAttrSkinContext;\n" +
        "pntSkinSelectInfluence pntAttrSkinPaintCtx " + influence + ";\n");
    // Clearing floods the smoothing over the selected vertices at the given opacity.
    run("pntAttrSkinPaintCtx -e -opacity " + numberText(opacity) + " `currentCtx`;\n" +
        "pntAttrSkinPaintCtx -e -clear `currentCtx`;\n");
    setInfluenceLocks(model, lockColumns, false);
    if (previousContext != kPaintContext)
        run("setToolTo " + previousContext + ";\n");
    run("selectType -ocm -alc " + numberText(allComponents) + ";\n" + "selectType -ocm -vertex " +
        numberText(vertices) + ";\n");
    return HGlobal::setActiveSelectionList(previousSelection);
}

HStatus paintSmoothStroke::restore() const {
    HStatus status = HS::kFailure;
    for (int i = 0; i < components.size(); ++i) {
        normalisationGuard guard(clusters[i]);
        HIntArray influences;
        for (unsigned k = 0; k < influenceCounts[i]; ++k)
            influences.append(static_cast<int>(k));
        status = HFnSkinCluster(clusters[i])
                     .setWeights(shapePaths[i], components[i], influences, oldWeights[i], true);
    }
    return status;
}
