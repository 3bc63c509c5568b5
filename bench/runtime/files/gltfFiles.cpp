// Opening and saving a large skinned glTF file through the scene description: 100,000
// vertices, 64 joints, 8 weights per vertex, as a .glb. Targets: opening and saving each under
// 0.5 s, and the peak memory of opening under 300 MB. Prints the times and, for opening, the
// process's peak resident memory (measured from a reset high-water mark).
#include "files/GltfReader.h"
#include "files/GltfWriter.h"

#include <QTemporaryDir>
#include <benchmark/benchmark.h>
#include <cmath>
#include <fstream>
#include <memory>
#include <string>

using namespace runtime;

namespace {

constexpr int kColumns = 400;
constexpr int kRows = 250; // 100,000 vertices
constexpr int kJoints = 64;
constexpr int kWeightsPerVertex = 8;

// A grid in XZ, with a chain of joints along X; each vertex is weighted to its eight nearest
// joints, more to the nearer ones.
SceneDescription largeSkinnedGrid() {
    SceneDescription scene;
    const double jointSpacing = static_cast<double>(kColumns) / kJoints;
    for (int j = 0; j < kJoints; ++j) {
        SceneNode joint;
        joint.name = "joint" + std::to_string(j);
        joint.parent = j - 1;
        joint.isJoint = true;
        joint.transform.translation = {j == 0 ? 0.0 : jointSpacing, 0.0, 0.0};
        scene.nodes.push_back(joint);
    }
    SceneNode body;
    body.name = "body";
    body.mesh = 0;
    scene.nodes.push_back(body);

    SceneMesh grid;
    grid.name = "grid";
    for (int r = 0; r < kRows; ++r)
        for (int c = 0; c < kColumns; ++c)
            grid.points.push_back({static_cast<double>(c), 0.0, static_cast<double>(r)});
    for (int r = 0; r + 1 < kRows; ++r)
        for (int c = 0; c + 1 < kColumns; ++c) {
            const int v = r * kColumns + c;
            grid.polygonSizes.push_back(4);
            grid.polygonVertices.insert(grid.polygonVertices.end(),
                                        {v, v + kColumns, v + kColumns + 1, v + 1});
        }
    scene.meshes.push_back(std::move(grid));

    SceneSkin skin;
    skin.meshNode = kJoints;
    for (int j = 0; j < kJoints; ++j) {
        skin.joints.push_back(j);
        Matrix4 inverse = identityMatrix();
        inverse[12] = -j * jointSpacing;
        skin.inverseBindMatrices.push_back(inverse);
    }
    const std::vector<std::array<double, 3>>& points = scene.meshes[0].points;
    skin.weights.reserve(points.size(), points.size() * kWeightsPerVertex);
    for (const auto& point : points) {
        const int nearest = std::min(kJoints - 1, static_cast<int>(point[0] / jointSpacing));
        const int first =
            std::clamp(nearest - kWeightsPerVertex / 2, 0, kJoints - kWeightsPerVertex);
        double total = 0.0;
        std::array<double, kWeightsPerVertex> raw;
        for (int k = 0; k < kWeightsPerVertex; ++k) {
            raw[k] = 1.0 / (1.0 + std::fabs(point[0] - (first + k) * jointSpacing));
            total += raw[k];
        }
        skin.weights.startVertex();
        for (int k = 0; k < kWeightsPerVertex; ++k)
            skin.weights.add(first + k, raw[k] / total);
    }
    scene.skins.push_back(std::move(skin));
    return scene;
}

double megabytes(const char* field) {
    std::ifstream status("/proc/self/status");
    std::string line;
    while (std::getline(status, line))
        if (line.rfind(field, 0) == 0)
            return std::stod(line.substr(std::string(field).size())) / 1024.0;
    return 0.0;
}

// Starts a new high-water mark of resident memory (Linux: writing 5 to clear_refs).
void resetPeakMemory() {
    std::ofstream("/proc/self/clear_refs") << "5";
}

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
    state.counters["joints"] = kJoints;
}

void openGlb(benchmark::State& state) {
    g_generated.reset(); // only what opening needs stays in memory
    const double before = megabytes("VmRSS:");
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
    state.counters["peak_MB"] = megabytes("VmHWM:");
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
