// Every number and label of the window shows whole in the font it is drawn with: each cell's
// weight at every precision from 1 to 8 places, and the texts of the labels, buttons, edit
// boxes and the operation box, with the boxes holding the widest numbers the window writes
// into them. Texts are measured with the font's metrics against the room the style leaves
// for them when it draws the widget.
#include "windowControls.h"

#include <QAbstractButton>
#include <QAbstractItemModel>
#include <QComboBox>
#include <QFontMetricsF>
#include <QLabel>
#include <QLayout>
#include <QLineEdit>
#include <QMainWindow>
#include <QSlider>
#include <QStyle>
#include <QStyleOptionComboBox>
#include <QStyleOptionFrame>
#include <QTableView>
#include <cmath>
#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace {

double advance(const QWidget* widget, const QString& text) {
    return QFontMetricsF(widget->font()).horizontalAdvance(text);
}

std::string describe(const QString& text, double needed, int room) {
    return "\"" + text.toStdString() + "\" needs " + std::to_string(needed) + " pixels, has " +
           std::to_string(room);
}

// The cells' texts that the view cannot show whole: it keeps a margin on either side of the
// text and a pixel for the grid, and elides whatever is wider than what is left.
std::vector<std::string> clippedCells(const QTableView* table) {
    std::vector<std::string> clipped;
    const QAbstractItemModel* model = table->model();
    const int margin =
        table->style()->pixelMetric(QStyle::PM_FocusFrameHMargin, nullptr, table) + 1;
    const int grid = table->showGrid() ? 1 : 0;
    const double lineHeight = QFontMetricsF(table->font()).height();
    for (int column = 0; column < model->columnCount(); ++column) {
        if (table->isColumnHidden(column))
            continue;
        const int room = table->columnWidth(column) - grid - 2 * margin;
        for (int row = 0; row < model->rowCount(); ++row) {
            const QString text = model->index(row, column).data(Qt::DisplayRole).toString();
            const double needed = advance(table, text);
            if (needed > room)
                clipped.push_back("cell " + std::to_string(row) + "," + std::to_string(column) +
                                  ": " + describe(text, needed, room));
            if (!text.isEmpty() && lineHeight > table->rowHeight(row) - grid)
                clipped.push_back("row " + std::to_string(row) + " is lower than its text");
        }
    }
    return clipped;
}

// Labels draw their text inside their contents rectangle; a space at the end shows nothing.
void checkLabel(const QLabel* label, std::vector<std::string>& clipped) {
    QString text = label->text();
    while (text.endsWith(' '))
        text.chop(1);
    const double needed = advance(label, text);
    const int room = label->contentsRect().width() - 2 * label->margin();
    if (needed > room)
        clipped.push_back("label " + describe(text, needed, room));
}

// A button needs its text and the style's margins around it: what its size hint asks for.
void checkButton(const QAbstractButton* button, std::vector<std::string>& clipped) {
    if (button->width() < button->sizeHint().width())
        clipped.push_back("button " +
                          describe(button->text(), button->sizeHint().width(), button->width()));
}

// An edit box scrolls its text unless the text and the cursor fit between two pixels of
// padding inside the area the style leaves within the frame.
void checkLineEdit(const QLineEdit* edit, std::vector<std::string>& clipped) {
    QStyleOptionFrame option;
    option.initFrom(edit);
    option.rect = edit->contentsRect();
    option.lineWidth = edit->hasFrame()
                           ? edit->style()->pixelMetric(QStyle::PM_DefaultFrameWidth, &option, edit)
                           : 0;
    option.state |= QStyle::State_Sunken;
    const QRect contents =
        edit->style()->subElementRect(QStyle::SE_LineEditContents, &option, edit);
    const QMargins textMargins = edit->textMargins();
    const int padding = 2;
    const int room = contents.width() - textMargins.left() - textMargins.right() - 2 * padding;
    // An empty box shows its placeholder, which must read whole too.
    const QString shown = edit->text().isEmpty() ? edit->placeholderText() : edit->text();
    const int needed = static_cast<int>(std::lround(advance(edit, shown))) + 1;
    if (needed > room)
        clipped.push_back("edit box " + describe(shown, needed, room));
}

