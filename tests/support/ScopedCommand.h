// ScopedCommand: a command registered for the life of the object, for test programs. A command
// of the same name that exists already (a built-in the test stands in for) is put aside and
// comes back when the object goes.
//
// Registration failures (a null creator) fail the running test.
#pragma once

#include "lang/CommandRegistry.h"

#include <memory>

class ScopedCommand {
public:
    static const char* const kTestOwner;

    ScopedCommand(const char* name, runtime::CommandCreator creator,
                  runtime::SyntaxCreator syntax = nullptr, const char* owner = kTestOwner);
    ~ScopedCommand();
    ScopedCommand(const ScopedCommand&) = delete;
    ScopedCommand& operator=(const ScopedCommand&) = delete;

private:
    HString m_name;
    std::shared_ptr<const runtime::CommandEntry> m_replaced;
};
