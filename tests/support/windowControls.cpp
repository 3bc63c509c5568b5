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

template <typename Widget> Widget* beside(QMainWindow* window, QWidget* anchor, int step) {
    Widget* widget = qobject_cast<Widget*>(besideWidget(window, anchor, step));
    if (!widget)
        ADD_FAILURE() << "no control beside " << (anchor ? anchor->objectName().toStdString() : "");
    return widget;
}

// The edit box and slider that follow a label.
void findLine(QMainWindow* window, const QString& text, QLineEdit*& edit, QSlider*& slider) {
    QLabel* anchor = withText<QLabel>(window, text);
    edit = beside<QLineEdit>(window, anchor, 1);
    slider = beside<QSlider>(window, anchor, 2);
}

void pressWithControl(QWidget* focus, Qt::Key key) {
    focus->setFocus();
    QTest::keyClick(focus, key, Qt::ControlModifier);
}

} // namespace

QWidget* besideWidget(QMainWindow* window, QWidget* anchor, int step) {
    for (QLayout* layout : window->findChildren<QLayout*>()) {
        const int position = anchor ? layout->indexOf(anchor) : -1;
        if (position == -1)
            continue;
        QLayoutItem* item = layout->itemAt(position + step);
        return item ? item->widget() : nullptr;
    }
    return nullptr;
}

WindowControls::WindowControls(QMainWindow* window) {
    maxInfluenceEdit = window->findChild<QLineEdit*>("maxInfluenceEdit");
    precisionEdit =
        beside<QLineEdit>(window, withText<QLabel>(window, "Enter number of decimal places: "), 1);
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
