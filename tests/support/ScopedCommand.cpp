#include "ScopedCommand.h"

#include "core/HostContext.h"

#include <gtest/gtest.h>

const char* const ScopedCommand::kTestOwner = "testCommands";

namespace {

runtime::CommandRegistry& registry() {
    return runtime::host().get<runtime::CommandRegistry>();
}

} // namespace

ScopedCommand::ScopedCommand(const char* name, runtime::CommandCreator creator,
                             runtime::SyntaxCreator syntax, const char* owner)
    : m_name(name), m_replaced(registry().remove(name)) {
    HStatus status = registry().add(name, creator, syntax, owner);
    EXPECT_TRUE(static_cast<bool>(status)) << status.errorString().asChar();
}

ScopedCommand::~ScopedCommand() {
    registry().remove(m_name);
    if (m_replaced)
        registry().add(*m_replaced);
}
