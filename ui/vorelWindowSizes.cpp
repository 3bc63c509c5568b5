// The window's sizes follow its texts. The pixel sizes it is built with are minimums: a column,
// label, button or box whose text needs more room in the font it is drawn with grows to fit,
// so that no weight, label or number is ever cut short. The numbers in the cells and boxes
// widen with the decimal places shown, so the sizes are fitted again on every change of the
// places and of the font.
#include "vorelWindow.h"
#include "weightColumnHeaderView.h"
#include "weightTableView.h"

#include <QComboBox>
#include <QEvent>
#include <QFontMetrics>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QStyle>
#include <QStyleOptionFrame>
#include <QStyleOptionViewItem>
#include <algorithm>
#include <initializer_list>

namespace {

// The widest text of a number with `wholeDigits` digits before the point and `places` after
// it (and a minus sign when `negative`), written with the font's widest digit.
QString widestNumber(const QFontMetrics& metrics, int wholeDigits, int places, bool negative) {
    QChar widest('0');
    for (char digit = '1'; digit <= '9'; ++digit)
        if (metrics.horizontalAdvance(QChar(digit)) > metrics.horizontalAdvance(widest))
            widest = QChar(digit);
    QString text = negative ? QString("-") : QString();
    text += QString(wholeDigits, widest);
    if (places > 0)
        text += '.' + QString(places, widest);
    return text;
}

// The width a cell needs to show `text` without eliding it: the text with the margins the
// style keeps around it, and the grid line.
int cellWidth(const QTableView* table, const QString& text) {
    QStyleOptionViewItem option;
    option.initFrom(table);
    option.font = table->font();
    option.features = QStyleOptionViewItem::HasDisplay;
    option.text = text;
    option.widget = table;
    const QSize cell =
        table->style()->sizeFromContents(QStyle::CT_ItemViewItem, &option, QSize(), table);
    return cell.width() + (table->showGrid() ? 1 : 0);
}

// The width an edit box needs to show `text` without scrolling it: the text, a pixel for the
// cursor and the box's own padding of two pixels a side, inside its margins and the frame the
// style draws.
int editWidth(const QLineEdit* edit, const QString& text) {
    const int padding = 2;
    QStyleOptionFrame option;
    option.initFrom(edit);
    option.lineWidth = edit->hasFrame()
                           ? edit->style()->pixelMetric(QStyle::PM_DefaultFrameWidth, &option, edit)
                           : 0;
    option.state |= QStyle::State_Sunken;
    const QFontMetrics metrics(edit->font());
    const QMargins textMargins = edit->textMargins();
    const QMargins margins = edit->contentsMargins();
    const QSize contents(metrics.horizontalAdvance(text) + 1 + 2 * padding + textMargins.left() +
                             textMargins.right() + margins.left() + margins.right(),
                         metrics.height());
    return edit->style()->sizeFromContents(QStyle::CT_LineEdit, &option, contents, edit).width();
}

// Gives the widgets one fixed width: `minimum`, or what the widest of them needs.
template <typename Widget, typename Need>
void fitTogether(std::initializer_list<Widget*> widgets, int minimum, Need need) {
    int width = minimum;
    for (Widget* widget : widgets)
        width = std::max(width, need(widget));
    for (Widget* widget : widgets)
        widget->setFixedWidth(width);
}

int sizeHintWidth(const QWidget* widget) {
    return widget->sizeHint().width();
}

} // namespace

int vorelWindow::minimumColumnWidth(int places) {
    return kColumnWidth + 7 * std::max(0, places - 3);
}

void vorelWindow::fitControlsToText() {
    // Weights run from 0 to 1: one digit before the point.
    const QString widestWeight =
        widestNumber(QFontMetrics(tableView->font()), 1, decimalPlaces, false);
    columnHeader->setDefaultSectionSize(
        std::max(minimumColumnWidth(decimalPlaces), cellWidth(tableView, widestWeight)));
    // The row header keeps rows at least as tall as its font needs.
    tableView->verticalHeader()->setDefaultSectionSize(kRowHeight);

    // One width for every button, so that the rows of buttons stay lined up.
    fitTogether({applyInfluenceButton, loadComponentButton, filterButton, highlightButton,
                 lockButton, unlockButton, unlockAllButton, roundButton, applyFloodButton},
                kButtonWidth, sizeHintWidth);
    // The operation box's size hint fits its widest operation.
    fitTogether({floodOperationBox}, kButtonWidth, sizeHintWidth);
    floodOperationBox->setFixedHeight(
        std::max(kOperationBoxHeight, floodOperationBox->sizeHint().height()));

    maxInfluenceEdit->setMaximumWidth(std::max(
        kMaxInfluenceEditWidth,
        editWidth(maxInfluenceEdit, widestNumber(maxInfluenceEdit->fontMetrics(), 2, 0, false))));
    // What a user types for the current places; the undo's shorter forms (1e-05) fit too.
    const QString precision = "0." + QString(decimalPlaces - 1, '0') + "1";
    fitTogether({precisionEdit}, kPrecisionEditWidth,
                [&](const QLineEdit* edit) { return editWidth(edit, precision); });
    // The value box shows offsets from -1 to 1 in relative mode.
    fitTogether({valueEdit}, kValueEditWidth, [&](const QLineEdit* edit) {
        return editWidth(edit, widestNumber(edit->fontMetrics(), 1, decimalPlaces, true));
    });

    // The four lines of the flood row stand in one column: their labels share one width and
    // their boxes another, wide enough for the required weight difference's 100.
    fitTogether({requiredWeightDifferenceLine.label, smoothingIterationsLine.label,
                 opacityLine.label, floodValueLine.label},
                kLineLabelWidth, sizeHintWidth);
    fitTogether({requiredWeightDifferenceLine.edit, smoothingIterationsLine.edit, opacityLine.edit,
                 floodValueLine.edit},
                kLineEditWidth, [&](const QLineEdit* edit) {
                    return editWidth(edit,
                                     widestNumber(edit->fontMetrics(), 3, decimalPlaces, false));
                });
}

void vorelWindow::changeEvent(QEvent* event) {
    QMainWindow::changeEvent(event);
    // The children take the new font before the window hears of it. The controls exist once
    // the central frame does.
    if (event->type() == QEvent::FontChange && centralFrame)
        fitControlsToText();
}
