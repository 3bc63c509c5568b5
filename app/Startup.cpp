#include "Startup.h"

#include "CommandRunner.h"
#include "HGlobal.h"
#include "HQtUtil.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <functional>
#include <vector>

namespace app {

namespace {

HStatus runScriptFile(const QString& path, CommandRunner& runner) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        HString message =
            HQtUtil::toHString("Cannot read the script " + path + ": " + file.errorString());
        HGlobal::displayError(message);
        return HStatus(HS::kFailure, message);
    }
    return runner.run(QString::fromUtf8(file.readAll()));
}

} // namespace

bool runStartup(const LaunchOptions& options, CommandRunner& runner, bool stopAtFirstFailure) {
    std::vector<std::function<HStatus()>> steps;
    if (!options.file.isEmpty())
        steps.push_back(
            [&] { return runner.run("file -open " + CommandRunner::quoted(options.file)); });
    if (options.loadPlugin)
        steps.push_back(
            [&] { return runner.run("loadPlugin " + CommandRunner::quoted(vorelPluginPath())); });
    for (const StartupStep& step : options.steps)
        steps.push_back([&] {
            return step.kind == StartupStep::kCommands ? runner.run(step.text)
                                                       : runScriptFile(step.text, runner);
        });

    bool succeeded = true;
    for (const auto& step : steps) {
        if (!step()) {
            succeeded = false;
            if (stopAtFirstFailure)
                break;
        }
    }
    return succeeded;
}

QString vorelPluginPath() {
    return QDir::cleanPath(QCoreApplication::applicationDirPath() + "/../plugins/vorel.so");
}

} // namespace app
