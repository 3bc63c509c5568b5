// bench-scene-plug-write: the scene's share of a short command such as
// "setAttr |root|spine1.lockInfluenceWeights 1": finding the plug from its text, keeping the old
// value for undo and writing the new one. The whole command must stay under 20 µs; this part
// should take a few.
#include "benchHostMain.h"
#include "scene/PlugPath.h"
#include "scene/Scene.h"

#include <benchmark/benchmark.h>

namespace {

const char* const kPlug = "|root|spine1.lockInfluenceWeights";

void findPlugFromText(benchmark::State& state) {
    for (auto _ : state) {
        runtime::Plug plug = runtime::findPlug(runtime::scene(), kPlug);
        benchmark::DoNotOptimize(plug);
    }
}
BENCHMARK(findPlugFromText);

void findKeepAndWrite(benchmark::State& state) {
    runtime::Scene& scene = runtime::scene();
    bool value = true;
    for (auto _ : state) {
        runtime::Plug plug = runtime::findPlug(scene, kPlug);
        runtime::ValueSnapshot old = scene.snapshot(plug);
        scene.setValue(plug, value);
        value = !value;
        benchmark::DoNotOptimize(old);
    }
}
BENCHMARK(findKeepAndWrite);

// A scene of the size a character brings: a hundred joints and some meshes beside the one
// written.
void buildScene() {
    runtime::Scene& scene = runtime::scene();
    runtime::NodePtr root = scene.createNode("joint", "root");
    runtime::NodePtr parent = root;
    for (int j = 1; j <= 100; ++j)
        parent = scene.createNode("joint", "spine" + std::to_string(j),
                                  j % 10 == 1 ? root.get() : parent.get());
    for (int m = 0; m < 20; ++m)
        scene.createNode("mesh", "part" + std::to_string(m) + "Shape",
                         scene.createNode("transform", "part" + std::to_string(m)).get());
}

} // namespace

int main(int argc, char** argv) {
    return runBenchmarksInHost(argc, argv, "bench-scene-plug-write", buildScene);
}
