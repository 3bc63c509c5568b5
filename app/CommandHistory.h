// CommandHistory: the statements typed into the script editor, for recalling them with Up and
// Down.
//
// Browsing starts after the newest entry, at what is being typed (the draft). back() moves to
// older entries and keeps the draft; forward() moves to newer ones and, past the newest, gives
// the draft back. add() ends browsing. Empty texts and a repeat of the newest entry are not
// added; the oldest entries go beyond kLimit. A plain value.
#pragma once

#include <QString>
#include <QStringList>

namespace app {

class CommandHistory {
public:
    static constexpr int kLimit = 500;

    void add(const QString& text);
    // False (text unchanged) when there is nothing older.
    bool back(const QString& draft, QString& text);
    // False (text unchanged) when not browsing.
    bool forward(QString& text);

    const QStringList& entries() const { return m_entries; }

private:
    QStringList m_entries;
    // m_entries.size() while not browsing.
    int m_position = 0;
    QString m_draft;
};

} // namespace app
