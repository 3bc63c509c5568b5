#include "sheetScene.h"

#include "HGlobal.h"
#include "scene/MeshData.h"
#include "scene/Scene.h"
#include "scene/SkinClusterData.h"

#include <cmath>
#include <gtest/gtest.h>

namespace viewporttest {

void run(const std::string& statements) {
    HStatus status = HGlobal::executeCommand(statements.c_str());
    ASSERT_TRUE(status) << statements << ": " << status.errorString().asChar();
}

std::string vertexName(unsigned vertex) {
    return "sheet.vtx[" + std::to_string(vertex) + "]";
}

unsigned Sheet::vertexAt(double x, double z) const {
    const runtime::MeshData& mesh = *shape->mesh();
    for (unsigned v = 0; v < mesh.vertexCount(); ++v)
        if (std::fabs(mesh.point(v).x - x) < 1e-6 && std::fabs(mesh.point(v).z - z) < 1e-6)
            return v;
    ADD_FAILURE() << "no vertex at " << x << ", " << z;
    return 0;
}

double Sheet::leftWeight(unsigned vertex) const {
    return cluster->skinCluster()->weights().weight(vertex, 0);
}

Sheet makeSheet() {
    Sheet sheet;
    run("joint -n left -p -2 1 0; select -cl; joint -n right -p 2 1 0; select -cl;"
        "polyPlane -n sheet -w 4 -h 4 -sx 4 -sy 4; setAttr sheet.ty 1;"
        "skinCluster -n sheetSkin -mi 2 left right sheet; select -cl");
    runtime::Scene& scene = runtime::scene();
    sheet.shape = scene.findNode("sheetShape");
    sheet.cluster = scene.findNode("sheetSkin");
    sheet.left = scene.findNode("left");
    sheet.right = scene.findNode("right");
    if (!sheet.shape || !sheet.cluster) {
        ADD_FAILURE() << "the sheet was not built";
        return sheet;
    }
    const runtime::MeshData& mesh = *sheet.shape->mesh();
    for (unsigned v = 0; v < mesh.vertexCount(); ++v) {
        double x = mesh.point(v).x;
        const char* weight = x < -0.1 ? "1" : x > 0.1 ? "0" : "0.5";
        run(std::string("skinPercent -t left -tv ") + weight + " sheetSkin " + vertexName(v));
    }
    return sheet;
}

} // namespace viewporttest
