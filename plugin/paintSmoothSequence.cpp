// The skin paint tool's smoothing of one influence; see paintSmoothSequence.h.
#include "paintSmoothSequence.h"

#include "HDagPath.h"
#include "HFnDagNode.h"
#include "HFnSkinCluster.h"
#include "HGlobal.h"
#include "HQtUtil.h"
#include "HSelectionList.h"
#include "weightRows.h"
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

// "select -r body.vtx[3] body.vtx[7] ;" over the vertices, by their transforms' names.
HString selectionCommand(const PaintSmoothRequest& request) {
    HString text("select -r ");
    for (const PaintSmoothVertex& vertex : request.vertices)
        text += HFnDagNode(vertex.shapePath.transform()).name() + "." + vertex.rowName + " ";
    return text + ";\n";
}

} // namespace

HStatus runPaintSmoothSequence(const PaintSmoothRequest& request, RecordedVertices& recorded) {
    recorded = RecordedVertices();
    for (const PaintSmoothVertex& vertex : request.vertices) {
        int index = 0;
        if (!weightRows::vertexIndexOfRowName(HQtUtil::toQString(vertex.rowName), index)) {
            HGlobal::displayInfo("There is something wrong accessing the vertex number.");
            return HS::kFailure;
        }
        const HObject component = weightWriting::singleVertexComponent(index);
        HDoubleArray weights;
        unsigned count = 0;
        HFnSkinCluster(vertex.skinCluster).getWeights(vertex.shapePath, component, weights, count);
        recorded.components.append(component);
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

    HStatus status;
    {
        weightWriting::InfluenceLockGuard locks(request.lockInfluences, false);
        HString setup("selectType -ocm -alc false;\n");
        setup += "selectType -ocm -vertex true;\n";
        setup += selectionCommand(request);
        setup += "PntPaintSkinWeightsTool;\n";
        setup += "pntAttrSkinToolScript 4;\n";
        setup += "pntAttrSkinJointMenu(\"pntJoinListPopupMenu\", \"pntAttrSkinPaintCtx\" );\n";
        setup += "pntAttrPaintOperation pntAttrSkinPaintCtx Smooth;\n";
        setup += "pntAttrSkinPaintCtx -e -skinPaintMode 1 pntAttrSkinContext;\n";
        setup += HString("pntSkinSelectInfluence pntAttrSkinPaintCtx ") + request.influence + ";\n";
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
