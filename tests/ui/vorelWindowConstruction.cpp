// The Vorel window as it opens: its controls with their texts, sizes, ranges and defaults, the
// order of its rows, its table and headers, and its menu. Sizes are minimums, which a control
// exceeds only when its text needs the room (wholeTexts.cpp): buttons keep one width.
#include "OutputRecorder.h"
#include "windowControls.h"

#include <QAbstractItemModel>
#include <QAction>
#include <QComboBox>
#include <QHeaderView>
#include <QLabel>
#include <QLayout>
#include <QLineEdit>
#include <QMainWindow>
#include <QMenu>
#include <QMenuBar>
#include <QPushButton>
#include <QRadioButton>
#include <QSlider>
#include <QTableView>
#include <algorithm>
#include <gtest/gtest.h>

namespace {

class WindowLayout : public vorel::VorelControlsTest {
protected:
    template <typename Widget> Widget* withText(const QString& text) const {
        return vorel::withText<Widget>(window, text);
    }
    int top(QWidget* widget) const { return widget->mapTo(window, QPoint(0, 0)).y(); }
};

} // namespace

TEST_F(WindowLayout, ButtonsHaveTheirTextsNamesAndWidths) {
    const std::vector<std::pair<QString, QString>> named{{"ApplyInfluence", "Apply"},
                                                         {"LoadComponent", "Load Component"},
                                                         {"RoundPrecision", "Round"},
                                                         {"Apply", "Apply"}};
    for (const auto& [name, text] : named) {
        QPushButton* pushButton = window->findChild<QPushButton*>(name);
        ASSERT_NE(pushButton, nullptr) << name.toStdString();
        EXPECT_EQ(pushButton->text(), text);
        EXPECT_GE(pushButton->width(), 140);
    }
    const int width = button("LoadComponent")->width();
    for (const QString text : {"Filter", "Highlight", "Lock", "UnLock", "UnLock All", "Round"})
        EXPECT_EQ(button(text)->width(), width) << text.toStdString();
    for (const QString text : {"Filter", "Highlight"}) {
        EXPECT_TRUE(button(text)->isCheckable());
        EXPECT_FALSE(button(text)->isChecked());
        EXPECT_EQ(button(text)->styleSheet(),
                  "QPushButton:checked { background-color: lightGray; color: black}");
    }
}

TEST_F(WindowLayout, EditBoxesAndSlidersStartAtTheirDefaults) {
    QLineEdit* maxInfluences = controls->maxInfluenceEdit;
    ASSERT_NE(maxInfluences, nullptr);
    EXPECT_EQ(maxInfluences->text(), "4");
    EXPECT_GE(maxInfluences->maximumWidth(), 30);
    EXPECT_EQ(vorel::besideWidget(window, withText<QLabel>("Max influences: "), 1), maxInfluences);

    QLineEdit* precision = controls->precisionEdit;
    ASSERT_NE(precision, nullptr);
    EXPECT_EQ(precision->text(), "0.001");
    EXPECT_GE(precision->width(), 50);

    struct Line {
        QString label, text;
        QLineEdit* edit;
        QSlider* slider;
        int minimum, maximum, value;
        bool enabled;
    };
    for (const Line& line : {Line{"Opacity:", "1.000", controls->opacityEdit,
                                  controls->opacitySlider, 0, 10000, 10000, false},
                             Line{"Value:", "1.000", controls->floodValueEdit,
                                  controls->floodValueSlider, 0, 10000, 10000, false},
                             Line{"Required Weight Difference:", "0.000", controls->differenceEdit,
                                  controls->differenceSlider, 0, 100000, 0, true},
                             Line{"Smoothing Iterations:", "5", controls->iterationsEdit,
                                  controls->iterationsSlider, 0, 100, 5, true}}) {
        SCOPED_TRACE(line.label.toStdString());
        QLabel* label = withText<QLabel>(line.label);
        QLineEdit* edit = line.edit;
        QSlider* slider = line.slider;
        ASSERT_TRUE(label && edit && slider);
        EXPECT_GE(label->width(), 160);
        EXPECT_TRUE(label->alignment() & Qt::AlignRight);
        EXPECT_EQ(edit->text(), line.text);
        EXPECT_GE(edit->width(), 70);
        EXPECT_EQ(slider->width(), 110);
        EXPECT_EQ(slider->minimum(), line.minimum);
        EXPECT_EQ(slider->maximum(), line.maximum);
        EXPECT_EQ(slider->value(), line.value);
        EXPECT_EQ(label->isEnabled(), line.enabled);
        EXPECT_EQ(edit->isEnabled(), line.enabled);
        EXPECT_EQ(slider->isEnabled(), line.enabled);
    }
}

