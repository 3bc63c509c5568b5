#include "ScriptInput.h"

#include <QKeyEvent>
#include <QTextBlock>

namespace app {

ScriptInput::ScriptInput(QWidget* parent) : QPlainTextEdit(parent) {
    setObjectName("scriptInput");
    setPlaceholderText("Type commands: Enter runs the line, Ctrl+Enter runs everything");
    setTabChangesFocus(true);
    setLineWrapMode(QPlainTextEdit::NoWrap);
}

void ScriptInput::keyPressEvent(QKeyEvent* event) {
    bool enter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    Qt::KeyboardModifiers modifiers = event->modifiers() & ~Qt::KeypadModifier;
    if (enter && modifiers == Qt::ControlModifier)
        return runEverything();
    if (enter && modifiers == Qt::NoModifier)
        return runCurrentLine();
    if (enter && modifiers == Qt::ShiftModifier)
        return insertPlainText("\n");
    QTextCursor cursor = textCursor();
    if (event->key() == Qt::Key_Up && modifiers == Qt::NoModifier &&
        cursor.block() == document()->firstBlock())
        return showHistoryEntry(true);
    if (event->key() == Qt::Key_Down && modifiers == Qt::NoModifier &&
        cursor.block() == document()->lastBlock())
        return showHistoryEntry(false);
    QPlainTextEdit::keyPressEvent(event);
}

void ScriptInput::runCurrentLine() {
    QTextCursor cursor = textCursor();
    QString line = cursor.block().text();
    cursor.select(QTextCursor::BlockUnderCursor);
    // The first block has no separator before it: take the one after it instead.
    if (cursor.block() == document()->firstBlock() && document()->blockCount() > 1) {
        cursor.movePosition(QTextCursor::StartOfBlock);
        cursor.movePosition(QTextCursor::NextBlock, QTextCursor::KeepAnchor);
    }
    cursor.removeSelectedText();
    request(line);
}

void ScriptInput::runEverything() {
    QString text = toPlainText();
    clear();
    request(text);
}

void ScriptInput::request(const QString& text) {
    m_history.add(text);
    if (!text.trimmed().isEmpty())
        emit runRequested(text);
}

void ScriptInput::showHistoryEntry(bool older) {
    QString text;
    bool moved = older ? m_history.back(toPlainText(), text) : m_history.forward(text);
    if (!moved)
        return;
    setPlainText(text);
    moveCursor(QTextCursor::End);
}

} // namespace app
