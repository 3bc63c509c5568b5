#include "ScriptEditor.h"

#include "CommandRunner.h"
#include "ScriptInput.h"
#include "ScriptOutputPane.h"

#include <QSplitter>
#include <QVBoxLayout>

namespace app {

ScriptEditor::ScriptEditor(CommandRunner& runner, QWidget* parent)
    : QWidget(parent), m_output(new ScriptOutputPane), m_input(new ScriptInput) {
    setObjectName("scriptEditor");
    QSplitter* splitter = new QSplitter(Qt::Vertical);
    splitter->addWidget(m_output);
    splitter->addWidget(m_input);
    splitter->setStretchFactor(0, 4);
    splitter->setStretchFactor(1, 1);
    splitter->setSizes({160, 40});
    QVBoxLayout* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(splitter);
    setFocusProxy(m_input);
    connect(m_input, &ScriptInput::runRequested, &runner,
            [&runner](const QString& text) { runner.run(text, true); });
}

} // namespace app