TEST_F(WindowLayout, ValueRowStartsRelativeAtZero) {
    EXPECT_TRUE(controls->relative->isChecked());
    EXPECT_FALSE(controls->absolute->isChecked());
    QSlider* slider = controls->valueSlider;
    ASSERT_NE(slider, nullptr);
    EXPECT_EQ(slider->width(), 400);
    EXPECT_EQ(slider->minimum(), -1000);
    EXPECT_EQ(slider->maximum(), 1000);
    EXPECT_EQ(slider->value(), 0);
    EXPECT_EQ(slider->tickInterval(), 1000);
    EXPECT_EQ(slider->tickPosition(), QSlider::TicksBothSides);
    EXPECT_GE(controls->valueEdit->width(), 70);
    EXPECT_TRUE(controls->valueEdit->text().isEmpty());
}

TEST_F(WindowLayout, FloodOperationsStartWithSmoothSkinWeight) {
    QComboBox* operations = window->findChild<QComboBox*>();
    ASSERT_NE(operations, nullptr);
    ASSERT_EQ(operations->count(), 3);
    EXPECT_EQ(operations->itemText(0), "Smooth Skin Weight");
    EXPECT_EQ(operations->itemText(1), "Smooth(Per Influence)");
    EXPECT_EQ(operations->itemText(2), "Replace(Per Influence)");
    EXPECT_EQ(operations->currentIndex(), 0);
    EXPECT_GE(operations->width(), 140);
    EXPECT_GE(operations->height(), 24);
}

TEST_F(WindowLayout, RowsStandInTheirOrderAboveTheTable) {
    window->centralWidget()->layout()->activate();
    const std::vector<QWidget*> topToBottom{window->findChild<QLineEdit*>("maxInfluenceEdit"),
                                            window->findChild<QPushButton*>("RoundPrecision"),
                                            controls->differenceEdit,
                                            controls->iterationsEdit,
                                            controls->opacityEdit,
                                            controls->floodValueEdit,
                                            button("LoadComponent"),
                                            button("Lock"),
                                            controls->relative,
                                            table};
    for (size_t i = 1; i < topToBottom.size(); ++i)
        EXPECT_LT(top(topToBottom[i - 1]), top(topToBottom[i])) << "row " << i;
    EXPECT_EQ(top(button("LoadComponent")), top(button("Highlight")));
    EXPECT_EQ(top(button("Lock")), top(button("UnLock All")));
}

TEST_F(WindowLayout, TableHasItsRotatedColumnHeaderAndSectionSizes) {
    EXPECT_TRUE(table->horizontalHeader()->inherits("weightColumnHeaderView"));
    EXPECT_GE(table->horizontalHeader()->defaultSectionSize(), 40);
    EXPECT_TRUE(table->horizontalHeader()->sectionsClickable());
    EXPECT_TRUE(table->horizontalHeader()->highlightSections());
    // Rows are 21 pixels high, unless the font needs more (Qt keeps a row as tall as its text).
    QHeaderView* rows = table->verticalHeader();
    EXPECT_EQ(rows->defaultSectionSize(), std::max(21, rows->minimumSectionSize()));
    EXPECT_EQ(table->contextMenuPolicy(), Qt::CustomContextMenu);
}

TEST_F(WindowLayout, OptionsMenuHoldsAutoUpdateAndTwoInertPresets) {
    QMenu* options = nullptr;
    for (QAction* action : window->menuBar()->actions())
        if (action->text() == "Options")
            options = action->menu();
    ASSERT_NE(options, nullptr);
    const QList<QAction*> actions = options->actions();
    ASSERT_EQ(actions.size(), 3);
    EXPECT_EQ(actions[0]->text(), "Auto Update");
    EXPECT_TRUE(actions[0]->isCheckable());
    EXPECT_FALSE(actions[0]->isChecked());
    EXPECT_EQ(actions[1]->text(), "Save Preset");
    EXPECT_EQ(actions[2]->text(), "Load Preset");

    fixture::makeSkinnedMesh();
    selectAndLoad("body");
    const int rows = model->rowCount();
    OutputRecorder output;
    actions[1]->trigger();
    actions[2]->trigger();
    EXPECT_TRUE(output.lines().empty());
    EXPECT_EQ(model->rowCount(), rows);
}
