// windowControls: the Vorel window's editing controls, found as a user finds them: by the
// label in front of a box, by the group beside the value box, by object name. Also the
// gestures a user makes on them (typing into a box and pressing Return, releasing a slider,
// pressing a key on the table).
//
// A control that cannot be found is null and fails the running test. VorelControlsTest is the
// test base that opens the window and finds its controls.
#pragma once

#include "vorelSession.h"

#include <QMainWindow>
#include <QString>
#include <gtest/gtest.h>
#include <memory>

class QComboBox;
class QLineEdit;
class QPushButton;
class QRadioButton;
class QSlider;
class QWidget;

namespace vorel {

struct WindowControls {
    explicit WindowControls(QMainWindow* window);

    QLineEdit* maxInfluenceEdit = nullptr;
    QLineEdit* precisionEdit = nullptr;
    QRadioButton* absolute = nullptr;
    QRadioButton* relative = nullptr;
    QLineEdit* valueEdit = nullptr;
    QSlider* valueSlider = nullptr;
    QLineEdit* opacityEdit = nullptr;
    QSlider* opacitySlider = nullptr;
    QLineEdit* floodValueEdit = nullptr;
    QSlider* floodValueSlider = nullptr;
    QLineEdit* differenceEdit = nullptr;
    QSlider* differenceSlider = nullptr;
    QLineEdit* iterationsEdit = nullptr;
    QSlider* iterationsSlider = nullptr;
    QComboBox* floodOperation = nullptr;
    QPushButton* floodApply = nullptr;
};

// The window opened, with its controls found.
class VorelControlsTest : public VorelWindowTest {
protected:
    void SetUp() override;

    std::unique_ptr<WindowControls> controls;
};

// The window's first widget of this kind that shows `text`.
template <typename Widget> Widget* withText(QMainWindow* window, const QString& text) {
    for (Widget* candidate : window->findChildren<Widget*>())
        if (candidate->text() == text)
            return candidate;
    ADD_FAILURE() << "nothing shows " << text.toStdString();
    return nullptr;
}
// The widget `step` places after `anchor` in the layout that holds it.
QWidget* besideWidget(QMainWindow* window, QWidget* anchor, int step);

// Replaces the box's text and presses Return in it.
void enter(QLineEdit* edit, const QString& text);
// Moves the slider to `position` and lets it go, as a drag that ends there does.
void release(QSlider* slider, int position);
// Ctrl+Z or Ctrl+Y pressed while `focus` (the table or a box) has the keyboard.
void undoKey(QWidget* focus);
void redoKey(QWidget* focus);

} // namespace vorel
