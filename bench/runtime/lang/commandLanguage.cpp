// bench-command-language: what the command language itself costs a short command, from text to
// undo record, with a trivial recorded command standing in for setAttr. The whole of a real
// setAttr must stay under 20 µs; this part should be a small fraction of it.
#include "HArgParser.h"
#include "HGlobal.h"
#include "HLibrary.h"
#include "HPxCommand.h"
#include "core/HostContext.h"
#include "lang/BuiltInCommand.h"
#include "lang/CommandRegistry.h"
#include "lang/ScriptParser.h"
#include "undo/UndoQueue.h"

#include <QApplication>
#include <benchmark/benchmark.h>
#include <cstdio>

namespace {

const char* const kStatement = "benchSet |root|spine1.lockInfluenceWeights 1";

int g_value = 0;

// Reads its arguments as setAttr would and keeps the old value for undo.
class SetValueCommand : public HPxCommand {
public:
    static HSyntax createSyntax() {
        HSyntax syntax;
        syntax.addFlag("-typ", "-type", HSyntax::kString);
        return syntax;
    }
    HStatus doIt(const HArgList& args) override {
        HArgParser parser(syntax(), args);
        m_plug = parser.commandArgumentString(0);
        m_new = parser.commandArgumentInt(1);
        m_old = g_value;
        return redoIt();
    }
    HStatus undoIt() override {
        g_value = m_old;
        return HS::kSuccess;
    }
    HStatus redoIt() override {
        g_value = m_new;
        return HS::kSuccess;
    }
    bool isUndoable() const override { return true; }

private:
    HString m_plug;
    int m_old = 0, m_new = 0;
};

void parseOnly(benchmark::State& state) {
    for (auto _ : state) {
        runtime::ParsedScript parsed = runtime::parseScript(kStatement);
        benchmark::DoNotOptimize(parsed);
    }
}
BENCHMARK(parseOnly);

void runWithoutUndo(benchmark::State& state) {
    for (auto _ : state)
        HGlobal::executeCommand(kStatement);
}
BENCHMARK(runWithoutUndo);

// The queue is full after the first 50 runs: from then on each run also deletes the oldest
// entry, as after a long stretch of editing.
void runAndRecord(benchmark::State& state) {
    for (auto _ : state)
        HGlobal::executeCommand(kStatement, false, true);
    runtime::host().get<runtime::UndoQueue>().flush();
}
BENCHMARK(runAndRecord);

void undoAndRedo(benchmark::State& state) {
    runtime::UndoQueue& queue = runtime::host().get<runtime::UndoQueue>();
    HGlobal::executeCommand(kStatement, false, true);
    for (auto _ : state) {
        queue.undo();
        queue.redo();
    }
    queue.flush();
}
BENCHMARK(undoAndRedo);

} // namespace

int main(int argc, char** argv) {
    benchmark::Initialize(&argc, argv);
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication application(argc, argv);
    HStatus status = HLibrary::initialize("bench-command-language");
    if (!status) {
        std::fprintf(stderr, "cannot start the host: %s\n", status.errorString().asChar());
        return 1;
    }
    runtime::host().get<runtime::CommandRegistry>().add("benchSet",
                                                        runtime::createCommand<SetValueCommand>,
                                                        &SetValueCommand::createSyntax, "bench");
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    HLibrary::cleanup();
    return 0;
}
