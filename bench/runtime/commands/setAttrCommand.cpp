// bench-set-attr-command: a whole short command as the plug-in runs it,
// "setAttr |root|spine1.lockInfluenceWeights 1": parsed, run and recorded for undo, in a scene
// of the size a character brings. Target: under 20 µs. For comparison the same without undo,
// and getAttr.
#include "HGlobal.h"
#include "benchHostMain.h"
#include "core/HostContext.h"
#include "undo/UndoQueue.h"

#include <benchmark/benchmark.h>
#include <string>

namespace {

const char* const kLock = "setAttr |root|spine1.lockInfluenceWeights 1";
const char* const kUnlock = "setAttr |root|spine1.lockInfluenceWeights 0";

// Lock and unlock in turn, so that every run changes the value. The queue is full after the
// first 50 runs: from then on each run also drops the oldest entry, as in a long session.
void setAttrRecorded(benchmark::State& state) {
    bool lock = true;
    for (auto _ : state) {
        HGlobal::executeCommand(lock ? kLock : kUnlock, false, true);
        lock = !lock;
    }
    runtime::host().get<runtime::UndoQueue>().flush();
}
BENCHMARK(setAttrRecorded);

void setAttrWithoutUndo(benchmark::State& state) {
    bool lock = true;
    for (auto _ : state) {
        HGlobal::executeCommand(lock ? kLock : kUnlock);
        lock = !lock;
    }
}
BENCHMARK(setAttrWithoutUndo);

void getAttr(benchmark::State& state) {
    int value = 0;
    for (auto _ : state)
        HGlobal::executeCommand("getAttr |root|spine1.lockInfluenceWeights", value);
    benchmark::DoNotOptimize(value);
}
BENCHMARK(getAttr);

// A hundred joints under root, in chains of ten, and twenty cubes.
void buildScene() {
    std::string script = "joint -n root;";
    for (int j = 1; j <= 100; ++j) {
        if (j % 10 == 1)
            script += "select root;";
        script += "joint -n spine" + std::to_string(j) + ";";
    }
    script += "select -cl;";
    for (int m = 0; m < 20; ++m)
        script += "polyCube -n part" + std::to_string(m) + ";";
    HGlobal::executeCommand(script.c_str());
}

} // namespace

int main(int argc, char** argv) {
    return runBenchmarksInHost(argc, argv, "bench-set-attr-command", buildScene);
}
