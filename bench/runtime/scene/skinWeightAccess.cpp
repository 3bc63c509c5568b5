// bench-skin-weight-access: the skin cluster interface at the sizes the host must handle.
// - getWeights of every vertex of a 100,000-vertex, 64-influence cluster (8 weights per
//   vertex), with no component and with a component listing every vertex: must stay under
//   50 ms. The result is 51 MB of doubles; "fresh" gives a new array each time, as callers
//   usually do, so the time includes the system handing out and clearing that memory;
//   "reused" passes the same array again and shows the host's own share.
// - setWeights of one vertex, normalising, on clusters of 1,000 and 1,000,000 vertices: the
//   two times should be the same, since one vertex costs only its own weights.
#include "HDoubleArray.h"
#include "HFnSingleIndexedComponent.h"
#include "HFnSkinCluster.h"
#include "api/HApiAccess.h"
#include "benchHostMain.h"
#include "scene/MeshPrimitives.h"
#include "scene/Scene.h"
#include "scene/SkinBinding.h"
#include "scene/Transforms.h"

#include <benchmark/benchmark.h>
#include <map>
#include <random>

namespace {

struct BenchCluster {
    HObject cluster;
    HDagPath shape;
};

// A mesh of `vertices` points and a cluster of `influences` joints giving each vertex 8
// weights, made once per size.
const BenchCluster& cluster(unsigned vertices, unsigned influences) {
    static std::map<std::pair<unsigned, unsigned>, BenchCluster> made;
    auto found = made.find({vertices, influences});
    if (found != made.end())
        return found->second;
    runtime::Scene& scene = runtime::scene();
    runtime::MeshGeometry geometry;
    for (unsigned v = 0; v < vertices; ++v)
        geometry.points.emplace_back(v % 1000, v / 1000, 0.0);
    runtime::NodePtr transform =
        runtime::createMeshObject(scene, std::move(geometry), "mesh" + std::to_string(vertices));
    std::vector<runtime::NodePtr> joints;
    for (unsigned j = 0; j < influences; ++j)
        joints.push_back(scene.createNode("joint"));
    std::mt19937 random(3);
    runtime::SkinWeights weights(vertices);
    std::vector<runtime::SkinWeights::Influence> ids(8);
    std::vector<double> values(8, 0.125);
    for (unsigned v = 0; v < vertices; ++v) {
        unsigned first = random() % (influences - 8);
        for (unsigned k = 0; k < 8; ++k)
            ids[k] = static_cast<runtime::SkinWeights::Influence>(first + k);
        weights.assign(v, ids.data(), values.data(), 8);
    }
    runtime::NodePtr node =
        runtime::createSkinCluster(scene, joints, *transform->children()[0], std::move(weights));
    BenchCluster result{HApiAccess::object(node), HApiAccess::path(transform->children()[0])};
    return made[{vertices, influences}] = result;
}

void getWeightsOfEveryVertex(benchmark::State& state) {
    const BenchCluster& bench = cluster(100000, 64);
    HFnSkinCluster fn(bench.cluster);
    HObject component;
    if (state.range(0) == 1) {
        HFnSingleIndexedComponent vertices;
        component = vertices.create(HFn::kMeshVertComponent);
        for (int v = 0; v < 100000; ++v)
            vertices.addElement(v);
    }
    bool fresh = state.range(1) == 0;
    HDoubleArray reused;
    for (auto _ : state) {
        HDoubleArray weights;
        unsigned count = 0;
        fn.getWeights(bench.shape, component, fresh ? weights : reused, count);
        benchmark::DoNotOptimize(weights);
    }
}
BENCHMARK(getWeightsOfEveryVertex)
    ->ArgsProduct({{0, 1}, {0, 1}})
    ->ArgNames({"component", "reused"})
    ->Unit(benchmark::kMillisecond);

void setWeightsOfOneVertex(benchmark::State& state) {
    const BenchCluster& bench = cluster(static_cast<unsigned>(state.range(0)), 64);
    HFnSkinCluster fn(bench.cluster);
    HFnSingleIndexedComponent vertex;
    HObject component = vertex.create(HFn::kMeshVertComponent);
    vertex.addElement(static_cast<int>(state.range(0) / 2));
    double value = 0.2;
    for (auto _ : state) {
        fn.setWeights(bench.shape, component, 5, value, true);
        value = value == 0.2 ? 0.3 : 0.2;
    }
}
BENCHMARK(setWeightsOfOneVertex)->Arg(1000)->Arg(1000000)->ArgName("vertices");

} // namespace

int main(int argc, char** argv) {
    return runBenchmarksInHost(argc, argv, "bench-skin-weight-access");
}
