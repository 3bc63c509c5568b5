// HostContext: the running host, from HLibrary::initialize() to HLibrary::cleanup().
//
// It is the runtime's one global. Everything the host keeps while it runs (script output,
// events, the main window, the scene, the selection, the command language, the undo queue,
// the plug-in loader) is a HostModule owned by the context; modules find each other through
// host().get<T>(). Modules register a factory once, at static initialisation, with a rank;
// initialize() creates them in ascending rank and cleanup() destroys them in the reverse order,
// so a module may use any module of lower rank for its whole life. While modules are being
// destroyed host() is no longer there: a module that needs a lower-rank module in its
// destructor keeps a reference to it from its constructor. Work that needs the whole host
// (running commands, printing) goes in shutDown(), which cleanup() calls on every module,
// highest rank first, before any module is destroyed.
#pragma once

#include "HString.h"

#include <memory>
#include <typeindex>
#include <unordered_map>
#include <vector>

namespace runtime {

class HostContext;

class HostModule {
public:
    virtual ~HostModule();
    // The host is about to stop; every module still exists and host() still works.
    virtual void shutDown() {}
};

// Ranks of the modules; lower ranks are created first and destroyed last.
enum HostModuleRank {
    kOutputRank = 0,
    kEventsRank = 10,
    kMainWindowRank = 20,
    kProgressRank = 30,
    kSceneRank = 100,
    kSelectionRank = 200,
    kWeightEventsRank = 210,
    kDocumentRank = 250,
    kLanguageRank = 300,
    kUndoRank = 400,
    kCommandsRank = 500,
    kPluginsRank = 600,
};

using HostModuleFactory = std::unique_ptr<HostModule> (*)(HostContext& context);

// Call from a static initialiser: `static const bool registered = registerHostModule(...)`.
bool registerHostModule(int rank, HostModuleFactory factory);

class HostContext {
public:
    explicit HostContext(const HString& applicationName);
    ~HostContext();
    HostContext(const HostContext&) = delete;
    HostContext& operator=(const HostContext&) = delete;

    // Creates every registered module, in rank order.
    void createModules();
    // Calls shutDown() on every module, in reverse rank order.
    void shutDownModules();

    template <typename T> T* find() const {
        auto it = m_byType.find(std::type_index(typeid(T)));
        return it == m_byType.end() ? nullptr : static_cast<T*>(it->second);
    }
    template <typename T> T& get() const {
        T* module = find<T>();
        assertPresent(module != nullptr, typeid(T).name());
        return *module;
    }

    const HString& applicationName() const { return m_applicationName; }
    // Ids for callbacks of every kind, unique for the life of the process.
    unsigned long long nextCallbackId();

private:
    static void assertPresent(bool present, const char* typeName);
    void add(std::unique_ptr<HostModule> module);

    HString m_applicationName;
    std::vector<std::unique_ptr<HostModule>> m_modules;
    std::unordered_map<std::type_index, HostModule*> m_byType;
};

bool hostRunning();
// The running host; asserts that one is running.
HostContext& host();

} // namespace runtime
