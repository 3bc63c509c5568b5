// DisplayRefresh: requests to redraw what shows the scene now (the refresh command), passed
// to whoever draws it: the application's viewport subscribes, and without a subscriber (batch
// mode, tests) a request does nothing.
//
// Subscribers are called synchronously, in the order they subscribed; one that unsubscribes
// during a request is not called again. The module owns the callbacks it holds.
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

private:
    CallbackList<Redraw> m_subscribers;
};

} // namespace runtime
