// bench-weight-editing: the window's whole-table edits on a large mesh (100,000 vertices, 64
// influences, 8 weights per vertex), each from its control to the refreshed table, with the
// host's undo between runs (not timed) so that every run starts from the same weights.
// Targets: maximum influences 4 over all rows under 0.15 s; "Round" under 0.1 s; smoothing with
// nothing selected, 5 iterations, under 1.5 s; an absolute drag of a whole column under 0.1 s;
// unlocking one cell of a locked column, which locks the column's other 99,999 cells one by
// one, under 1 s.
#include "HGlobal.h"
#include "benchHostMain.h"
#include "largeTable.h"

#include <QAbstractItemModel>
#include <QItemSelectionModel>
#include <QMainWindow>
#include <QRadioButton>
#include <QSlider>
#include <QTableView>
#include <benchmark/benchmark.h>

namespace {

QMainWindow* editorWindow = nullptr;
QAbstractItemModel* tableModel = nullptr;
QTableView* tableView = nullptr;
QSlider* valueSlider = nullptr;

bool run(const char* command) {
    return static_cast<bool>(HGlobal::executeCommand(command));
}

void prepare() {
    const LargeTable large = openLargeTable(VOREL_PLUGIN_PATH);
    editorWindow = large.window;
    tableModel = large.model;
    tableView = large.table;
    if (!editorWindow)
        return;
    for (QSlider* slider : editorWindow->findChildren<QSlider*>())
        if (slider->minimum() == -1000)
            valueSlider = slider;
    for (QRadioButton* radio : editorWindow->findChildren<QRadioButton*>())
        if (radio->text() == "absolute")
            radio->click();
}

// Times `edit` once per iteration; the host's undo puts the weights back, untimed.
template <typename Edit> void measure(benchmark::State& state, Edit edit) {
    if (!tableModel || !tableView || !valueSlider) {
        state.SkipWithError("the plug-in did not load");
        return;
    }
    for (auto _ : state) {
        edit();
        state.PauseTiming();
        run("undo");
        state.ResumeTiming();
    }
    state.counters["rows"] = tableModel->rowCount();
}

void maximumInfluences(benchmark::State& state) {
    measure(state, [] {
        tableView->clearSelection();
        QMetaObject::invokeMethod(tableModel, "setMaxValue", Q_ARG(int, 4));
        QMetaObject::invokeMethod(editorWindow, "applyMaxInfluence");
    });
}
BENCHMARK(maximumInfluences)->Unit(benchmark::kMillisecond)->Iterations(3);

void roundWeights(benchmark::State& state) {
    measure(state, [] { QMetaObject::invokeMethod(editorWindow, "applyPrecision"); });
}
BENCHMARK(roundWeights)->Unit(benchmark::kMillisecond)->Iterations(3);

void smoothEverything(benchmark::State& state) {
    measure(state, [] {
        tableView->clearSelection();
        QMetaObject::invokeMethod(tableModel, "applySmoothSkinWeights", Q_ARG(double, 0.0),
                                  Q_ARG(int, 5));
    });
}
BENCHMARK(smoothEverything)->Unit(benchmark::kMillisecond)->Iterations(3);

void dragColumn(benchmark::State& state) {
    measure(state, [] {
        tableView->selectColumn(5);
        valueSlider->setSliderDown(true);
        valueSlider->setValue(valueSlider->value() == 500 ? 400 : 500);
        valueSlider->setSliderDown(false);
    });
}
BENCHMARK(dragColumn)->Unit(benchmark::kMillisecond)->Iterations(3);

void splitColumnLock(benchmark::State& state) {
    if (!tableModel || !tableView) {
        state.SkipWithError("the plug-in did not load");
        return;
    }
    for (auto _ : state) {
        state.PauseTiming();
        tableView->selectColumn(3);
        QMetaObject::invokeMethod(editorWindow, "lockSelected");
        tableView->selectionModel()->select(tableModel->index(1, 3),
                                            QItemSelectionModel::ClearAndSelect);
        state.ResumeTiming();
        QMetaObject::invokeMethod(editorWindow, "unlockSelected");
        state.PauseTiming();
        QMetaObject::invokeMethod(editorWindow, "unlockAll");
        state.ResumeTiming();
    }
    state.counters["rows"] = tableModel->rowCount();
}
BENCHMARK(splitColumnLock)->Unit(benchmark::kMillisecond)->Iterations(3);

} // namespace

int main(int argc, char** argv) {
    return runBenchmarksInHost(argc, argv, "bench-weight-editing", prepare);
}
