// The skin paint tool's smoothing of one influence; see paintSmoothSequence.h.
#include "paintSmoothSequence.h"

#include "HDagPath.h"
#include "HFnDagNode.h"
#include "HFnSkinCluster.h"
#include "HGlobal.h"
#include "HQtUtil.h"
#include "HSelectionList.h"
#include "commandModelAccess.h"
#include "weightTableModel.h"
#include "weightWriting.h"

namespace {

HString number(double value) {
    HString text;
    text.set(value);
    return text;
}

HString integer(int value) {
    return number(static_cast<double>(value));
}

// "select -r body.vtx[3] body.vtx[7] ;" over the cells' vertices, by their transforms' names.
HString selectionCommand(const weightTableModel& model, const PaintSmoothRequest& request) {
    const HDagPathArray shapes = model.getShapePaths();
    HString text("select -r ");
    for (int i = 0; i < request.cells.size() && i < request.shapes.size(); ++i) {
        const unsigned shape = static_cast<unsigned>(request.shapes[i]);
        const QString row = model.headerData(request.cells[i].row(), Qt::Vertical).toString();
        text += HFnDagNode(shapes[shape].transform()).name() + "." + HQtUtil::toHString(row) + " ";
    }
    return text + ";\n";
}

} // namespace

HStatus runPaintSmoothSequence(const weightTableModel& model, const PaintSmoothRequest& request,
                               RecordedVertices& recorded) {
    recorded = RecordedVertices();
    const HObjectArray clusters = model.getSkinClusters();
    const HDagPathArray shapes = model.getShapePaths();
    for (int i = 0; i < request.cells.size() && i < request.shapes.size(); ++i) {
        int vertex = 0;
        if (!commandModelAccess::vertexOfRow(model, request.cells[i].row(), vertex)) {
            HGlobal::displayInfo("There is something wrong accessing the vertex number.");
            return HS::kFailure;
        }
        const unsigned shape = static_cast<unsigned>(request.shapes[i]);
        const HObject component = weightWriting::singleVertexComponent(vertex);
        HDoubleArray weights;
        unsigned count = 0;
        HFnSkinCluster(clusters[shape]).getWeights(shapes[shape], component, weights, count);
        recorded.components.append(component);
        recorded.shapes.append(request.shapes[i]);
        recorded.weights.append(weights);
        recorded.influenceCounts.append(static_cast<int>(count));
    }

    const HString previousContext = HGlobal::executeCommandStringResult("currentCtx");
    int allComponents = 0;
    int vertices = 0;
    HGlobal::executeCommand("selectType -q -ocm -alc", allComponents);
    HGlobal::executeCommand("selectType -q -ocm -vertex", vertices);
    HSelectionList previousSelection;
    HGlobal::getActiveSelectionList(previousSelection);

    const HString influence = commandModelAccess::columnName(model, request.column);
    const QList<HString> lockNames = [&] {
        QList<HString> names;
        for (int column : request.lockColumns)
            names.append(commandModelAccess::columnName(model, column));
        return names;
    }();
    HStatus status;
    {
        weightWriting::InfluenceLockGuard locks(lockNames, false);
        HString setup("selectType -ocm -alc false;\n");
        setup += "selectType -ocm -vertex true;\n";
        setup += selectionCommand(model, request);
        setup += "PntPaintSkinWeightsTool;\n";
        setup += "pntAttrSkinToolScript 4;\n";
        setup += "pntAttrSkinJointMenu(\"pntJoinListPopupMenu\", \"pntAttrSkinPaintCtx\" );\n";
        setup += "pntAttrPaintOperation pntAttrSkinPaintCtx Smooth;\n";
        setup += "pntAttrSkinPaintCtx -e -skinPaintMode 1 pntAttrSkinContext;\n";
        setup += HString("pntSkinSelectInfluence pntAttrSkinPaintCtx ") + influence + ";\n";
        HGlobal::executeCommand(setup);
        status = HGlobal::executeCommand(HString("pntAttrSkinPaintCtx -e -opacity ") +
                                         number(request.opacity) + " `currentCtx`;\n" +
                                         "pntAttrSkinPaintCtx -e -clear `currentCtx`;\n");
    }
    if (!(previousContext == "pntAttrSkinContext"))
        status = HGlobal::executeCommand(HString("setToolTo ") + previousContext + ";\n");
    status =
        HGlobal::executeCommand(HString("selectType -ocm -alc ") + integer(allComponents) + ";\n" +
                                "selectType -ocm -vertex " + integer(vertices) + ";\n");
    status = HGlobal::setActiveSelectionList(previousSelection, HGlobal::kReplaceList);
    return status;
}
