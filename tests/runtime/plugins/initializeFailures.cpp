// One source for the plug-ins whose entry points go wrong, built once per variant:
//   INIT_FAILS        registers a command, then reports that it cannot start
//   INIT_TAKES_NAME   registers a command of its own, then one named like a built-in, and
//                     ignores the refusal; the host must refuse the plug-in all the same
//   UNINIT_FAILS      starts well, registering a command, and always refuses to stop
// uninitializePlugin says when it runs, so the tests see whether the host called it.
#include "HFnPlugin.h"
#include "HGlobal.h"

namespace {

class NothingCommand : public HPxCommand {
public:
    HStatus doIt(const HArgList&) override { return HS::kSuccess; }
};

HPxCommand* create() {
    return new NothingCommand;
}

} // namespace

#if defined(INIT_FAILS)
H_PLUGIN_EXPORT HStatus initializePlugin(HObject plugin) {
    HFnPlugin(plugin).registerCommand("failingInitializeCommand", create);
    return HStatus(HS::kFailure, "its settings file is missing");
}

H_PLUGIN_EXPORT HStatus uninitializePlugin(HObject) {
    HGlobal::displayInfo("failingInitialize uninitialized");
    return HS::kSuccess;
}
#elif defined(INIT_TAKES_NAME)
H_PLUGIN_EXPORT HStatus initializePlugin(HObject plugin) {
    HFnPlugin fn(plugin);
    fn.registerCommand("takenCommandNameOwn", create);
    fn.registerCommand("print", create);
    return HS::kSuccess;
}

H_PLUGIN_EXPORT HStatus uninitializePlugin(HObject) {
    HGlobal::displayInfo("takenCommandName uninitialized");
    return HS::kSuccess;
}
#elif defined(UNINIT_FAILS)
H_PLUGIN_EXPORT HStatus initializePlugin(HObject plugin) {
    return HFnPlugin(plugin).registerCommand("failingUninitializeCommand", create);
}

H_PLUGIN_EXPORT HStatus uninitializePlugin(HObject) {
    return HStatus(HS::kFailure, "its window is busy");
}
#endif
