#include "plugins/PluginLoader.h"

#include "HGlobal.h"
#include "api/HApiAccess.h"
#include "plugins/PluginData.h"
#include "plugins/PluginKitRecords.h"
#include "plugins/PluginLibrary.h"
#include "plugins/PluginSearchPath.h"
#include "undo/UndoQueue.h"

#include <algorithm>
#include <cctype>
#include <exception>

namespace runtime {

struct PluginLoader::Loaded {
    std::shared_ptr<PluginData> data;
    std::unique_ptr<PluginLibrary> library;
    EntryPoint initializePlugin = nullptr;
    EntryPoint uninitializePlugin = nullptr;
};

namespace {

const bool registered = registerHostModule(kPluginsRank, [](HostContext& context) {
    return std::unique_ptr<HostModule>(
        new PluginLoader(context.get<CommandRegistry>(), context.get<UndoQueue>()));
});

HStatus failure(const std::string& message, HS::StatusCode code = HS::kFailure) {
    return HStatus(code, message);
}

std::string cannotLoad(const std::string& plugin, const std::string& reason) {
    return "Cannot load plug-in \"" + plugin + "\": " + reason;
}

std::string cannotUnload(const std::string& plugin, const std::string& reason) {
    return "Cannot unload plug-in \"" + plugin + "\": " + reason;
}

// "The command ..." becomes "the command ...", to follow a colon.
std::string fragment(std::string sentence) {
    if (!sentence.empty())
        sentence[0] = static_cast<char>(std::tolower(static_cast<unsigned char>(sentence[0])));
    return sentence;
}

std::string failedEntryPoint(const char* entryName, const HStatus& status) {
    return std::string(entryName) + " failed: " + status.errorString().str();
}

} // namespace

PluginLoader::PluginLoader(CommandRegistry& registry, UndoQueue& undoQueue)
    : m_registry(registry), m_undoQueue(undoQueue) {}

PluginLoader::~PluginLoader() = default;

void PluginLoader::shutDown() {
    while (!m_loaded.empty()) {
        // The host stops either way; the plug-in's code goes with it.
        HStatus status = stop(*m_loaded.back(), false);
        if (!status)
            HGlobal::displayError(status.errorString());
    }
}

HStatus PluginLoader::load(const std::string& nameOrPath, std::string* name) {
    int loadedAt = indexOf(nameOrPath);
    if (loadedAt >= 0)
        return failure(cannotLoad(nameOrPath, "a plug-in named \"" +
                                                  m_loaded[loadedAt]->data->name() +
                                                  "\" is already loaded (from " +
                                                  m_loaded[loadedAt]->data->path() + ")."));
    std::string path;
    HStatus status = locatePlugin(nameOrPath, path);
    if (!status)
        return failure(cannotLoad(nameOrPath, status.errorString().str()), status.statusCode());
    std::unique_ptr<Loaded> loaded;
    status = open(path, loaded);
    if (!status)
        return failure(cannotLoad(nameOrPath, status.errorString().str()));

    Loaded* plugin = loaded.get();
    m_loaded.push_back(std::move(loaded));
    status = initialize(*plugin);
    if (!status) {
        close(takeOut(*plugin));
        return failure(cannotLoad(nameOrPath, status.errorString().str()));
    }
    if (name)
        *name = plugin->data->name();
    return HS::kSuccess;
}

HStatus PluginLoader::open(const std::string& path, std::unique_ptr<Loaded>& loaded) {
    std::string error;
    std::unique_ptr<PluginLibrary> library = PluginLibrary::open(path, error);
    if (!library)
        return failure("it is not a library the host can load (" + error + ").");
    std::string apiVersion;
    HStatus status = checkPluginKitRecords(*library, apiVersion);
    if (!status)
        return status;
    auto initializePlugin = reinterpret_cast<EntryPoint>(library->function("initializePlugin"));
    auto uninitializePlugin = reinterpret_cast<EntryPoint>(library->function("uninitializePlugin"));
    if (!initializePlugin || !uninitializePlugin)
        return failure(std::string("it does not export ") +
                       (initializePlugin ? "uninitializePlugin" : "initializePlugin") + ".");
    loaded = std::make_unique<Loaded>();
    loaded->data = std::make_shared<PluginData>(pluginNameOf(path), path, apiVersion);
    loaded->library = std::move(library);
    loaded->initializePlugin = initializePlugin;
    loaded->uninitializePlugin = uninitializePlugin;
    return HS::kSuccess;
}

HStatus PluginLoader::initialize(Loaded& loaded) {
    PluginData& data = *loaded.data;
    data.m_loaded = true;
    data.m_initializing = true;
    HStatus status = callEntryPoint(loaded.initializePlugin, loaded.data, "initializePlugin");
    data.m_initializing = false;
    if (!data.m_refusal.empty()) {
        // The plug-in may have gone on without the command; let it take down what it set up.
        if (status)
            callEntryPoint(loaded.uninitializePlugin, loaded.data, "uninitializePlugin");
        return failure(data.m_refusal);
    }
    if (!status)
        return failure(failedEntryPoint("initializePlugin", status));
    return HS::kSuccess;
}

HStatus PluginLoader::callEntryPoint(EntryPoint entryPoint, const std::shared_ptr<PluginData>& data,
                                     const char* entryName) {
    // Exceptions must not cross the interface; one that does is the plug-in's failure, not the
    // host's end.
    try {
        return entryPoint(HApiAccess::object(data));
    } catch (const std::exception& error) {
        return failure(std::string(entryName) + " threw: " + error.what());
    } catch (...) {
        return failure(std::string(entryName) + " threw an exception.");
    }
}

std::unique_ptr<PluginLoader::Loaded> PluginLoader::takeOut(const Loaded& plugin) {
    // Searched by address: entry points may have loaded and unloaded other plug-ins meanwhile.
    auto it = std::find_if(m_loaded.begin(), m_loaded.end(),
                           [&](const std::unique_ptr<Loaded>& l) { return l.get() == &plugin; });
    std::unique_ptr<Loaded> taken = std::move(*it);
    m_loaded.erase(it);
    return taken;
}

void PluginLoader::close(std::unique_ptr<Loaded> loaded) {
    const std::string& name = loaded->data->name();
    m_undoQueue.dropOwner(name);
    m_registry.removeAll(name);
    loaded->data->m_loaded = false;
    loaded.reset();
}

HStatus PluginLoader::unload(const std::string& name) {
    int index = indexOf(name);
    if (index < 0)
        return failure(cannotUnload(name, "it is not loaded."), HS::kNotFound);
    Loaded* plugin = m_loaded[index].get();
    const PluginData& data = *plugin->data;
    if (data.m_initializing || data.m_unloading)
        return failure(cannotUnload(name, "it is being loaded or unloaded."));
    if (m_registry.isRunning(data.name()))
        return failure(cannotUnload(name, "one of its commands is running."));

    return stop(*plugin, true);
}

HStatus PluginLoader::stop(Loaded& plugin, bool stayWhenRefused) {
    PluginData& data = *plugin.data;
    m_undoQueue.dropOwner(data.name());
    data.m_unloading = true;
    HStatus status = callEntryPoint(plugin.uninitializePlugin, plugin.data, "uninitializePlugin");
    data.m_unloading = false;
    if (!status) {
        status = failure(
            cannotUnload(data.name(), failedEntryPoint("uninitializePlugin", status) +
                                          (stayWhenRefused ? "; the plug-in stays loaded."
                                                           : "; the plug-in is closed anyway.")));
        if (stayWhenRefused)
            return status;
    }
    close(takeOut(plugin));
    return status;
}

std::vector<std::shared_ptr<const PluginData>> PluginLoader::plugins() const {
    std::vector<std::shared_ptr<const PluginData>> result;
    for (const std::unique_ptr<Loaded>& loaded : m_loaded)
        result.push_back(loaded->data);
    return result;
}

std::shared_ptr<const PluginData> PluginLoader::find(const std::string& nameOrPath) const {
    int index = indexOf(nameOrPath);
    return index < 0 ? nullptr : m_loaded[index]->data;
}

int PluginLoader::indexOf(const std::string& nameOrPath) const {
    const std::string name = pluginNameOf(nameOrPath);
    for (size_t i = 0; i < m_loaded.size(); ++i)
        if (m_loaded[i]->data->name() == name)
            return static_cast<int>(i);
    return -1;
}

HStatus PluginLoader::registerCommand(PluginData& plugin, const HString& name,
                                      CommandCreator creator, SyntaxCreator syntax) {
    if (!plugin.isAlive())
        return failure("The plug-in is not loaded.", HS::kInvalidParameter);
    std::shared_ptr<const CommandEntry> taken = m_registry.find(name);
    HStatus status;
    if (!taken)
        status = m_registry.add(name, creator, syntax, plugin.name());
    else if (taken->owner == kBuiltInOwner)
        status = failure("The command \"" + name.str() + "\" is a built-in command of the host.",
                         HS::kInvalidParameter);
    else
        status = failure("The command \"" + name.str() + "\" belongs to the plug-in \"" +
                             taken->owner.str() + "\".",
                         HS::kInvalidParameter);
    if (!status && plugin.m_initializing && plugin.m_refusal.empty())
        plugin.m_refusal = fragment(status.errorString().str());
    return status;
}

HStatus PluginLoader::deregisterCommand(const PluginData& plugin, const HString& name) {
    std::shared_ptr<const CommandEntry> entry = m_registry.find(name);
    if (!entry || entry->owner != HString(plugin.name()))
        return failure("The plug-in \"" + plugin.name() + "\" has no command \"" + name.str() +
                           "\".",
                       HS::kInvalidParameter);
    m_registry.remove(name);
    return HS::kSuccess;
}

} // namespace runtime
