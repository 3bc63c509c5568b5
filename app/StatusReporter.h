// StatusReporter: the main window's status bar: the last message the host wrote (information,
// warning, error or result, as the script editor shows it) on the left, and what is selected
// on the right ("Selected: bodyShape.vtx[3:5] |joint1": the first few items as `select` reads
// them, and a count of the rest).
//
// It registers an output callback, a "SelectionChanged" and a "SceneOpened" callback in its
// constructor and removes them in its destructor, with the selection label it added. The status
// bar itself belongs to the window.
#pragma once

#include "HCommandMessage.h"

#include <QLabel>
#include <QObject>
#include <QPointer>
#include <QString>

class QStatusBar;

namespace app {

class StatusReporter : public QObject {
    Q_OBJECT

public:
    // How many selected items are named before the rest is counted.
    static constexpr int kNamedItems = 4;

    explicit StatusReporter(QStatusBar& bar);
    ~StatusReporter() override;

    static QString describeSelection();

    QLabel* selectionLabel() const { return m_selection; }

private:
    static void message(const HString& text, HCommandMessage::MessageType type, void* self);
    static void selectionChanged(void* self);

    QStatusBar& m_bar;
    QPointer<QLabel> m_selection;
    HCallbackId m_output;
    HCallbackId m_selectionChanged;
    HCallbackId m_sceneOpened;
};

} // namespace app
