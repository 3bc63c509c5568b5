// bench-skin-paint-flood: one flood of the skin paint tool ("pntAttrSkinPaintCtx -e -clear")
// over every vertex of a 100,000-vertex plane bound to 64 joints with 8 weights per vertex,
// run through the command language with undo on, as the Vorel plug-in's paint smoothing runs
// it on its selected vertices. "operation" 0 is Smooth (reads each vertex's neighbours), 1 is
// Replace. Each flood is undone at once (not timed), so every run starts from the same
// weights. A flood should cost about what smoothing the same vertices once costs: well under
// the 1 s that 5 smoothing passes over 100,000 vertices may take.
#include "HGlobal.h"
#include "HSelectionList.h"
#include "benchHostMain.h"
#include "scene/MeshPrimitives.h"
#include "scene/Scene.h"
#include "scene/Selection.h"
#include "scene/SkinBinding.h"
#include "undo/UndoQueue.h"

#include <benchmark/benchmark.h>
#include <random>

namespace {

void prepare() {
    runtime::Scene& scene = runtime::scene();
    runtime::PlaneParameters plane;
    plane.subdivisionsX = 399;
    plane.subdivisionsY = 249;
    runtime::MeshGeometry geometry;
    runtime::makePlane(plane, geometry);
    runtime::NodePtr transform = runtime::createMeshObject(scene, std::move(geometry), "body");
    const unsigned vertices =
        static_cast<unsigned>(transform->children()[0]->mesh()->vertexCount());
    std::vector<runtime::NodePtr> joints;
    for (unsigned j = 0; j < 64; ++j)
        joints.push_back(scene.createNode("joint", "joint" + std::to_string(j + 1)));
    std::mt19937 random(5);
    runtime::SkinWeights weights(vertices);
    std::vector<runtime::SkinWeights::Influence> ids(8);
    std::vector<double> values(8, 0.125);
    for (unsigned v = 0; v < vertices; ++v) {
        unsigned first = random() % 56;
        for (unsigned k = 0; k < 8; ++k)
            ids[k] = static_cast<runtime::SkinWeights::Influence>(first + k);
        weights.assign(v, ids.data(), values.data(), 8);
    }
    runtime::createSkinCluster(scene, joints, *transform->children()[0], std::move(weights));
    HSelectionList selection;
    selection.add("body");
    runtime::selection().setActive(selection);
    HGlobal::executeCommand("PntPaintSkinWeightsTool; pntSkinSelectInfluence "
                            "pntAttrSkinPaintCtx joint30; pntAttrSkinPaintCtx -e -opacity 0.5 "
                            "pntAttrSkinContext");
}

void floodEveryVertex(benchmark::State& state) {
    HGlobal::executeCommand(state.range(0) == 0
                                ? "pntAttrPaintOperation pntAttrSkinPaintCtx Smooth"
                                : "pntAttrPaintOperation pntAttrSkinPaintCtx Replace");
    runtime::UndoQueue& queue = runtime::host().get<runtime::UndoQueue>();
    for (auto _ : state) {
        HGlobal::executeCommand("pntAttrSkinPaintCtx -e -clear pntAttrSkinContext", false, true);
        state.PauseTiming();
        queue.undo();
        state.ResumeTiming();
    }
    state.counters["vertices"] = 100000;
}
BENCHMARK(floodEveryVertex)->Arg(0)->Arg(1)->ArgName("operation")->Unit(benchmark::kMillisecond);

} // namespace

int main(int argc, char** argv) {
    return runBenchmarksInHost(argc, argv, "bench-skin-paint-flood", prepare);
}
