// Test stand-ins for the importer program: setting environment variables for one scope, and
// pointing the host at an importer that fails in a chosen way (failingImporter.cpp).
#pragma once

#include <string>

namespace filetest {

class ScopedEnvironment {
public:
    ScopedEnvironment(const char* name, const std::string& value);
    ~ScopedEnvironment();
    ScopedEnvironment(const ScopedEnvironment&) = delete;
    ScopedEnvironment& operator=(const ScopedEnvironment&) = delete;

private:
    std::string m_name;
    bool m_had = false;
    std::string m_previous;
};

// While it lives, imports run the failing importer, which fails as `how` says.
class FailingImporter {
public:
    explicit FailingImporter(const std::string& how);

private:
    ScopedEnvironment m_program;
    ScopedEnvironment m_how;
};

} // namespace filetest
