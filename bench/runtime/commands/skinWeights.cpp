// bench-skin-weights: the skinWeights command on a 100,000-vertex grid with 64 joints and 8
// weights per vertex (largeSkinnedScene.h), centred on x = 0 so that mirroring has two sides.
// Each form runs as a command recorded for undo, as a script or the script editor runs it; its
// undo runs untimed after it, so that every run starts from the same weights. Targets (the label
// of each line): export and import by index under 0.2 s each, import by position under 0.5 s,
// limit to 4 under 0.05 s, quantize under 0.05 s, mirror under 0.3 s, the file under 30 MB
// (file_MB).
#include "HGlobal.h"
#include "benchHostMain.h"
#include "core/HostContext.h"
#include "document/SceneBuilding.h"
#include "largeSkinnedScene.h"
#include "scene/Scene.h"
#include "undo/UndoQueue.h"

#include <QFileInfo>
#include <QTemporaryDir>
#include <benchmark/benchmark.h>
#include <cstdio>
#include <string>

namespace {

QTemporaryDir& folder() {
    static QTemporaryDir dir;
    return dir;
}

const std::string& weightsFile() {
    static const std::string path = folder().filePath("weights.json").toStdString();
    return path;
}

bool runCommand(const std::string& command, benchmark::State& state) {
    if (HGlobal::executeCommand(HString(command), false, true))
        return true;
    state.SkipWithError(("failed: " + command).c_str());
    return false;
}

// Runs command timed, with `before` untimed ahead of it (an edit that makes the command's work
// real), and undoes both untimed.
void runAndUndo(benchmark::State& state, const std::string& command,
                const std::string& before = std::string()) {
    runtime::UndoQueue& queue = runtime::host().get<runtime::UndoQueue>();
    for (auto _ : state) {
        state.PauseTiming();
        if (!before.empty() && !runCommand(before, state))
            break;
        state.ResumeTiming();
        if (!runCommand(command, state))
            break;
        state.PauseTiming();
        queue.undo();
        if (!before.empty())
            queue.undo();
        state.ResumeTiming();
    }
    queue.flush();
}

void exportWeights(benchmark::State& state) {
    for (auto _ : state)
        if (!runCommand("skinWeights -export \"" + weightsFile() + "\"", state))
            break;
    state.counters["file_MB"] =
        static_cast<double>(QFileInfo(QString::fromStdString(weightsFile())).size()) / 1e6;
    state.SetLabel("target: under 200 ms; the file under 30 MB");
}
BENCHMARK(exportWeights)->Unit(benchmark::kMillisecond)->UseRealTime()->Iterations(5);

void importByIndex(benchmark::State& state) {
    runAndUndo(state, "skinWeights -import \"" + weightsFile() + "\"", "skinWeights -quantize 7");
    state.SetLabel("target: under 200 ms");
}
BENCHMARK(importByIndex)->Unit(benchmark::kMillisecond)->UseRealTime()->Iterations(5);

void importByPosition(benchmark::State& state) {
    runAndUndo(state, "skinWeights -import \"" + weightsFile() + "\" -method position",
               "skinWeights -quantize 7");
    state.SetLabel("target: under 500 ms");
}
BENCHMARK(importByPosition)->Unit(benchmark::kMillisecond)->UseRealTime()->Iterations(5);

void limitToFour(benchmark::State& state) {
    runAndUndo(state, "skinWeights -limit 4");
    state.SetLabel("target: under 50 ms");
}
BENCHMARK(limitToFour)->Unit(benchmark::kMillisecond)->UseRealTime()->Iterations(5);

void quantize(benchmark::State& state) {
    runAndUndo(state, "skinWeights -quantize 255");
    state.SetLabel("target: under 50 ms");
}
BENCHMARK(quantize)->Unit(benchmark::kMillisecond)->UseRealTime()->Iterations(5);

void mirror(benchmark::State& state) {
    runAndUndo(state, "skinWeights -mirror x");
    state.SetLabel("target: under 300 ms");
}
BENCHMARK(mirror)->Unit(benchmark::kMillisecond)->UseRealTime()->Iterations(5);

// The grid and its joints moved by half the grid's width, so that x = 0 runs through its
// middle: a column of vertices in the plane, 200 columns on the negative side, 199 on the
// positive one.
void buildGrid() {
    runtime::SceneDescription description = benchscene::largeSkinnedGrid();
    for (runtime::SceneNode& node : description.nodes)
        if (node.parent < 0)
            node.transform.translation[0] -= 200.0;
    runtime::Scene& scene = runtime::scene();
    std::unique_ptr<runtime::Scene> staging = scene.makeStaging();
    runtime::FileResult result = runtime::buildScene(description, *staging, "grid",
                                                     runtime::ProgressReporter::silent());
    if (!result.ok()) {
        std::fprintf(stderr, "%s\n", result.message.c_str());
        return;
    }
    scene.replaceWith(*staging);
}

} // namespace

int main(int argc, char** argv) {
    return runBenchmarksInHost(argc, argv, "bench-skin-weights", buildGrid);
}
