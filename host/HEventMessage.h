// HEventMessage: callbacks for named scene events: "SelectionChanged", "SceneOpened", "Undo",
// "Redo", "SceneSaved", and "SkinWeightsChanged" (after every change of a skin cluster's
// weights or influences, by whatever means).
//
// Callbacks run synchronously on the main thread, in the order they were added. An unknown
// event name or a null function fails with kInvalidParameter and returns 0.
#pragma once

#include "HMessage.h"
#include "HString.h"
#include "HStringArray.h"

class HEventMessage : public HMessage {
public:
    typedef void (*Function)(void* clientData);

    static HCallbackId addEventCallback(const HString& eventName, Function function,
                                        void* clientData = nullptr, HStatus* status = nullptr);
    static HStatus getEventNames(HStringArray& names);
};
