// HostApplication: the whole run of vorel-host, from its arguments to its exit code.
//
// Batch mode (--batch) shows nothing, writes the script output to the terminal and exits with
// 0 when every start-up step succeeded and 1 otherwise. Otherwise the main window is decorated,
// the start-up steps run (their messages in the script editor), the window is shown, and the
// program runs until it is closed; with --screenshot it saves the picture once the windows have
// settled and exits (0, or 1 when the picture cannot be written). A bad command line exits
// with kUsageExitCode; a host that cannot start, with 1.
#pragma once

namespace app {

int runHostApplication(int argc, char** argv);

} // namespace app
