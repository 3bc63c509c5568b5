// Startup: the work vorel-host does before it shows its window or, in batch mode, exits: open
// the scene file, load the Vorel plug-in, run the -c commands and -s scripts in the order given.
//
// Each step runs through the command language like a typed command (file -open, loadPlugin,
// the user's statements), so its echo and its errors reach the script output. With
// stopAtFirstFailure (batch mode) the first failing step ends the start-up; otherwise every
// step runs and the user reads the errors in the script editor.
#pragma once

#include "CommandLine.h"

#include <QString>

namespace app {

class CommandRunner;

// Whether every step succeeded.
bool runStartup(const LaunchOptions& options, CommandRunner& runner, bool stopAtFirstFailure);

// Where the Vorel plug-in is: the plugins folder beside the folder of the program.
QString vorelPluginPath();

} // namespace app
