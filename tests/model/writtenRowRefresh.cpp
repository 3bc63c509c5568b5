// After an edit, its undo and its redo, the table reads back only the rows written (and those an
// edit's own read-back rounded differently); it must then show exactly what reading the whole
// table from the scene shows. Over two meshes (one bound to some of the other's joints, vertices
// not normalised, the first of each without any weight), seeded random typed values, cell and
// column drags, floods, rounding and maximum influences, between random cell locks, precisions
// and weights changed by a command meanwhile, compare the table after each host undo and redo
// with the same table loaded anew.
#include "HGlobal.h"
#include "OutputRecorder.h"
#include "windowControls.h"

#include <QAbstractItemModel>
#include <QColor>
#include <QComboBox>
#include <QItemSelectionModel>
#include <QLineEdit>
#include <QMetaObject>
#include <QPushButton>
#include <QSlider>
#include <QTableView>
#include <QTest>
#include <gtest/gtest.h>
#include <random>

namespace {

using Rows = std::vector<std::vector<double>>;

constexpr int kBodyVertices = 24;
constexpr int kArmVertices = 10;

// What the table shows: every cell's text and colours, the row headers and the hidden columns.
// A shape header row's mark is left out: a load marks a shape whose vertices do not sum to
// one, while a read after an edit shows every shape unmarked; that is checked apart.
struct Shown {
    std::vector<QString> cells;
    std::vector<QString> rowHeaders;
    std::vector<bool> hiddenColumns;
    bool operator==(const Shown& other) const {
        return cells == other.cells && rowHeaders == other.rowHeaders &&
               hiddenColumns == other.hiddenColumns;
    }
};

QString colourText(const QVariant& value) {
    return value.isValid() ? value.value<QColor>().name() : QString("-");
}

class RowRefresh : public vorel::VorelControlsTest {
protected:
    void SetUp() override {
        VorelControlsTest::SetUp();
        random.seed(7);
        body = vorel::makeMesh(kBodyVertices, 6, 3);
        vorel::setWeights(body, randomRows(kBodyVertices, 6));
        arm = vorel::bindMesh("arm", {body.joints[1], body.joints[3], body.joints[4]},
                              randomRows(kArmVertices, 3));
        selectAndLoad("body arm");
        ASSERT_EQ(model->rowCount(), kBodyVertices + kArmVertices + 2);
    }

    // Random weights; every seventh vertex does not sum to one, the first has no weight.
    Rows randomRows(int vertices, int influences) {
        Rows rows(vertices, std::vector<double>(influences, 0.0));
        std::uniform_real_distribution<double> share(0.01, 1.0);
        for (int v = 1; v < vertices; ++v) {
            double sum = 0.0;
            for (int k = 0; k < influences; ++k)
                if (random() % 2 == 0)
                    sum += rows[v][k] = share(random);
            if (sum == 0.0)
                sum += rows[v][0] = 1.0;
            const double total = v % 7 == 3 ? sum * 1.05 : sum;
            for (double& weight : rows[v])
                weight /= total;
        }
        return rows;
    }

    Shown shown() const {
        Shown result;
        for (int row = 0; row < model->rowCount(); ++row) {
            const bool header = !rowHeader(row, Qt::DisplayRole).toString().startsWith("vtx[");
            result.rowHeaders.push_back(
                rowHeader(row, Qt::DisplayRole).toString() + " " +
                colourText(rowHeader(row, Qt::ForegroundRole)) + " " +
                (header ? QString() : colourText(rowHeader(row, Qt::BackgroundRole))));
            for (int column = 0; column < model->columnCount(); ++column)
                result.cells.push_back(cellText(row, column) + " " +
                                       colourText(cellData(row, column, Qt::BackgroundRole)) + " " +
                                       colourText(cellData(row, column, Qt::ForegroundRole)));
        }
        for (int column = 0; column < model->columnCount(); ++column)
            result.hiddenColumns.push_back(table->isColumnHidden(column));
        return result;
    }

    // No shape header row carries the mark of a shape that does not sum to one.
    bool shapeRowsUnmarked() const {
        for (int row = 0; row < model->rowCount(); ++row)
            if (!rowHeader(row, Qt::DisplayRole).toString().startsWith("vtx[") &&
                rowHeader(row, Qt::BackgroundRole).isValid())
                return false;
        return true;
    }

    // The table as it shows now, against the same table loaded anew from the scene.
    void expectSameAsLoaded(const std::string& when) {
        const Shown refreshed = shown();
        EXPECT_TRUE(shapeRowsUnmarked()) << when;
        selectAndLoad(loadedItems);
        const Shown loaded = shown();
        EXPECT_TRUE(refreshed == loaded) << when;
    }

    std::pair<int, int> randomCell() {
        const int row = 1 + static_cast<int>(random() % (model->rowCount() - 1));
        return {row, static_cast<int>(random() % model->columnCount())};
    }

