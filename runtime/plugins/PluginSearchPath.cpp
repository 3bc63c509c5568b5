#include "plugins/PluginSearchPath.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>

namespace runtime {

const char* const kPluginPathVariable = "VOREL_PLUGIN_PATH";

namespace {

bool isFile(const QString& path) {
    QFileInfo info(path);
    return info.exists() && info.isFile();
}

std::string joined(const std::vector<std::string>& directories) {
    std::string text;
    for (const std::string& directory : directories)
        text += (text.empty() ? "" : ":") + directory;
    return text;
}

} // namespace

std::vector<std::string> pluginDirectories() {
    std::vector<std::string> directories;
    const QString variable = qEnvironmentVariable(kPluginPathVariable);
    for (const QString& directory : variable.split(':', Qt::SkipEmptyParts))
        directories.push_back(directory.toStdString());
    if (QCoreApplication::instance()) {
        QDir beside(QCoreApplication::applicationDirPath());
        directories.push_back(QDir::cleanPath(beside.absoluteFilePath("../plugins")).toStdString());
    }
    return directories;
}

HStatus locatePlugin(const std::string& nameOrPath, std::string& path) {
    const QString given = QString::fromStdString(nameOrPath);
    if (given.contains('/')) {
        if (!isFile(given))
            return HStatus(HS::kNotFound, "the file does not exist.");
        path = QFileInfo(given).absoluteFilePath().toStdString();
        return HS::kSuccess;
    }
    const std::vector<std::string> directories = pluginDirectories();
    for (const std::string& directory : directories) {
        QDir dir(QString::fromStdString(directory));
        for (const QString& candidate : {given, given + ".so"}) {
            if (isFile(dir.filePath(candidate))) {
                path = QFileInfo(dir.filePath(candidate)).absoluteFilePath().toStdString();
                return HS::kSuccess;
            }
        }
    }
    return HStatus(HS::kNotFound,
                   "there is no such plug-in in the plug-in path (" + joined(directories) + ").");
}

std::string pluginNameOf(const std::string& nameOrPath) {
    QString name = QFileInfo(QString::fromStdString(nameOrPath)).fileName();
    if (name.endsWith(".so") && name.size() > 3)
        name.chop(3);
    return name.toStdString();
}

} // namespace runtime
