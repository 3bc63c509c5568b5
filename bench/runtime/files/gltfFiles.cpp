// bench-runtime-files: the glTF format's own share of opening and saving a large skinned file
// (largeSkinnedScene.h: 100,000 vertices, 64 joints, 8 weights per vertex, as a .glb), from the
// file to a scene description and back. bench-scene-files measures the whole way, into and out
// of the live scene, against the targets. Prints the times and, for reading, the process's peak
// resident memory (measured from a reset high-water mark).
#include "files/GltfReader.h"
#include "files/GltfWriter.h"
#include "largeSkinnedScene.h"

#include <QTemporaryDir>
#include <benchmark/benchmark.h>
#include <memory>
#include <string>

using namespace runtime;
using namespace benchscene;

namespace {

QTemporaryDir& folder() {
    static QTemporaryDir dir;
    return dir;
}
std::string largeFile() {
    return folder().filePath("large.glb").toStdString();
}
std::unique_ptr<SceneDescription> g_generated;

void writeFreshGlb(benchmark::State& state) {
    if (!g_generated)
        g_generated = std::make_unique<SceneDescription>(largeSkinnedGrid());
    for (auto _ : state)
        if (!writeGltf(*g_generated, largeFile()).ok())
            state.SkipWithError("writing failed");
    state.counters["vertices"] = g_generated->meshes[0].vertexCount();
    state.counters["joints"] = kGridJoints;
}

void openGlb(benchmark::State& state) {
    g_generated.reset(); // only what opening needs stays in memory
    const double before = residentMegabytes();
    resetPeakMemory();
    std::size_t weights = 0;
    for (auto _ : state) {
        SceneDescription scene;
        if (!readGltf(largeFile(), scene).ok())
            state.SkipWithError("reading failed");
        weights = scene.skins.empty() ? 0 : scene.skins[0].weights.entryCount();
    }
    state.counters["weights"] = static_cast<double>(weights);
    state.counters["rss_before_MB"] = before;
    state.counters["peak_MB"] = peakMegabytes();
}

// Saving a file that was opened: the writer patches the document it came from.
void saveOpenedGlb(benchmark::State& state) {
    SceneDescription scene;
    if (!readGltf(largeFile(), scene).ok()) {
        state.SkipWithError("reading failed");
        return;
    }
    SparseSkinWeights edited;
    for (int v = 0; v < scene.skins[0].weights.vertexCount(); ++v) {
        edited.startVertex();
        for (const SkinWeight& entry : scene.skins[0].weights.vertex(v))
            edited.add(entry.influence, v % 2 == 0 ? entry.weight * 0.5 : entry.weight);
    }
    scene.skins[0].weights = std::move(edited);
    const std::string saved = folder().filePath("saved.glb").toStdString();
    for (auto _ : state)
        if (!writeGltf(scene, saved).ok())
            state.SkipWithError("saving failed");
}

} // namespace

BENCHMARK(writeFreshGlb)->Unit(benchmark::kMillisecond)->UseRealTime()->Iterations(3);
BENCHMARK(openGlb)->Unit(benchmark::kMillisecond)->UseRealTime()->Iterations(3);
BENCHMARK(saveOpenedGlb)->Unit(benchmark::kMillisecond)->UseRealTime()->Iterations(3);

BENCHMARK_MAIN();
