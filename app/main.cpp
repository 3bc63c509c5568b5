// vorel-host, first form: starts the host without a window, builds a cylinder bound to a chain
// of three joints, and prints every vertex's weights as the skin cluster interface reads them.
#include "HDagPathArray.h"
#include "HDoubleArray.h"
#include "HFnDagNode.h"
#include "HFnDependencyNode.h"
#include "HFnSkinCluster.h"
#include "HLibrary.h"
#include "api/HApiAccess.h"
#include "scene/MeshPrimitives.h"
#include "scene/Scene.h"
#include "scene/SkinBinding.h"
#include "scene/Transforms.h"

#include <QApplication>
#include <cstdio>
#include <string>

namespace {

// A cylinder along Y from -2 to 2, and joints at y = -2, 0 and 2, the first at the root.
HStatus buildScene(runtime::NodePtr& cluster, runtime::NodePtr& shape) {
    runtime::Scene& scene = runtime::scene();
    runtime::CylinderParameters cylinder;
    cylinder.radius = 0.5;
    cylinder.height = 4.0;
    cylinder.subdivisionsAround = 6;
    cylinder.subdivisionsHeight = 4;
    runtime::MeshGeometry geometry;
    HStatus status = runtime::makeCylinder(cylinder, geometry);
    runtime::NodePtr body;
    if (status)
        body = runtime::createMeshObject(scene, std::move(geometry), "body", &status);
    std::vector<runtime::NodePtr> joints;
    for (int j = 0; status && j < 3; ++j) {
        runtime::Node* parent = joints.empty() ? nullptr : joints.back().get();
        joints.push_back(
            scene.createNode("joint", "joint" + std::to_string(j + 1), parent, &status));
        if (status)
            status =
                runtime::setWorldPosition(scene, *joints.back(), HPoint(0.0, -2.0 + 2.0 * j, 0.0));
    }
    runtime::BindOptions options;
    options.maxInfluences = 2;
    if (status)
        cluster = runtime::bindSkin(scene, joints, *body, options, &status);
    if (status)
        shape = body->children().front();
    return status;
}

void printWeights(const runtime::NodePtr& cluster, const runtime::NodePtr& shape) {
    HFnSkinCluster skin(HApiAccess::object(cluster));
    HDagPath path = HApiAccess::path(shape);
    HDagPathArray influences;
    unsigned count = skin.influenceObjects(influences);
    HDoubleArray weights;
    skin.getWeights(path, HObject(), weights, count);

    std::printf("%s deformed by %s\n\n%-10s", path.fullPathName().asChar(),
                HFnDependencyNode(HApiAccess::object(cluster)).name().asChar(), "vertex");
    for (unsigned k = 0; k < count; ++k)
        std::printf("%10s", HFnDagNode(influences[k]).name().asChar());
    std::printf("\n");
    for (unsigned v = 0; v < weights.length() / count; ++v) {
        std::printf("%-10s", ("vtx[" + std::to_string(v) + "]").c_str());
        for (unsigned k = 0; k < count; ++k)
            std::printf("%10s", HString().set(weights[v * count + k], 3).asChar());
        std::printf("\n");
    }
}

} // namespace

int main(int argc, char** argv) {
    // Nothing is shown yet, so no display is needed.
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication application(argc, argv);
    HStatus status = HLibrary::initialize("vorel-host");
    runtime::NodePtr cluster, shape;
    if (status)
        status = buildScene(cluster, shape);
    if (!status) {
        std::fprintf(stderr, "vorel-host: %s\n", status.errorString().asChar());
        HLibrary::cleanup();
        return 1;
    }
    printWeights(cluster, shape);
    cluster.reset();
    shape.reset();
    HLibrary::cleanup();
    return 0;
}
