// ScriptOutputPane: the script editor's record of everything the host writes to the script
// output while the pane lives: echoed commands, results, information, warnings and errors,
// one line each as formatLine() gives them, coloured by kind so that a failure stands out.
//
// The pane registers an output callback in its constructor and removes it in its destructor;
// it keeps the last kMaxLines lines.
#pragma once

#include "HCommandMessage.h"

#include <QColor>
#include <QPlainTextEdit>

namespace app {

class ScriptOutputPane : public QPlainTextEdit {
    Q_OBJECT

public:
    static constexpr int kMaxLines = 10000;

    explicit ScriptOutputPane(QWidget* parent = nullptr);
    ~ScriptOutputPane() override;

    static QColor colourOf(HCommandMessage::MessageType type);

private:
    static void append(const HString& text, HCommandMessage::MessageType type, void* self);

    HCallbackId m_callback;
};

} // namespace app
