#include "windowControls.h"

#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QLayout>
#include <QLineEdit>
#include <QMainWindow>
#include <QPushButton>
#include <QRadioButton>
#include <QSlider>
#include <QTest>
#include <gtest/gtest.h>

namespace vorel {

namespace {

// The widget `step` places after `anchor` in the layout that holds it.
template <typename Widget> Widget* beside(QMainWindow* window, QWidget* anchor, int step) {
    for (QLayout* layout : window->findChildren<QLayout*>()) {
        const int position = anchor ? layout->indexOf(anchor) : -1;
        if (position == -1)
            continue;
        QLayoutItem* item = layout->itemAt(position + step);
        if (Widget* widget = item ? qobject_cast<Widget*>(item->widget()) : nullptr)
            return widget;
    }
    ADD_FAILURE() << "no control beside " << (anchor ? anchor->objectName().toStdString() : "");
    return nullptr;
}

QLabel* label(QMainWindow* window, const QString& text) {
    for (QLabel* candidate : window->findChildren<QLabel*>())
        if (candidate->text() == text)
            return candidate;
    ADD_FAILURE() << "no label " << text.toStdString();
    return nullptr;
}

template <typename Widget> Widget* withText(QMainWindow* window, const QString& text) {
    for (Widget* candidate : window->findChildren<Widget*>())
        if (candidate->text() == text)
            return candidate;
    ADD_FAILURE() << "nothing shows " << text.toStdString();
    return nullptr;
}

// The edit box and slider that follow a label.
void findLine(QMainWindow* window, const QString& text, QLineEdit*& edit, QSlider*& slider) {
    QLabel* anchor = label(window, text);
    edit = beside<QLineEdit>(window, anchor, 1);
    slider = beside<QSlider>(window, anchor, 2);
}

void pressWithControl(QWidget* focus, Qt::Key key) {
    focus->setFocus();
    QTest::keyClick(focus, key, Qt::ControlModifier);
}

} // namespace

WindowControls::WindowControls(QMainWindow* window) {
    maxInfluenceEdit = window->findChild<QLineEdit*>("maxInfluenceEdit");
    precisionEdit = beside<QLineEdit>(window, label(window, "Enter number of decimal places: "), 1);
    absolute = withText<QRadioButton>(window, "absolute");
    relative = withText<QRadioButton>(window, "relative");
    QGroupBox* group = window->findChild<QGroupBox*>();
    valueEdit = beside<QLineEdit>(window, group, 1);
    valueSlider = beside<QSlider>(window, group, 2);
    findLine(window, "Opacity:", opacityEdit, opacitySlider);
    findLine(window, "Value:", floodValueEdit, floodValueSlider);
    findLine(window, "Required Weight Difference:", differenceEdit, differenceSlider);
    findLine(window, "Smoothing Iterations:", iterationsEdit, iterationsSlider);
    floodOperation = window->findChild<QComboBox*>();
    floodApply = window->findChild<QPushButton*>("Apply");
}

void VorelControlsTest::SetUp() {
    VorelWindowTest::SetUp();
    controls = std::make_unique<WindowControls>(window);
}

void enter(QLineEdit* edit, const QString& text) {
    edit->setText(text);
    QTest::keyClick(edit, Qt::Key_Return);
}

void release(QSlider* slider, int position) {
    slider->setSliderDown(true);
    slider->setValue(position);
    slider->setSliderDown(false);
}

void undoKey(QWidget* focus) {
    pressWithControl(focus, Qt::Key_Z);
}

void redoKey(QWidget* focus) {
    pressWithControl(focus, Qt::Key_Y);
}

} // namespace vorel
