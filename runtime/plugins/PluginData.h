// PluginData: one loaded plug-in as the host knows it, and the referent of the plug-in object
// (HFn::kPlugin) that the plug-in's initializePlugin and uninitializePlugin receive.
//
// The PluginLoader creates it and owns the library behind it; handles share it. Once the
// plug-in is unloaded the object reports isAlive() false, so the plug-in's handles read as
// null and HFnPlugin refuses them. The vendor and version are what the plug-in's function set
// gave while initializePlugin ran; later function sets do not change them.
#pragma once

#include "api/HObjectData.h"

#include <string>

namespace runtime {

class PluginData : public HObjectData {
public:
    PluginData(std::string name, std::string path, std::string apiVersion)
        : m_name(std::move(name)), m_path(std::move(path)),
          m_directory(m_path.substr(0, m_path.find_last_of('/'))),
          m_apiVersion(std::move(apiVersion)) {}

    HFn::Type apiType() const override { return HFn::kPlugin; }
    bool isAlive() const override { return m_loaded; }

    // The library's file name without directory and last extension; also the owner name of
    // its commands.
    const std::string& name() const { return m_name; }
    // The library file, absolute, and the directory it is in.
    const std::string& path() const { return m_path; }
    const std::string& directory() const { return m_directory; }
    // The interface version the plug-in was built against (its HApiVersion record).
    const std::string& apiVersion() const { return m_apiVersion; }
    const std::string& vendor() const { return m_vendor; }
    const std::string& version() const { return m_version; }

    bool initializing() const { return m_initializing; }
    // Only while initializing: a function set made later must not rewrite what pluginInfo shows.
    void describe(std::string vendor, std::string version) {
        if (m_initializing) {
            m_vendor = std::move(vendor);
            m_version = std::move(version);
        }
    }

    // Why the registry refused one of the plug-in's commands while initializePlugin ran, as a
    // sentence fragment; empty when it refused none.
    const std::string& refusal() const { return m_refusal; }

private:
    friend class PluginLoader;

    std::string m_name;
    std::string m_path;
    std::string m_directory;
    std::string m_apiVersion;
    std::string m_vendor;
    std::string m_version;
    bool m_loaded = false;
    bool m_initializing = false;
    bool m_unloading = false;
    std::string m_refusal;
};

} // namespace runtime
