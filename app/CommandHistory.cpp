#include "CommandHistory.h"

namespace app {

void CommandHistory::add(const QString& text) {
    if (!text.trimmed().isEmpty() && (m_entries.isEmpty() || m_entries.last() != text)) {
        m_entries.append(text);
        if (m_entries.size() > kLimit)
            m_entries.removeFirst();
    }
    m_position = m_entries.size();
    m_draft.clear();
}

bool CommandHistory::back(const QString& draft, QString& text) {
    if (m_position == 0)
        return false;
    if (m_position == m_entries.size())
        m_draft = draft;
    text = m_entries[--m_position];
    return true;
}

bool CommandHistory::forward(QString& text) {
    if (m_position >= m_entries.size())
        return false;
    ++m_position;
    text = m_position == m_entries.size() ? m_draft : m_entries[m_position];
    return true;
}

} // namespace app
