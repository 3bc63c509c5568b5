// CommandLine: what vorel-host was asked to do, read from its arguments.
//
//   vorel-host [FILE] [-c COMMANDS] [-s SCRIPT] [--batch] [--no-plugin] [--screenshot FILE.png]
//
// -c and -s may be repeated; they run in the order given, after FILE is opened and the plug-in
// loaded. parseCommandLine() is a pure function of the arguments except that it checks that
// FILE and every SCRIPT exist: it never prints. A bad option, a missing value, a second FILE or
// a missing file gives kInvalidParameter and a message saying what is wrong; the program then
// prints the message and the usage to stderr and exits with kUsageExitCode.
#pragma once

#include "HStatus.h"

#include <QString>
#include <QStringList>
#include <vector>

namespace app {

// What the program exits with for a bad command line.
constexpr int kUsageExitCode = 2;

struct StartupStep {
    enum Kind { kCommands, kScriptFile };
    Kind kind;
    // The commands, or the script's path.
    QString text;
};

struct LaunchOptions {
    QString file;
    std::vector<StartupStep> steps;
    bool batch = false;
    bool loadPlugin = true;
    // Empty: show the window and run until it is closed.
    QString screenshot;
    bool help = false;
};

// arguments are the program's arguments without the program name.
HStatus parseCommandLine(const QStringList& arguments, LaunchOptions& options);

QString usageText();

} // namespace app
