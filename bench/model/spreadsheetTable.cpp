// bench-spreadsheet: the spreadsheet additions on a large table (100,000 vertices, 64
// influences, 8 weights per vertex): Ctrl+C of the whole table, and a row query over every
// row, each from its key to the clipboard or the rows shown, and Ctrl+V of 10,000 named rows of
// 8 values, from the key to the refreshed table, with the host's undo between runs (not timed).
// Targets: the copy under 0.5 s, a query under 0.1 s, the paste under 1 s.
#include "HGlobal.h"
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

// 10,000 rows of the first shape by name, 8 joints by name, each row summing to one.
QString pastedRows() {
    QString text;
    for (int column = 0; column < 8; ++column)
        text += '\t' + large.model->headerData(column, Qt::Horizontal).toString();
    text += '\n';
    const QString shape = large.model->headerData(0, Qt::Vertical).toString();
    for (int vertex = 0; vertex < 10000; ++vertex)
        text += QString("%1.vtx[%2]\t0.25\t0.125\t0.125\t0.125\t0.125\t0.125\t0.0625\t0.0625\n")
                    .arg(shape)
                    .arg(vertex);
    return text;
}

void pasteNamedRows(benchmark::State& state) {
    if (!ready(state))
        return;
    runQuery("");
    QApplication::clipboard()->setText(pastedRows());
    for (auto _ : state) {
        QKeyEvent paste(QEvent::KeyPress, Qt::Key_V, Qt::ControlModifier, "v");
        QApplication::sendEvent(large.table, &paste);
        state.PauseTiming();
        // 0.25 when the paste went through.
        state.counters["first_weight"] = large.model->index(1, 0).data().toDouble();
        HGlobal::executeCommand("undo");
        state.ResumeTiming();
    }
}
BENCHMARK(pasteNamedRows)->Unit(benchmark::kMillisecond)->Iterations(3);

} // namespace

int main(int argc, char** argv) {
    return runBenchmarksInHost(argc, argv, "bench-spreadsheet", prepare);
}
