#include "CommandLine.h"

#include <QFileInfo>

namespace app {

namespace {

HStatus problem(const QString& message) {
    return HStatus(HS::kInvalidParameter, message.toUtf8().constData());
}

HStatus requireReadableFile(const QString& path, const char* what) {
    QFileInfo info(path);
    if (!info.exists())
        return problem(QString("%1 not found: %2").arg(what, path));
    if (!info.isFile() || !info.isReadable())
        return problem(QString("%1 cannot be read: %2").arg(what, path));
    return HS::kSuccess;
}

} // namespace

HStatus parseCommandLine(const QStringList& arguments, LaunchOptions& options) {
    options = LaunchOptions();
    for (int i = 0; i < arguments.size(); ++i) {
        const QString& argument = arguments[i];
        auto value = [&](QString& into) {
            if (i + 1 >= arguments.size())
                return problem(QString("%1 needs a value").arg(argument));
            into = arguments[++i];
            return HStatus(HS::kSuccess);
        };
        HStatus status;
        if (argument == "-h" || argument == "--help") {
            options.help = true;
        } else if (argument == "--batch") {
            options.batch = true;
        } else if (argument == "--no-plugin") {
            options.loadPlugin = false;
        } else if (argument == "--screenshot") {
            status = value(options.screenshot);
            if (status && !options.screenshot.endsWith(".png", Qt::CaseInsensitive))
                status =
                    problem("--screenshot needs a file name ending in .png: " + options.screenshot);
        } else if (argument == "-c" || argument == "-s") {
            StartupStep step{argument == "-c" ? StartupStep::kCommands : StartupStep::kScriptFile,
                             QString()};
            status = value(step.text);
            if (status && step.kind == StartupStep::kScriptFile)
                status = requireReadableFile(step.text, "Script file");
            if (status)
                options.steps.push_back(step);
        } else if (argument.startsWith('-') && argument != "-") {
            status = problem("Unknown option: " + argument);
        } else if (!options.file.isEmpty()) {
            status = problem(
                QString("Only one scene file can be opened: %1, %2").arg(options.file, argument));
        } else {
            options.file = argument;
            status = requireReadableFile(argument, "Scene file");
        }
        if (!status)
            return status;
    }
    if (options.batch && !options.screenshot.isEmpty())
        return problem("--batch shows nothing, so it cannot take a --screenshot");
    return HS::kSuccess;
}

QString usageText() {
    return "Usage: vorel-host [FILE] [-c COMMANDS] [-s SCRIPT] [--batch] [--no-plugin]\n"
           "                  [--screenshot FILE.png]\n"
           "\n"
           "Opens FILE, loads the Vorel plug-in, runs COMMANDS and SCRIPT files in the order\n"
           "given, then shows the main window.\n"
           "\n"
           "  FILE                   a scene to open (.vscene, .gltf, .glb, .fbx, ...)\n"
           "  -c COMMANDS            commands of the command language, e.g. \"polyCube; ls\"\n"
           "  -s SCRIPT              a text file of commands\n"
           "  --batch                show nothing; messages go to stdout, errors to stderr;\n"
           "                         exit 0 when every statement succeeded, 1 otherwise\n"
           "  --no-plugin            do not load the Vorel plug-in\n"
           "  --screenshot FILE.png  start up (off screen when there is no display), save a\n"
           "                         picture of the main window and the host's open windows\n"
           "                         over it, and exit\n"
           "  -h, --help             print this help and exit\n"
           "\n"
           "-c and -s may be given more than once. A bad option or a missing file is reported\n"
           "and the program exits with 2.\n";
}

} // namespace app
