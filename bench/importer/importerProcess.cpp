// bench-importer: what reading the import library's formats in a process of their own costs.
// Each import test model is read through the importer program, as the host reads it, and with
// the same conversion run in this process, as the host once did; the difference is the price of
// starting the program and of sending the scene through the pipe. The importer is read through
// a helper that keeps a spare started, as the host's document does. Target: at most 10% more over
// all models together (compare the two totals).
#include "AssimpImport.h"
#include "files/ImportHelper.h"

#include <benchmark/benchmark.h>
#include <string>
#include <vector>

using namespace runtime;

namespace {

const std::vector<std::string>& models() {
    static const std::vector<std::string> names = {
        "X/Testwuson.X",     "X/BCN_Epileptic.X",
        "FBX/huesitos.fbx",  "FBX/animation_with_skeleton.fbx",
        "SMD/WusonSMD.smd",  "Collada/box_nested_animation.dae",
        "IQM/mrfixit.iqm",   "MS3D/Wuson.ms3d",
        "B3D/WusonBlitz.b3d"};
    return names;
}

std::string modelPath(const std::string& name) {
    return "/usr/share/assimp/models/" + name;
}

template <typename Import> void readAll(benchmark::State& state, Import import) {
    for (auto _ : state)
        for (const std::string& model : models()) {
            SceneDescription scene;
            if (!import(modelPath(model), scene).ok()) {
                state.SkipWithError(("cannot read " + model).c_str());
                return;
            }
            benchmark::DoNotOptimize(scene);
        }
    state.counters["models"] = static_cast<double>(models().size());
}

void allModelsThroughTheImporter(benchmark::State& state) {
    ImportHelper helper;
    readAll(state, [&helper](const std::string& path, SceneDescription& scene) {
        return helper.import(path, scene);
    });
}

void allModelsInProcess(benchmark::State& state) {
    readAll(state, [](const std::string& path, SceneDescription& scene) {
        return importWithAssimp(path, scene);
    });
}

} // namespace

BENCHMARK(allModelsInProcess)->Unit(benchmark::kMillisecond)->MinTime(3.0);
BENCHMARK(allModelsThroughTheImporter)->Unit(benchmark::kMillisecond)->MinTime(3.0);
BENCHMARK_MAIN();