    void typeRandomValue() {
        std::vector<std::pair<int, int>> cells;
        for (int n = 1 + static_cast<int>(random() % 3); n > 0; --n)
            cells.push_back(randomCell());
        selectCells(cells);
        const char* const entries[] = {"0.25", "0", "1", "0.3333", "+=0.1", "*=0.5"};
        const char* entry = entries[random() % 6];
        // The editor opens on a cell that takes a value; the others selected are edited too.
        for (const auto& cell : cells)
            if (model->flags(model->index(cell.first, cell.second)) & Qt::ItemIsEditable) {
                typeIntoCell(cell, entry);
                return;
            }
    }

    void dragRandomCells() {
        selectCells({randomCell(), randomCell()});
        vorel::release(controls->valueSlider,
                       static_cast<int>(random() % (controls->valueSlider->maximum() + 1)));
    }

    void lockRandomCell() {
        selectCells({randomCell()});
        QMetaObject::invokeMethod(model, random() % 3 ? "lockCell" : "unlockCell");
    }

    // What the table loads, in this order.
    std::string loadedItems = "body arm";
    std::mt19937 random;
    fixture::SkinnedMesh body;
    fixture::SkinnedMesh arm;
};

} // namespace

TEST_F(RowRefresh, TheTableAfterUndoAndRedoIsTheTableLoadedAnew) {
    OutputRecorder output;
    // The edits the window ran, as the script output echoes them.
    const auto editsRun = [&output]() {
        size_t count = 0;
        for (const std::string& text : output.texts(HCommandMessage::kHistory))
            count += text.rfind("vorelCmd -", 0) == 0;
        return count;
    };
    int compared = 0;
    for (int step = 0; step < 80; ++step) {
        const unsigned kind = random() % 11;
        const std::string when = "step " + std::to_string(step) + " (" + std::to_string(kind) + ")";
        const size_t editsBefore = editsRun();
        switch (kind) {
        case 0:
            lockRandomCell();
            break;
        case 1:
            // Precision changes need a table without locks.
            QMetaObject::invokeMethod(model, "unlockAll");
            vorel::enter(controls->precisionEdit, random() % 2 ? "0.01" : "0.001");
            break;
        case 2:
            dragRandomCells();
            break;
        case 3:
            // A change the table did not make: the next edit reads the whole table.
            ASSERT_TRUE(vorel::run("skinPercent -t " + body.joints[random() % 6]->name() +
                                   " -tv 0.5 " + body.cluster->name() + " body.vtx[" +
                                   std::to_string(random() % kBodyVertices) + "]"));
            typeRandomValue();
            break;
        case 4:
            vorel::enter(controls->maxInfluenceEdit, QString::number(1 + random() % 3));
            clickButton("ApplyInfluence");
            break;
        case 5:
            clickButton("RoundPrecision");
            break;
        case 6:
            // A whole column dragged, or flooded with the flood box's value.
            clickColumnHeader(static_cast<int>(random() % model->columnCount()));
            if (random() % 2) {
                vorel::release(controls->valueSlider,
                               static_cast<int>(random() % (controls->valueSlider->maximum() + 1)));
            } else {
                controls->floodOperation->setCurrentIndex(2);
                vorel::enter(controls->floodValueEdit, "0.35");
                vorel::enter(controls->opacityEdit, "1");
                QTest::mouseClick(controls->floodApply, Qt::LeftButton);
            }
            break;
        default:
            typeRandomValue();
            break;
        }
        // Only an edit's own undo and redo refresh the table.
        if (editsRun() == editsBefore)
            continue;
        ++compared;
        // The edit's rows may sit elsewhere, or hold other vertices, by its undo.
        if (random() % 2 == 0) {
            loadedItems = loadedItems == "body arm" ? "arm body" : "body arm";
            selectAndLoad(loadedItems);
        }
        ASSERT_TRUE(vorel::run("undo")) << when;
        expectSameAsLoaded(when + ", undone");
        ASSERT_TRUE(vorel::run("redo")) << when;
        expectSameAsLoaded(when + ", redone");
    }
    EXPECT_GT(compared, 30);
}

TEST_F(RowRefresh, AVertexWithoutWeightStopsTheCorrectionAsALoadDoes) {
    // Vertex 0 of the body has no weight: a load stops correcting rows there, and says so on
    // every read of the table; the rows below it stay as rounded.
    OutputRecorder output;
    selectCells({{kBodyVertices + 3, 0}});
    typeIntoCell({kBodyVertices + 3, 0}, "0.2");
    ASSERT_TRUE(vorel::run("undo"));
    EXPECT_EQ(output.texts(HCommandMessage::kError).back(),
              "There is something wrong accessing weight data.");
    expectSameAsLoaded("after the undo");

    // Giving that vertex a weight moves where the correction stops: the whole table follows.
    selectCells({{1, 2}});
    typeIntoCell({1, 2}, "0.5");
    ASSERT_TRUE(vorel::run("undo"));
    ASSERT_TRUE(vorel::run("redo"));
    expectSameAsLoaded("after the redo");
}
