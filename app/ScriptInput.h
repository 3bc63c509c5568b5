// ScriptInput: where statements are typed into the script editor.
//
// Enter runs the line the cursor is on and takes it out of the input; Ctrl+Enter runs
// everything typed (several lines) and empties the input; Shift+Enter starts a new line. Up on
// the first line and Down on the last one browse the history of what was run. The input only
// asks for a run (runRequested); it does not run anything itself.
#pragma once

#include "CommandHistory.h"

#include <QPlainTextEdit>

namespace app {

class ScriptInput : public QPlainTextEdit {
    Q_OBJECT

public:
    explicit ScriptInput(QWidget* parent = nullptr);

    const CommandHistory& history() const { return m_history; }

signals:
    void runRequested(const QString& text);

protected:
    void keyPressEvent(QKeyEvent* event) override;

private:
    void runCurrentLine();
    void runEverything();
    void request(const QString& text);
    void showHistoryEntry(bool older);

    CommandHistory m_history;
};

} // namespace app
