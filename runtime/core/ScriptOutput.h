// ScriptOutput: where every message, echoed command and result line of the host goes.
//
// write() hands the text and its kind to every output callback (HCommandMessage), in the
// order they were added, before returning. Callbacks receive the bare text; formatLine()
// gives the line a script editor or a terminal shows: "// Error: TEXT", "// Warning: TEXT",
// "// Result: TEXT", and the text itself for information and echoed commands.
#pragma once

#include "HCommandMessage.h"
#include "HString.h"
#include "core/CallbackList.h"
#include "core/HostContext.h"

namespace runtime {

class ScriptOutput : public HostModule {
public:
    HCallbackId addCallback(HCommandMessage::OutputFunction function, void* clientData,
                            HStatus* status);
    bool removeCallback(HCallbackId id);

    void write(const HString& text, HCommandMessage::MessageType type);
    // How many errors were written so far: lets a caller tell whether a step reported its own
    // failure.
    unsigned errorCount() const { return m_errors; }

    static HString formatLine(const HString& text, HCommandMessage::MessageType type);

private:
    CallbackList<HCommandMessage::OutputFunction> m_callbacks;
    unsigned m_errors = 0;
};

} // namespace runtime
