// failingInitialize: registers a command, then reports that it cannot start.
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

H_PLUGIN_EXPORT HStatus initializePlugin(HObject plugin) {
    HFnPlugin(plugin).registerCommand("failingInitializeCommand", create);
    return HStatus(HS::kFailure, "its settings file is missing");
}

H_PLUGIN_EXPORT HStatus uninitializePlugin(HObject) {
    HGlobal::displayInfo("failingInitialize uninitialized");
    return HS::kSuccess;
}
