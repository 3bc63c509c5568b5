#include "ScriptOutputPane.h"

#include "HMessage.h"
#include "HQtUtil.h"
#include "core/ScriptOutput.h"

#include <QFontDatabase>
#include <QScrollBar>
#include <QTextBlock>

namespace app {

ScriptOutputPane::ScriptOutputPane(QWidget* parent)
    : QPlainTextEdit(parent), m_callback(HCommandMessage::addCommandOutputCallback(append, this)) {
    setObjectName("scriptOutput");
    setReadOnly(true);
    setMaximumBlockCount(kMaxLines);
    setLineWrapMode(QPlainTextEdit::NoWrap);
    setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    QPalette colours = palette();
    colours.setColor(QPalette::Base, QColor(0x26, 0x28, 0x2b));
    colours.setColor(QPalette::Text, colourOf(HCommandMessage::kInfo));
    setPalette(colours);
}

ScriptOutputPane::~ScriptOutputPane() {
    HMessage::removeCallback(m_callback);
}

QColor ScriptOutputPane::colourOf(HCommandMessage::MessageType type) {
    switch (type) {
    case HCommandMessage::kError:
        return QColor(0xff, 0x6b, 0x6b);
    case HCommandMessage::kWarning:
        return QColor(0xf0, 0xc0, 0x4a);
    case HCommandMessage::kResult:
        return QColor(0x7f, 0xc8, 0xf8);
    case HCommandMessage::kHistory:
        return QColor(0x9a, 0x9e, 0xa6);
    case HCommandMessage::kInfo:
        break;
    }
    return QColor(0xe6, 0xe6, 0xe6);
}

void ScriptOutputPane::append(const HString& text, HCommandMessage::MessageType type, void* self) {
    ScriptOutputPane* pane = static_cast<ScriptOutputPane*>(self);
    QScrollBar* bar = pane->verticalScrollBar();
    bool following = bar->value() == bar->maximum();
    QTextCharFormat format;
    format.setForeground(colourOf(type));
    QTextCursor cursor(pane->document());
    cursor.movePosition(QTextCursor::End);
    if (!pane->document()->isEmpty())
        cursor.insertBlock();
    cursor.insertText(HQtUtil::toQString(runtime::ScriptOutput::formatLine(text, type)), format);
    if (following)
        bar->setValue(bar->maximum());
}

} // namespace app
