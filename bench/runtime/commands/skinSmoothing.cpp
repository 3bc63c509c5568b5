// bench-skin-smoothing: "skinCluster -e -sw 0 -swi 5 CLUSTER" on a plane of 100,489 vertices
// bound to 16 joints with 8 weights per vertex: five passes over every vertex (a threshold of
// 0 lets every pass change the weights), run and recorded for undo. Target: under 1 s. Each
// run is undone, untimed, so that every run starts from the bound weights. For comparison the
// smoothing alone, without the command and its undo record, and the same with
// -obeyMaxInfluences.
#include "scene/SkinSmoothing.h"

#include "HGlobal.h"
#include "benchHostMain.h"
#include "core/HostContext.h"
#include "scene/Scene.h"
#include "undo/UndoQueue.h"

#include <benchmark/benchmark.h>
#include <numeric>
#include <string>

namespace {

void runAndUndo(benchmark::State& state, const char* command) {
    runtime::UndoQueue& queue = runtime::host().get<runtime::UndoQueue>();
    for (auto _ : state) {
        HGlobal::executeCommand(command, false, true);
        state.PauseTiming();
        queue.undo();
        state.ResumeTiming();
    }
    queue.flush();
}

void smoothCommand(benchmark::State& state) {
    runAndUndo(state, "skinCluster -e -sw 0 -swi 5 -omi 0 cluster1");
}
BENCHMARK(smoothCommand)->Unit(benchmark::kMillisecond)->Iterations(5);

void smoothCommandObeyingMaxInfluences(benchmark::State& state) {
    runAndUndo(state, "skinCluster -e -mi 4 -sw 0 -swi 5 -omi 1 cluster1");
}
BENCHMARK(smoothCommandObeyingMaxInfluences)->Unit(benchmark::kMillisecond)->Iterations(5);

void smoothingAlone(benchmark::State& state) {
    runtime::Scene& scene = runtime::scene();
    runtime::NodePtr cluster = scene.findNode("cluster1");
    std::vector<unsigned> vertices(scene.findNode("bodyShape")->mesh()->vertexCount());
    std::iota(vertices.begin(), vertices.end(), 0u);
    runtime::SmoothingOptions options;
    options.maxPasses = 5;
    for (auto _ : state)
        runtime::smoothSkinWeights(scene, *cluster, vertices, options, nullptr);
    state.counters["vertices"] = static_cast<double>(vertices.size());
}
BENCHMARK(smoothingAlone)->Unit(benchmark::kMillisecond)->Iterations(5);

void buildScene() {
    std::string script;
    for (int j = 0; j < 16; ++j)
        script += "select -cl; joint -n joint" + std::to_string(j + 1) + " -p " +
                  std::to_string(-5.0 + 10.0 * j / 15.0) + " 0 0;";
    script += "polyPlane -n body -w 10 -h 10 -sx 316 -sy 316;"
              "select -cl; skinCluster -n cluster1 -mi 8 -dr 1";
    for (int j = 0; j < 16; ++j)
        script += " joint" + std::to_string(j + 1);
    script += " body";
    HGlobal::executeCommand(script.c_str());
}

} // namespace

int main(int argc, char** argv) {
    return runBenchmarksInHost(argc, argv, "bench-skin-smoothing", buildScene);
}
