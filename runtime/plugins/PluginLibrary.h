// PluginLibrary: one shared library opened with dlopen, closed when the object goes.
//
// open() never throws and never crashes on a bad file: it gives null and the system loader's
// reason ("invalid ELF header", a missing dependency). The symbols looked up are those the
// library itself defines: a record that only a library it depends on exports counts as
// missing, so a plug-in cannot borrow another's kit records. Whoever owns the object makes
// sure no code or data of the library is in use when it is destroyed.
#pragma once

#include <cstddef>
#include <memory>
#include <string>

namespace runtime {

class PluginLibrary {
public:
    static std::unique_ptr<PluginLibrary> open(const std::string& path, std::string& error);
    ~PluginLibrary();
    PluginLibrary(const PluginLibrary&) = delete;
    PluginLibrary& operator=(const PluginLibrary&) = delete;

    // An exported data record: its address and its size in bytes as the library declares it;
    // null when the library does not define it.
    const void* record(const char* name, std::size_t& size) const;
    // An exported function; null when the library does not define it.
    void* function(const char* name) const;

private:
    explicit PluginLibrary(void* handle);
    // The address of a symbol the library itself defines, and its symbol table entry's size.
    void* ownSymbol(const char* name, std::size_t* size) const;

    void* m_handle;
};

} // namespace runtime
