#include "HostApplication.h"

#include "ApplicationWindow.h"
#include "CommandLine.h"
#include "CommandRunner.h"
#include "HLibrary.h"
#include "HQtUtil.h"
#include "Screenshot.h"
#include "Startup.h"
#include "TerminalOutput.h"

#include <QApplication>
#include <QMainWindow>
#include <QSettings>
#include <QTimer>
#include <cstdio>
#include <memory>

namespace app {

namespace {

// How long the windows get to lay themselves out and paint before the picture is taken.
constexpr int kSettleMs = 500;

bool hasDisplay() {
    return !qEnvironmentVariableIsEmpty("DISPLAY") ||
           !qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY");
}

void printLine(std::FILE* stream, const QString& text) {
    std::fputs(text.toLocal8Bit().constData(), stream);
    std::fputc('\n', stream);
}

// Chooses the Qt platform before the application exists. False when a window is to be shown
// and there is nowhere to show it.
bool choosePlatform(const LaunchOptions& options) {
    if (!qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        return true;
    if (options.batch || (!options.screenshot.isEmpty() && !hasDisplay())) {
        qputenv("QT_QPA_PLATFORM", "offscreen");
        return true;
    }
    return hasDisplay();
}

// When no one watches a window (batch mode, a picture), the terminal carries the script output
// and nothing else: Qt's own notices (about the platform, the runtime directory) are dropped;
// its critical errors stay.
void keepQtQuiet(QtMsgType type, const QMessageLogContext& context, const QString& message) {
    if (type == QtCriticalMsg || type == QtFatalMsg)
        printLine(stderr, qFormatLogMessage(type, context, message));
}

int runBatch(const LaunchOptions& options) {
    TerminalOutput output(TerminalOutput::kEverything);
    CommandRunner runner;
    return runStartup(options, runner, true) ? 0 : 1;
}

int runWindowed(const LaunchOptions& options, QApplication& application) {
    std::unique_ptr<TerminalOutput> problems;
    if (!options.screenshot.isEmpty())
        problems = std::make_unique<TerminalOutput>(TerminalOutput::kErrorsOnly);
    QSettings settings;
    QMainWindow& mainWindow = *HQtUtil::mainWindow();
    ApplicationWindow window(mainWindow, settings);
    runStartup(options, window.runner(), false);
    window.refreshTitle();
    mainWindow.show();
    if (options.screenshot.isEmpty())
        return application.exec();

    int exitCode = 0;
    QTimer::singleShot(kSettleMs, &application, [&] {
        HStatus saved = saveScreenshot(mainWindow, options.screenshot);
        if (!saved) {
            printLine(stderr, QString("vorel-host: ") + saved.errorString().asChar());
            exitCode = 1;
        }
        application.quit();
    });
    application.exec();
    return exitCode;
}

} // namespace

int runHostApplication(int argc, char** argv) {
    QStringList arguments;
    for (int i = 1; i < argc; ++i)
        arguments.append(QString::fromLocal8Bit(argv[i]));
    LaunchOptions options;
    HStatus parsed = parseCommandLine(arguments, options);
    if (!parsed) {
        printLine(stderr, QString("vorel-host: ") + parsed.errorString().asChar() + "\n");
        std::fputs(usageText().toLocal8Bit().constData(), stderr);
        return kUsageExitCode;
    }
    if (options.help) {
        std::fputs(usageText().toLocal8Bit().constData(), stdout);
        return 0;
    }
    if (!choosePlatform(options)) {
        printLine(stderr, "vorel-host: there is no display to show the window on (DISPLAY is "
                          "not set); use --batch, or --screenshot FILE.png");
        return kUsageExitCode;
    }

    if (options.batch || !options.screenshot.isEmpty())
        qInstallMessageHandler(keepQtQuiet);
    // Qt reads options of its own from the arguments; it gets none of ours.
    int qtArgc = 1;
    char* qtArgv[] = {argv[0], nullptr};
    QApplication application(qtArgc, qtArgv);
    QApplication::setOrganizationName("Vorel");
    QApplication::setApplicationName(ApplicationWindow::kApplicationName);
    HStatus started = HLibrary::initialize(ApplicationWindow::kApplicationName);
    if (!started) {
        printLine(stderr,
                  QString("vorel-host: cannot start the host: ") + started.errorString().asChar());
        return 1;
    }
    int exitCode = options.batch ? runBatch(options) : runWindowed(options, application);
    HLibrary::cleanup();
    return exitCode;
}

} // namespace app
