// HMessage: callback registration common to all host messages. Every add...Callback function
// returns an HCallbackId; removeCallback() takes it back.
//
// Removing a callback while events are being dispatched takes effect at once: it is not
// called again, not even later in the same dispatch. Removing an unknown id fails with
// kInvalidParameter.
#pragma once

#include "HStatus.h"

typedef unsigned long long HCallbackId;

class HMessage {
public:
    static HStatus removeCallback(HCallbackId id);
};
