// The library's entry points. This is the one source of the plug-in that includes
// HFnPlugin.h, which defines the records the host checks when it loads the library.
#include "HFnPlugin.h"
#include "editorPointers.h"
#include "vorelCmd.h"
#include "vorelWindow.h"

H_PLUGIN_EXPORT HStatus initializePlugin(HObject plugin) {
    HFnPlugin fnPlugin(plugin, "", "2015", "Any");
    return fnPlugin.registerCommand("vorelCmd", createCommand, createSyntax);
}

H_PLUGIN_EXPORT HStatus uninitializePlugin(HObject plugin) {
    HFnPlugin fnPlugin(plugin, "Unknown", "Unknown", "Any");
    // The window goes first: its model removes its scene callbacks, which point into this
    // library.
    if (editorWindow) {
        delete editorWindow;
        editorWindow = nullptr;
        editorModel = nullptr;
    }
    return fnPlugin.deregisterCommand("vorelCmd");
}
