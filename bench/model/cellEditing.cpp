// bench-cell-editing: typing into the Vorel table of a 100,000-vertex, 64-influence mesh with
// 8 weights per vertex, the way the table's editor hands the text to the model: the command,
// the read-back and the re-evaluation of the hidden columns.
// - one cell: target under 50 ms;
// - 1,000 selected cells of one column: target under 1 s;
// - memory: fifty single-cell edits, all kept in the host's undo queue, must leave the
//   process's resident size under twice what it was after loading ("rss_ratio").
#include "HGlobal.h"
#include "benchHostMain.h"
#include "largeSkinnedScene.h"
#include "largeTable.h"

#include <QAbstractItemModel>
#include <QItemSelectionModel>
#include <QTableView>
#include <benchmark/benchmark.h>

namespace {

QAbstractItemModel* tableModel = nullptr;
QTableView* table = nullptr;
double loadedMegabytes = 0.0;

bool run(const char* command) {
    return static_cast<bool>(HGlobal::executeCommand(command));
}

void prepare() {
    const LargeTable large = openLargeTable(VOREL_PLUGIN_PATH);
    tableModel = large.model;
    table = large.table;
    if (!tableModel || !table)
        return;
    loadedMegabytes = benchscene::residentMegabytes();
}

// Selects `count` cells of column 5 from row 1 down.
void selectCells(int count) {
    table->selectionModel()->select(
        QItemSelection(tableModel->index(1, 5), tableModel->index(count, 5)),
        QItemSelectionModel::ClearAndSelect);
}

void typeValue(benchmark::State& state) {
    if (!tableModel) {
        state.SkipWithError("the plug-in did not load");
        return;
    }
    const int cells = static_cast<int>(state.range(0));
    selectCells(cells);
    bool high = false;
    for (auto _ : state) {
        high = !high;
        tableModel->setData(tableModel->index(1, 5), high ? "0.6" : "0.2", Qt::EditRole);
    }
    state.counters["cells"] = cells;
}
BENCHMARK(typeValue)->Arg(1)->Unit(benchmark::kMillisecond)->Iterations(20);
BENCHMARK(typeValue)->Arg(1000)->Unit(benchmark::kMillisecond)->Iterations(3);

void fiftyEditsKeptForUndo(benchmark::State& state) {
    if (!tableModel) {
        state.SkipWithError("the plug-in did not load");
        return;
    }
    for (auto _ : state) {
        run("flushUndo");
        for (int edit = 0; edit < 50; ++edit) {
            table->selectionModel()->select(tableModel->index(1 + edit * 7, 2 + edit % 60),
                                            QItemSelectionModel::ClearAndSelect);
            tableModel->setData(tableModel->index(1 + edit * 7, 2 + edit % 60),
                                edit % 2 ? "0.35" : "0.15", Qt::EditRole);
        }
    }
    const double after = benchscene::residentMegabytes();
    state.counters["rss_loaded_MB"] = loadedMegabytes;
    state.counters["rss_after_MB"] = after;
    state.counters["rss_ratio"] = after / loadedMegabytes;
}
BENCHMARK(fiftyEditsKeptForUndo)->Unit(benchmark::kMillisecond)->Iterations(1);

} // namespace

int main(int argc, char** argv) {
    return runBenchmarksInHost(argc, argv, "bench-cell-editing", prepare);
}
