// PluginLoader: the plug-ins of the running host: loading a library, checking its kit records,
// running its initializePlugin and uninitializePlugin, and the commands it registers.
//
// load() takes a path or a name (PluginSearchPath) and either loads the plug-in completely or
// leaves nothing behind: on every failure (no such file, not a library, a missing or wrong kit
// record, a missing entry point, a plug-in of that name already loaded, initializePlugin
// failing, a command name the registry refused) no command of the plug-in stays registered,
// the library is closed, and the status says why, as "Cannot load plug-in "NAME": REASON". When
// initializePlugin succeeded but one of its commands was refused, uninitializePlugin runs
// before the library closes.
//
// unload() refuses while one of the plug-in's commands runs (or is being undone or redone);
// otherwise it drops the plug-in's command objects from the undo queue (deleting each once),
// runs uninitializePlugin, removes the commands the plug-in left registered and closes the
// library. When uninitializePlugin fails the plug-in stays loaded with whatever it still has
// registered. shutDown() unloads every plug-in, the latest first, while the host is complete,
// so plug-ins delete their windows before the main window goes.
//
// A plug-in must remove what it hooked into the host (event and output callbacks) and delete
// its windows in uninitializePlugin: its code is gone once the library closes.
#pragma once

#include "HObject.h"
#include "HStatus.h"
#include "HString.h"
#include "core/HostContext.h"
#include "lang/CommandRegistry.h"

#include <memory>
#include <string>
#include <vector>

namespace runtime {

class PluginData;
class PluginLibrary;
class UndoQueue;

class PluginLoader : public HostModule {
public:
    PluginLoader(CommandRegistry& registry, UndoQueue& undoQueue);
    ~PluginLoader() override;

    void shutDown() override;

    // On success name receives the loaded plug-in's name.
    HStatus load(const std::string& nameOrPath, std::string* name = nullptr);
    // name: the plug-in's name, or a path whose file is named after it.
    HStatus unload(const std::string& name);

    // Loaded plug-ins in load order.
    std::vector<std::shared_ptr<const PluginData>> plugins() const;
    // Null when no plug-in of that name (or of the name a path gives) is loaded.
    std::shared_ptr<const PluginData> find(const std::string& nameOrPath) const;

    // HFnPlugin's registration, under the plug-in's name as owner. registerCommand refuses a
    // name that is taken, telling by whom; during initializePlugin a refusal also fails the load.
    HStatus registerCommand(PluginData& plugin, const HString& name, CommandCreator creator,
                            SyntaxCreator syntax);
    // Only the plug-in's own commands can be taken away.
    HStatus deregisterCommand(const PluginData& plugin, const HString& name);

private:
    struct Loaded;
    using EntryPoint = HStatus (*)(HObject);

    HStatus open(const std::string& path, std::unique_ptr<Loaded>& loaded);
    HStatus initialize(Loaded& loaded);
    static HStatus callEntryPoint(EntryPoint entryPoint, const std::shared_ptr<PluginData>& data,
                                  const char* entryName);
    // Runs the unloading steps; a plug-in whose uninitializePlugin fails stays loaded when
    // stayWhenRefused is set, and is closed all the same otherwise.
    HStatus stop(Loaded& plugin, bool stayWhenRefused);
    std::unique_ptr<Loaded> takeOut(const Loaded& plugin);
    void close(std::unique_ptr<Loaded> loaded);
    int indexOf(const std::string& nameOrPath) const;

    CommandRegistry& m_registry;
    UndoQueue& m_undoQueue;
    std::vector<std::unique_ptr<Loaded>> m_loaded;
};

} // namespace runtime
