// ScriptEditor: the docked script editor: the output pane above, the input below. What is
// typed runs through the CommandRunner with echo, undo and results on, as a user expects of a
// script editor.
//
// The editor owns its two widgets (Qt parenthood); the runner belongs to the window.
#pragma once

#include <QWidget>

namespace app {

class CommandRunner;
class ScriptInput;
class ScriptOutputPane;

class ScriptEditor : public QWidget {
    Q_OBJECT

public:
    ScriptEditor(CommandRunner& runner, QWidget* parent = nullptr);

    ScriptOutputPane* output() const { return m_output; }
    ScriptInput* input() const { return m_input; }

private:
    ScriptOutputPane* m_output;
    ScriptInput* m_input;
};

} // namespace app
