// EmbeddedHost: the host running inside the Python process that imported the module, without a
// window (as batch mode runs it), from the import until the interpreter exits.
//
// start() makes a QApplication on Qt's offscreen platform when the process has none (so that
// it works without a display; an existing one is used as it is), starts the host, and adds
// the build's plug-in folder (build/plugins, beside the module's folder) to the plug-in path,
// so that `loadPlugin vorel` finds the Vorel plug-in. It loads no plug-in. stop() stops the
// host and deletes the application, each only if start() made it.
//
// The host and Qt belong to the thread that imported the module: hostAvailable() fails, for
// the caller to raise, on any other thread and after stop().
#pragma once

#include "HStatus.h"

namespace pyhost {

HStatus start();
void stop();
HStatus hostAvailable();

} // namespace pyhost
