#include "HFnPlugin.h"

#include "api/HApiAccess.h"
#include "api/StatusReport.h"
#include "plugins/PluginData.h"
#include "plugins/PluginKitRecords.h"
#include "plugins/PluginLoader.h"

using runtime::PluginData;
using runtime::report;

namespace {

std::shared_ptr<PluginData> pluginOf(const HObject& object) {
    return HApiAccess::as<PluginData>(object);
}

// "Any" (or nothing) takes every host; a version takes hosts of its major version that are
// at least as new.
HStatus checkRequiredVersion(const char* required) {
    const std::string version = required ? required : "";
    if (version.empty() || version == "Any")
        return HS::kSuccess;
    if (runtime::sameMajorApiVersion(version) && version <= runtime::hostApiVersion())
        return HS::kSuccess;
    return HStatus(HS::kFailure, "The plug-in requires interface version " + version +
                                     "; this host has " + runtime::hostApiVersion() + ".");
}

HString text(const std::shared_ptr<PluginData>& plugin,
             const std::string& (PluginData::*field)() const, HStatus* status) {
    report(status, plugin ? HStatus() : runtime::invalidParameter("The plug-in is not loaded."));
    return plugin ? HString((*plugin.*field)()) : HString();
}

} // namespace

HFnPlugin::HFnPlugin() = default;

HFnPlugin::HFnPlugin(const HObject& plugin, const char* vendor, const char* version,
                     const char* requiredApiVersion, HStatus* status) {
    HStatus result = attach(plugin, HFn::kPlugin);
    if (result)
        result = checkRequiredVersion(requiredApiVersion);
    if (!result) {
        m_object = HObject();
    } else if (std::shared_ptr<PluginData> data = pluginOf(m_object)) {
        data->describe(vendor ? vendor : "", version ? version : "");
    }
    report(status, result);
}

HFn::Type HFnPlugin::type() const {
    return HFn::kPlugin;
}

HStatus HFnPlugin::setObject(const HObject& plugin) {
    return attach(plugin, HFn::kPlugin);
}

HStatus HFnPlugin::registerCommand(const HString& commandName, HCreatorFunction creator,
                                   HCreateSyntaxFunction createSyntax) {
    std::shared_ptr<PluginData> plugin = pluginOf(m_object);
    if (!plugin)
        return runtime::invalidParameter("The plug-in is not loaded.");
    return runtime::host().get<runtime::PluginLoader>().registerCommand(*plugin, commandName,
                                                                        creator, createSyntax);
}

HStatus HFnPlugin::deregisterCommand(const HString& commandName) {
    std::shared_ptr<PluginData> plugin = pluginOf(m_object);
    if (!plugin)
        return runtime::invalidParameter("The plug-in is not loaded.");
    return runtime::host().get<runtime::PluginLoader>().deregisterCommand(*plugin, commandName);
}

HString HFnPlugin::name(HStatus* status) const {
    return text(pluginOf(m_object), &PluginData::name, status);
}

HString HFnPlugin::vendor(HStatus* status) const {
    return text(pluginOf(m_object), &PluginData::vendor, status);
}

HString HFnPlugin::version(HStatus* status) const {
    return text(pluginOf(m_object), &PluginData::version, status);
}

HString HFnPlugin::apiVersion(HStatus* status) const {
    return text(pluginOf(m_object), &PluginData::apiVersion, status);
}

HString HFnPlugin::loadPath(HStatus* status) const {
    return text(pluginOf(m_object), &PluginData::directory, status);
}
