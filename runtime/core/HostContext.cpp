#include "core/HostContext.h"

#include "HLibrary.h"

#include <QApplication>
#include <algorithm>
#include <cassert>
#include <cstdio>
#include <cstdlib>

namespace runtime {

namespace {

struct RegisteredModule {
    int rank;
    HostModuleFactory factory;
};

std::vector<RegisteredModule>& registeredModules() {
    static std::vector<RegisteredModule> modules;
    return modules;
}

std::unique_ptr<HostContext>& runningHost() {
    static std::unique_ptr<HostContext> context;
    return context;
}

unsigned long long g_lastCallbackId = 0;

} // namespace

HostModule::~HostModule() = default;

bool registerHostModule(int rank, HostModuleFactory factory) {
    registeredModules().push_back({rank, factory});
    return true;
}

HostContext::HostContext(const HString& applicationName) : m_applicationName(applicationName) {}

HostContext::~HostContext() {
    while (!m_modules.empty()) {
        HostModule* last = m_modules.back().get();
        for (auto it = m_byType.begin(); it != m_byType.end(); ++it) {
            if (it->second == last) {
                m_byType.erase(it);
                break;
            }
        }
        m_modules.pop_back();
    }
}

void HostContext::createModules() {
    std::vector<RegisteredModule> modules = registeredModules();
    std::stable_sort(
        modules.begin(), modules.end(),
        [](const RegisteredModule& a, const RegisteredModule& b) { return a.rank < b.rank; });
    for (const RegisteredModule& module : modules)
        add(module.factory(*this));
}

void HostContext::shutDownModules() {
    for (auto it = m_modules.rbegin(); it != m_modules.rend(); ++it)
        (*it)->shutDown();
}

void HostContext::add(std::unique_ptr<HostModule> module) {
    HostModule* raw = module.get();
    m_byType[std::type_index(typeid(*raw))] = raw;
    m_modules.push_back(std::move(module));
}

unsigned long long HostContext::nextCallbackId() {
    return ++g_lastCallbackId;
}

void HostContext::assertPresent(bool present, const char* typeName) {
    if (!present) {
        std::fprintf(stderr, "host module missing: %s\n", typeName);
        std::abort();
    }
}

bool hostRunning() {
    return runningHost() != nullptr;
}

HostContext& host() {
    assert(runningHost() && "the host is not running: call HLibrary::initialize first");
    return *runningHost();
}

} // namespace runtime

HStatus HLibrary::initialize(const HString& applicationName) {
    if (runtime::hostRunning())
        return HStatus(HS::kFailure, "The host is already running.");
    if (!qobject_cast<QApplication*>(QCoreApplication::instance()))
        return HStatus(HS::kFailure, "A QApplication must exist before the host starts.");
    runtime::runningHost() = std::make_unique<runtime::HostContext>(applicationName);
    runtime::runningHost()->createModules();
    return HS::kSuccess;
}

void HLibrary::cleanup() {
    if (runtime::hostRunning())
        runtime::runningHost()->shutDownModules();
    runtime::runningHost().reset();
}

bool HLibrary::isInitialized() {
    return runtime::hostRunning();
}
