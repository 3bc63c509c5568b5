// HCommandMessage: callbacks for the script output: every message, echoed command and result
// line the host writes, with its kind.
//
// Callbacks run synchronously, in the order they were added, before the writing call
// returns. A null function fails with kInvalidParameter and returns 0.
#pragma once

#include "HMessage.h"
#include "HString.h"

class HCommandMessage : public HMessage {
public:
    enum MessageType { kHistory, kInfo, kWarning, kError, kResult };
    typedef void (*OutputFunction)(const HString& text, MessageType type, void* clientData);

    static HCallbackId addCommandOutputCallback(OutputFunction function, void* clientData = nullptr,
                                                HStatus* status = nullptr);
};
