#include "EmbeddedHost.h"

#include "HLibrary.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QThread>
#include <cstdio>
#include <dlfcn.h>
#include <memory>

namespace pyhost {

namespace {

std::unique_ptr<QApplication>& ownApplication() {
    static std::unique_ptr<QApplication> application;
    return application;
}

bool& ownHost() {
    static bool started = false;
    return started;
}

// No one sees Qt's notices here (about the platform, the runtime directory); a Python
// program's stderr carries only what matters, as in batch mode.
void keepQtQuiet(QtMsgType type, const QMessageLogContext& context, const QString& message) {
    if (type == QtCriticalMsg || type == QtFatalMsg)
        std::fprintf(stderr, "%s\n",
                     qFormatLogMessage(type, context, message).toLocal8Bit().constData());
}

void makeApplication() {
    // Qt keeps argc and argv for the life of the application.
    static int argc = 3;
    static char name[] = "vorel";
    static char platformOption[] = "-platform";
    static char platform[] = "offscreen";
    static char* argv[] = {name, platformOption, platform, nullptr};
    qInstallMessageHandler(keepQtQuiet);
    ownApplication() = std::make_unique<QApplication>(argc, argv);
}

// The folder the module was loaded from.
QString moduleFolder() {
    Dl_info info{};
    if (!dladdr(reinterpret_cast<void*>(&start), &info) || !info.dli_fname)
        return QString();
    return QFileInfo(QString::fromLocal8Bit(info.dli_fname)).absolutePath();
}

void addBuildPluginFolder() {
    QString folder = moduleFolder();
    if (folder.isEmpty())
        return;
    QString plugins = QDir::cleanPath(QDir(folder).absoluteFilePath("../plugins"));
    if (!QFileInfo(plugins).isDir())
        return;
    QByteArray path = qgetenv("VOREL_PLUGIN_PATH");
    QByteArray entry = QFile::encodeName(plugins);
    if (path.split(':').contains(entry))
        return;
    qputenv("VOREL_PLUGIN_PATH", path.isEmpty() ? entry : path + ':' + entry);
}

} // namespace

HStatus start() {
    if (HLibrary::isInitialized())
        return HS::kSuccess;
    if (!QCoreApplication::instance())
        makeApplication();
    HStatus status = HLibrary::initialize("vorel-python");
    if (!status)
        return status;
    ownHost() = true;
    addBuildPluginFolder();
    return HS::kSuccess;
}

void stop() {
    if (ownHost())
        HLibrary::cleanup();
    ownHost() = false;
    ownApplication().reset();
}

HStatus hostAvailable() {
    if (!HLibrary::isInitialized())
        return HStatus(HS::kFailure, "The host has stopped: the interpreter is exiting.");
    if (QThread::currentThread() != QCoreApplication::instance()->thread())
        return HStatus(HS::kFailure,
                       "vorel runs on the thread that imported it; call it from that thread.");
    return HS::kSuccess;
}

} // namespace pyhost
