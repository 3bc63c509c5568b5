// EventBus: the host's named scene events and their callbacks (HEventMessage).
//
// The events are fixed: "SelectionChanged", "SceneOpened", "Undo", "Redo", "SceneSaved",
// "SkinWeightsChanged".
// fire() calls the event's callbacks synchronously, in the order they were added; a callback
// removed during the dispatch is not called again.
#pragma once

#include "HEventMessage.h"
#include "HString.h"
#include "core/CallbackList.h"
#include "core/HostContext.h"

#include <map>
#include <string>

namespace runtime {

namespace events {
extern const char* const kSelectionChanged;
extern const char* const kSceneOpened;
extern const char* const kUndo;
extern const char* const kRedo;
extern const char* const kSceneSaved;
extern const char* const kSkinWeightsChanged;
} // namespace events

class EventBus : public HostModule {
public:
    EventBus();

    static bool isEventName(const HString& name);
    static HStringArray eventNames();

    // Fails with kInvalidParameter for an unknown event or a null function.
    HCallbackId add(const HString& eventName, HEventMessage::Function function, void* clientData,
                    HStatus* status);
    bool remove(HCallbackId id);
    void fire(const char* eventName);

private:
    std::map<std::string, CallbackList<HEventMessage::Function>> m_callbacks;
};

} // namespace runtime
