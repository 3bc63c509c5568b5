#include "plugins/PluginLibrary.h"

#include <dlfcn.h>
#include <link.h>

namespace runtime {

std::unique_ptr<PluginLibrary> PluginLibrary::open(const std::string& path, std::string& error) {
    dlerror();
    // Every symbol resolved now, so a missing dependency is a load error rather than a crash
    // later; local, so that two plug-ins' records and helpers never clash.
    void* handle = dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL);
    if (!handle) {
        const char* reason = dlerror();
        error = reason ? reason : "unknown reason";
        return nullptr;
    }
    return std::unique_ptr<PluginLibrary>(new PluginLibrary(handle));
}

PluginLibrary::PluginLibrary(void* handle) : m_handle(handle) {}

PluginLibrary::~PluginLibrary() {
    dlclose(m_handle);
}

void* PluginLibrary::ownSymbol(const char* name, std::size_t* size) const {
    dlerror();
    void* address = dlsym(m_handle, name);
    if (!address)
        return nullptr;
    Dl_info info;
    link_map* definedIn = nullptr;
    link_map* library = nullptr;
    if (!dladdr1(address, &info, reinterpret_cast<void**>(&definedIn), RTLD_DL_LINKMAP) ||
        dlinfo(m_handle, RTLD_DI_LINKMAP, &library) != 0 || definedIn != library)
        return nullptr;
    void* entry = nullptr;
    if (!dladdr1(address, &info, &entry, RTLD_DL_SYMENT) || !entry)
        return nullptr;
    const auto* symbol = static_cast<const ElfW(Sym)*>(entry);
    if (size)
        *size = symbol->st_size;
    return address;
}

const void* PluginLibrary::record(const char* name, std::size_t& size) const {
    size = 0;
    return ownSymbol(name, &size);
}

void* PluginLibrary::function(const char* name) const {
    return ownSymbol(name, nullptr);
}

} // namespace runtime
