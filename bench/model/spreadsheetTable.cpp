// bench-spreadsheet: the spreadsheet additions on a large table (100,000 vertices, 64
// influences, 8 weights per vertex): Ctrl+C of the whole table, and a row query over every
// row, each from its key to the clipboard or the rows shown. Targets: the copy under 0.5 s, a
// query under 0.1 s.
#include "benchHostMain.h"
#include "largeTable.h"

#include <QAbstractItemModel>
#include <QApplication>
#include <QClipboard>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMainWindow>
#include <QTableView>
#include <benchmark/benchmark.h>

namespace {

LargeTable large;
QLineEdit* queryEdit = nullptr;

void prepare() {
    large = openLargeTable(VOREL_PLUGIN_PATH);
    if (large.window)
        queryEdit = large.window->findChild<QLineEdit*>("rowQueryEdit");
}

bool ready(benchmark::State& state) {
    if (!large.table || !queryEdit)
        state.SkipWithError("the plug-in did not load");
    return large.table && queryEdit;
}

void runQuery(const QString& text) {
    queryEdit->setText(text);
    emit queryEdit->returnPressed();
}

void copyWholeTable(benchmark::State& state) {
    if (!ready(state))
        return;
    runQuery("");
    large.table->selectAll();
    for (auto _ : state) {
        QKeyEvent copy(QEvent::KeyPress, Qt::Key_C, Qt::ControlModifier, "c");
        QApplication::sendEvent(large.table, &copy);
        state.PauseTiming();
        const qsizetype size = QApplication::clipboard()->text().size();
        state.counters["characters"] = static_cast<double>(size);
        QApplication::clipboard()->clear();
        state.ResumeTiming();
    }
}
BENCHMARK(copyWholeTable)->Unit(benchmark::kMillisecond)->Iterations(3);

// Alternates two queries, so that every run hides and shows rows.
void queryEveryRow(benchmark::State& state) {
    if (!ready(state))
        return;
    const QString names = large.model->headerData(5, Qt::Horizontal).toString();
    const QString queries[] = {"influences > 7 and " + names + " > 0.1",
                               "sum < 0.999 or not (" + names + " >= 0.05)"};
    int turn = 0;
    for (auto _ : state) {
        runQuery(queries[turn++ % 2]);
        // The view lays out its rows anew on its next turn of the event loop.
        QCoreApplication::processEvents();
    }
    int shown = 0;
    for (int row = 0; row < large.model->rowCount(); ++row)
        shown += large.table->isRowHidden(row) ? 0 : 1;
    state.counters["rows shown"] = shown;
    runQuery("");
}
BENCHMARK(queryEveryRow)->Unit(benchmark::kMillisecond)->Iterations(6);

} // namespace

int main(int argc, char** argv) {
    return runBenchmarksInHost(argc, argv, "bench-spreadsheet", prepare);
}
