// DisplayRefresh: requests to redraw what shows the scene now (the refresh command), passed
// to whoever draws it: the application's viewport subscribes, and without a subscriber (batch
// mode, tests) a request does nothing. It also carries the notices of changes to what is
// drawn that the scene's listeners do not hear (the hilite list, the current tool, the painted
// influence): watchers redraw when they next can.
//
// Subscribers and watchers are called synchronously, in the order they were added; one that
// is removed during a call is not called again. The module owns the callbacks it holds.
#pragma once

#include "core/CallbackList.h"
#include "core/HostContext.h"

#include <functional>

namespace runtime {

class DisplayRefresh : public HostModule {
public:
    using Redraw = std::function<void()>;

    unsigned long long subscribe(Redraw redraw);
    bool unsubscribe(unsigned long long id);

    void request();

    unsigned long long watch(Redraw changed);
    bool unwatch(unsigned long long id);
    // Something drawn outside the scene graph changed.
    void changed();

private:
    static unsigned long long add(CallbackList<Redraw>& list, Redraw redraw);
    static void callAll(const CallbackList<Redraw>& list);

    CallbackList<Redraw> m_subscribers;
    CallbackList<Redraw> m_watchers;
};

} // namespace runtime
