// takenCommandName: registers a command of its own, then one named like a built-in, and
// ignores the refusal; the host must refuse the plug-in all the same.
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
    HFnPlugin fn(plugin);
    fn.registerCommand("takenCommandNameOwn", create);
    fn.registerCommand("print", create);
    return HS::kSuccess;
}

H_PLUGIN_EXPORT HStatus uninitializePlugin(HObject) {
    HGlobal::displayInfo("takenCommandName uninitialized");
    return HS::kSuccess;
}