// The operation box draws the chosen item's text in its edit field, a pixel in on each side.
void checkComboBox(const QComboBox* box, std::vector<std::string>& clipped) {
    QStyleOptionComboBox option;
    option.initFrom(box);
    option.editable = box->isEditable();
    option.frame = box->hasFrame();
    const QRect field = box->style()->subControlRect(QStyle::CC_ComboBox, &option,
                                                     QStyle::SC_ComboBoxEditField, box);
    const int room = field.width() - 2;
    for (int item = 0; item < box->count(); ++item) {
        const double needed = advance(box, box->itemText(item));
        if (needed > room)
            clipped.push_back("operation box " + describe(box->itemText(item), needed, room));
    }
    if (QFontMetricsF(box->font()).height() > field.height())
        clipped.push_back("operation box is lower than its text");
}

std::vector<std::string> clippedControls(const QMainWindow* window) {
    std::vector<std::string> clipped;
    for (const QLabel* label : window->findChildren<QLabel*>())
        checkLabel(label, clipped);
    for (const QAbstractButton* button : window->findChildren<QAbstractButton*>())
        checkButton(button, clipped);
    for (const QLineEdit* edit : window->findChildren<QLineEdit*>())
        checkLineEdit(edit, clipped);
    for (const QComboBox* box : window->findChildren<QComboBox*>())
        checkComboBox(box, clipped);
    return clipped;
}

QString precisionText(int places) {
    return "0." + QString(places - 1, '0') + "1";
}

class WholeTexts : public vorel::VorelControlsTest {
protected:
    void SetUp() override {
        VorelControlsTest::SetUp();
        body = vorel::makeMesh(4, 4);
        vorel::setWeights(body, {{1.0, 0, 0, 0},
                                 {0.123456789, 0.876543211, 0, 0},
                                 {0.25, 0.25, 0.25, 0.25},
                                 {0, 0, 0.999999999, 0.000000001}});
        selectAndLoad("body");
        window->show();
        layOut();
    }

    // Lays the window out now, as the event loop would before drawing it: the rows first, then
    // the window around them, which grows when they need more room.
    void layOut() {
        window->centralWidget()->layout()->activate();
        window->layout()->activate();
    }

    // Fills every box with the widest number the window writes there at the current places:
    // the value box from the value slider at its lowest, each line of the flood row from its
    // slider let go at its highest.
    void fillBoxesWithTheirWidestNumbers() {
        selectCells({{1, 0}});
        controls->valueSlider->setValue(controls->valueSlider->minimum());
        for (QSlider* slider : {controls->opacitySlider, controls->floodValueSlider,
                                controls->differenceSlider, controls->iterationsSlider})
            vorel::release(slider, slider->maximum());
        vorel::enter(controls->maxInfluenceEdit, "12");
    }

    // Lists what does not fit as the window is, then at every precision from 1 to 8 places.
    void expectWholeTextsAtEveryPrecision() {
        EXPECT_EQ(clippedCells(table), std::vector<std::string>());
        EXPECT_EQ(clippedControls(window), std::vector<std::string>());
        for (int places = 1; places <= 8; ++places) {
            SCOPED_TRACE(std::to_string(places) + " places");
            vorel::enter(controls->precisionEdit, precisionText(places));
            ASSERT_EQ(cellText(2, 0), QString::number(0.123456789, 'f', places));
            fillBoxesWithTheirWidestNumbers();
            layOut();
            EXPECT_EQ(clippedCells(table), std::vector<std::string>());
            EXPECT_EQ(clippedControls(window), std::vector<std::string>());
        }
    }

    fixture::SkinnedMesh body;
};

} // namespace

TEST_F(WholeTexts, EveryWeightLabelButtonAndBoxShowsWholeInTheDefaultFont) {
    expectWholeTextsAtEveryPrecision();
}

TEST_F(WholeTexts, ALargerFontWidensWhatItsTextsNeed) {
    QFont large = window->font();
    if (large.pointSizeF() > 0)
        large.setPointSizeF(large.pointSizeF() * 1.6);
    else
        large.setPixelSize(large.pixelSize() * 8 / 5);
    window->setFont(large);
    layOut();
    expectWholeTextsAtEveryPrecision();
}
