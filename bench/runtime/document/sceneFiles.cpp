// bench-scene-files: opening a large skinned scene into the live scene and saving it from
// there, as the file command does: a 100,000-vertex grid with 64 joints and 8 weights per
// vertex (largeSkinnedScene.h), as .glb and as .vscene. Targets: each under 0.5 s; the peak
// memory of an open under 300 MB (peak_MB, the process's high-water mark from a reset just
// before the open, which includes the host and the scene already open). Saving the .glb saves
// a scene opened from it with half of its vertices' weights changed, so that the weights are
// written anew.
#include "benchHostMain.h"
#include "document/SceneDocument.h"
#include "files/GltfWriter.h"
#include "largeSkinnedScene.h"
#include "scene/Scene.h"
#include "scene/SkinClusterData.h"

#include <QTemporaryDir>
#include <benchmark/benchmark.h>
#include <cstdio>
#include <string>

namespace {

QTemporaryDir& folder() {
    static QTemporaryDir dir;
    return dir;
}

std::string file(const char* name) {
    return folder().filePath(name).toStdString();
}

void check(const runtime::FileResult& result, benchmark::State& state) {
    if (!result.ok())
        state.SkipWithError(result.message.c_str());
}

void open(benchmark::State& state, const std::string& path) {
    runtime::SceneDocument& document = runtime::sceneDocument();
    for (auto _ : state) {
        state.PauseTiming();
        document.newScene();
        benchscene::resetPeakMemory();
        state.ResumeTiming();
        check(document.open(path), state);
    }
    state.counters["peak_MB"] = benchscene::peakMegabytes();
    state.counters["weights"] = static_cast<double>(
        runtime::scene().findNode("skinCluster1")->skinCluster()->weights().entryTotal());
}

// Opens the .glb untimed and halves the weights of every other vertex.
void openEdited(benchmark::State& state) {
    if (!runtime::sceneDocument().open(file("large.glb")).ok()) {
        state.SkipWithError("opening failed");
        return;
    }
    runtime::SkinWeights& weights =
        runtime::scene().findNode("skinCluster1")->skinCluster()->weights();
    std::vector<double> dense(benchscene::kGridJoints);
    for (unsigned v = 0; v < weights.vertexCount(); v += 2) {
        weights.readDense(v, dense.data(), benchscene::kGridJoints);
        for (double& weight : dense)
            weight *= 0.5;
        weights.assignDense(v, dense.data(), benchscene::kGridJoints);
    }
}

void openGlb(benchmark::State& state) {
    open(state, file("large.glb"));
}
BENCHMARK(openGlb)->Unit(benchmark::kMillisecond)->UseRealTime()->Iterations(3);

void saveGlb(benchmark::State& state) {
    openEdited(state);
    for (auto _ : state)
        check(runtime::sceneDocument().exportAll(file("saved.glb")), state);
}
BENCHMARK(saveGlb)->Unit(benchmark::kMillisecond)->UseRealTime()->Iterations(3);

void saveVscene(benchmark::State& state) {
    openEdited(state);
    for (auto _ : state)
        check(runtime::sceneDocument().exportAll(file("large.vscene")), state);
}
BENCHMARK(saveVscene)->Unit(benchmark::kMillisecond)->UseRealTime()->Iterations(3);

void openVscene(benchmark::State& state) {
    open(state, file("large.vscene"));
}
BENCHMARK(openVscene)->Unit(benchmark::kMillisecond)->UseRealTime()->Iterations(3);

void writeLargeGlb() {
    runtime::FileResult result =
        runtime::writeGltf(benchscene::largeSkinnedGrid(), file("large.glb"));
    if (!result.ok())
        std::fprintf(stderr, "%s\n", result.message.c_str());
}

} // namespace

int main(int argc, char** argv) {
    return runBenchmarksInHost(argc, argv, "bench-scene-files", writeLargeGlb);
}
