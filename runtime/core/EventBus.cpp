#include "core/EventBus.h"

#include "HStringArray.h"

#include <cassert>

namespace runtime {

namespace events {
const char* const kSelectionChanged = "SelectionChanged";
const char* const kSceneOpened = "SceneOpened";
const char* const kUndo = "Undo";
const char* const kRedo = "Redo";
const char* const kSceneSaved = "SceneSaved";
const char* const kSkinWeightsChanged = "SkinWeightsChanged";
} // namespace events

namespace {

const char* const kEventNames[] = {events::kSelectionChanged, events::kSceneOpened, events::kUndo,
                                   events::kRedo, events::kSceneSaved,
                                   events::kSkinWeightsChanged};

const bool registered = registerHostModule(
    kEventsRank, [](HostContext&) { return std::unique_ptr<HostModule>(new EventBus); });

} // namespace

EventBus::EventBus() {
    for (const char* name : kEventNames)
        m_callbacks[name];
}

bool EventBus::isEventName(const HString& name) {
    for (const char* known : kEventNames)
        if (name == known)
            return true;
    return false;
}

HStringArray EventBus::eventNames() {
    HStringArray names;
    for (const char* name : kEventNames)
        names.append(name);
    return names;
}

HCallbackId EventBus::add(const HString& eventName, HEventMessage::Function function,
                          void* clientData, HStatus* status) {
    if (!function || !isEventName(eventName)) {
        if (status)
            *status = HStatus(HS::kInvalidParameter,
                              function ? "Unknown event: " + eventName : "No callback function.");
        return 0;
    }
    HCallbackId id = host().nextCallbackId();
    m_callbacks[eventName.str()].add(id, function, clientData);
    if (status)
        *status = HS::kSuccess;
    return id;
}

bool EventBus::remove(HCallbackId id) {
    for (auto& entry : m_callbacks)
        if (entry.second.remove(id))
            return true;
    return false;
}

void EventBus::fire(const char* eventName) {
    auto it = m_callbacks.find(eventName);
    assert(it != m_callbacks.end() && "unknown event");
    it->second.call(
        [](HEventMessage::Function function, void* clientData) { function(clientData); });
}

} // namespace runtime
