#include "RecentFiles.h"

#include <QFileInfo>
#include <QSettings>

namespace app {

const char* const RecentFiles::kKey = "recentFiles";

RecentFiles::RecentFiles(QSettings& settings) : m_settings(settings) {}

QStringList RecentFiles::paths() const {
    return m_settings.value(kKey).toStringList();
}

void RecentFiles::add(const QString& path) {
    QString absolute = QFileInfo(path).absoluteFilePath();
    QStringList list = paths();
    list.removeAll(absolute);
    list.prepend(absolute);
    while (list.size() > kLimit)
        list.removeLast();
    store(list);
}

void RecentFiles::remove(const QString& path) {
    QStringList list = paths();
    list.removeAll(QFileInfo(path).absoluteFilePath());
    store(list);
}

void RecentFiles::store(const QStringList& paths) {
    m_settings.setValue(kKey, paths);
    m_settings.sync();
}

} // namespace app
