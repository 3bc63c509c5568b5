// RecentFiles: the scene files opened or saved last, newest first, kept in the application's
// settings so that they survive the session.
//
// The list holds at most kLimit paths, each once (compared as absolute paths). The settings
// object is the caller's (the application's own, or a test's file) and outlives the list.
#pragma once

#include <QStringList>

class QSettings;

namespace app {

class RecentFiles {
public:
    static constexpr int kLimit = 10;
    static const char* const kKey;

    explicit RecentFiles(QSettings& settings);

    QStringList paths() const;
    // Puts the path first.
    void add(const QString& path);
    void remove(const QString& path);

private:
    void store(const QStringList& paths);

    QSettings& m_settings;
};

} // namespace app
