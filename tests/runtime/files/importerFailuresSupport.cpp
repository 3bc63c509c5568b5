#include "importerFailures.h"

#include <cstdlib>

namespace filetest {

ScopedEnvironment::ScopedEnvironment(const char* name, const std::string& value) : m_name(name) {
    if (const char* previous = std::getenv(name)) {
        m_had = true;
        m_previous = previous;
    }
    setenv(name, value.c_str(), 1);
}

ScopedEnvironment::~ScopedEnvironment() {
    if (m_had)
        setenv(m_name.c_str(), m_previous.c_str(), 1);
    else
        unsetenv(m_name.c_str());
}

FailingImporter::FailingImporter(const std::string& how)
    : m_program("VOREL_IMPORTER", VOREL_FAILING_IMPORTER), m_how("FAILING_IMPORTER", how) {}

} // namespace filetest
