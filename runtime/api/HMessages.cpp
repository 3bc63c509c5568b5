// The callback registration classes: HMessage, HEventMessage, HCommandMessage.
#include "HCommandMessage.h"
#include "HEventMessage.h"
#include "HMessage.h"
#include "HStringArray.h"
#include "core/EventBus.h"
#include "core/ScriptOutput.h"

namespace {

HStatus notRunning() {
    return HStatus(HS::kFailure, "The host is not running.");
}

} // namespace

HStatus HMessage::removeCallback(HCallbackId id) {
    if (!runtime::hostRunning())
        return notRunning();
    runtime::HostContext& host = runtime::host();
    if (host.get<runtime::EventBus>().remove(id) ||
        host.get<runtime::ScriptOutput>().removeCallback(id))
        return HS::kSuccess;
    return HStatus(HS::kInvalidParameter, "No callback has this id.");
}

HCallbackId HEventMessage::addEventCallback(const HString& eventName, Function function,
                                            void* clientData, HStatus* status) {
    if (!runtime::hostRunning()) {
        if (status)
            *status = notRunning();
        return 0;
    }
    return runtime::host().get<runtime::EventBus>().add(eventName, function, clientData, status);
}

HStatus HEventMessage::getEventNames(HStringArray& names) {
    names = runtime::EventBus::eventNames();
    return HS::kSuccess;
}

HCallbackId HCommandMessage::addCommandOutputCallback(OutputFunction function, void* clientData,
                                                      HStatus* status) {
    if (!runtime::hostRunning()) {
        if (status)
            *status = notRunning();
        return 0;
    }
    return runtime::host().get<runtime::ScriptOutput>().addCallback(function, clientData, status);
}
