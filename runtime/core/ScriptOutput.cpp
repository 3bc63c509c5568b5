#include "core/ScriptOutput.h"

namespace runtime {

namespace {

const bool registered = registerHostModule(
    kOutputRank, [](HostContext&) { return std::unique_ptr<HostModule>(new ScriptOutput); });

} // namespace

HCallbackId ScriptOutput::addCallback(HCommandMessage::OutputFunction function, void* clientData,
                                      HStatus* status) {
    if (!function) {
        if (status)
            *status = HStatus(HS::kInvalidParameter, "No callback function.");
        return 0;
    }
    HCallbackId id = host().nextCallbackId();
    m_callbacks.add(id, function, clientData);
    if (status)
        *status = HS::kSuccess;
    return id;
}

bool ScriptOutput::removeCallback(HCallbackId id) {
    return m_callbacks.remove(id);
}

void ScriptOutput::write(const HString& text, HCommandMessage::MessageType type) {
    if (type == HCommandMessage::kError)
        ++m_errors;
    m_callbacks.call([&](HCommandMessage::OutputFunction function, void* clientData) {
        function(text, type, clientData);
    });
}

HString ScriptOutput::formatLine(const HString& text, HCommandMessage::MessageType type) {
    switch (type) {
    case HCommandMessage::kError:
        return "// Error: " + text;
    case HCommandMessage::kWarning:
        return "// Warning: " + text;
    case HCommandMessage::kResult:
        return "// Result: " + text;
    case HCommandMessage::kInfo:
    case HCommandMessage::kHistory:
        break;
    }
    return text;
}

} // namespace runtime
