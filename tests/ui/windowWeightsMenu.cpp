// The window's "Weights" menu: each entry runs the host's skinWeights command on the loaded
// meshes, or on the vertices of the selected rows, as one host undo step, with the values its
// dialog asks for, and the table shows the weights it wrote.
#include "OutputRecorder.h"
#include "sceneWeights.h"

#include <QAction>
#include <QComboBox>
#include <QDialog>
#include <QFile>
#include <QLineEdit>
#include <QMainWindow>
#include <QSpinBox>
#include <QTableView>
#include <QTemporaryDir>
#include <QTimer>
#include <cmath>
#include <functional>
#include <gtest/gtest.h>

namespace {

class WeightsMenu : public vorel::VorelWindowTest {
protected:
    void SetUp() override {
        VorelWindowTest::SetUp();
        body = vorel::makeMesh(4, 3, 3);
        vorel::setWeights(body,
                          {{0.5, 0.3, 0.2}, {0.25, 0.7, 0.05}, {0.3, 0.6, 0.1}, {0.1, 0.2, 0.7}});
        selectAndLoad("body");
    }

    // Triggers the menu entry; `fill` gets the dialog it opens, which is then accepted.
    void choose(const QString& entry, std::function<void(QDialog*)> fill = nullptr) {
        QAction* action = nullptr;
        for (QAction* candidate : window->findChildren<QAction*>())
            if (candidate->text() == entry)
                action = candidate;
        ASSERT_NE(action, nullptr) << entry.toStdString();
        if (fill)
            // Runs once the dialog's own event loop has started.
            QTimer::singleShot(0, window, [this, fill] {
                QDialog* dialog = window->findChild<QDialog*>();
                ASSERT_NE(dialog, nullptr);
                fill(dialog);
                dialog->accept();
            });
        action->trigger();
    }
    static void setFile(QDialog* dialog, const QString& path) {
        dialog->findChild<QLineEdit*>("weightsFileEdit")->setText(path);
    }
    vorel::MeshWeights allWeights() const { return vorel::everyVertexWeights(body); }
    static int nonZero(const std::vector<double>& weights) {
        int count = 0;
        for (double weight : weights)
            count += weight > 0.0 ? 1 : 0;
        return count;
    }

    fixture::SkinnedMesh body;
    OutputRecorder output;
};

} // namespace

TEST_F(WeightsMenu, ExportedWeightsComeBackByImportAsOneUndoStep) {
    QTemporaryDir folder;
    const QString path = folder.filePath("body weights.json");
    const auto before = allWeights();
    choose("Export Weights...", [&](QDialog* dialog) { setFile(dialog, path); });
    ASSERT_TRUE(QFile::exists(path));
    ASSERT_TRUE(vorel::run("skinWeights -quantize 2"));
    choose("Import Weights...", [&](QDialog* dialog) {
        setFile(dialog, path);
        dialog->findChild<QComboBox*>("weightsMethodBox")->setCurrentText("position");
    });
    EXPECT_EQ(allWeights(), before);
    EXPECT_EQ(cellText(2, 2), "0.050");
    ASSERT_TRUE(vorel::run("undo"));
    EXPECT_NE(allWeights(), before);
    EXPECT_TRUE(output.texts(HCommandMessage::kError).empty());
}

TEST_F(WeightsMenu, LimitTakesTheMaximumBoxsNumberAndTheSelectedRowsOnly) {
    window->findChild<QLineEdit*>("maxInfluenceEdit")->setText("2");
    selectCells({{2, 0}, {3, 1}});
    const auto before = allWeights();
    choose("Limit Influences");
    EXPECT_EQ(vorel::weightsOf(body, 0), before[0]);
    EXPECT_EQ(vorel::weightsOf(body, 3), before[3]);
    for (int vertex : {1, 2}) {
        EXPECT_EQ(nonZero(vorel::weightsOf(body, vertex)), 2) << vertex;
        EXPECT_EQ(cellText(vertex + 1, 2), "0.000") << vertex;
    }
    ASSERT_TRUE(vorel::run("undo"));
    EXPECT_EQ(allWeights(), before);
}

TEST_F(WeightsMenu, QuantizeAndMirrorRunOnEveryLoadedMesh) {
    choose("Quantize...",
           [](QDialog* dialog) { dialog->findChild<QSpinBox*>("weightsStepsBox")->setValue(4); });
    for (const auto& weights : allWeights())
        for (double weight : weights)
            EXPECT_EQ(weight * 4, std::round(weight * 4)) << weight;
    EXPECT_EQ(cellText(1, 0), "0.500");
    output.clear();
    choose("Mirror Weights...", [](QDialog* dialog) {
        dialog->findChild<QComboBox*>("weightsAxisBox")->setCurrentText("y");
        dialog->findChild<QComboBox*>("weightsDirectionBox")->setCurrentText("negative");
    });
    ASSERT_FALSE(output.lines().empty());
    EXPECT_EQ(output.lines().front().text.rfind("skinWeights -mirror y -direction negative |", 0),
              0u)
        << output.lines().front().text;
}

TEST_F(WeightsMenu, BadInputChangesNothing) {
    const auto before = allWeights();
    window->findChild<QLineEdit*>("maxInfluenceEdit")->setText("none");
    choose("Limit Influences");
    EXPECT_EQ(output.texts(HCommandMessage::kError),
              std::vector<std::string>{"Can not set maximum influence with this number."});
    output.clear();
    // A file that is not there is the command's own error.
    choose("Import Weights...", [](QDialog* dialog) { setFile(dialog, "/nonexistent/w.json"); });
    EXPECT_EQ(output.texts(HCommandMessage::kError).size(), 1u);
    EXPECT_EQ(allWeights(), before);
    ASSERT_TRUE(vorel::run("file -f -new"));
    window->findChild<QLineEdit*>("maxInfluenceEdit")->setText("4");
    output.clear();
    choose("Limit Influences");
    EXPECT_EQ(output.texts(HCommandMessage::kError),
              std::vector<std::string>{"There is no weight list displayed in the window."});
}
