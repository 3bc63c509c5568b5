// HLibrary: starts and stops the host inside another program (tests, tools, the application
// itself): an empty scene, the command language, the undo queue, the plug-in loader and the
// host's main window (created hidden), without running an event loop.
//
// A QApplication must exist before initialize(). initialize() on a running host fails with
// kFailure; cleanup() unloads every plug-in, empties the scene and deletes the main window.
#pragma once

#include "HStatus.h"
#include "HString.h"

class HLibrary {
public:
    static HStatus initialize(const HString& applicationName);
    static void cleanup();
    static bool isInitialized();
};
