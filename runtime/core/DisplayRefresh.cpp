#include "core/DisplayRefresh.h"

namespace runtime {

namespace {

const bool registered = registerHostModule(
    kEventsRank, [](HostContext&) { return std::unique_ptr<HostModule>(new DisplayRefresh); });

} // namespace

unsigned long long DisplayRefresh::subscribe(Redraw redraw) {
    unsigned long long id = host().nextCallbackId();
    m_subscribers.add(id, std::move(redraw), nullptr);
    return id;
}

bool DisplayRefresh::unsubscribe(unsigned long long id) {
    return m_subscribers.remove(id);
}

void DisplayRefresh::request() {
    // A copy: the subscriber may subscribe others while it runs.
    m_subscribers.call([](Redraw redraw, void*) { redraw(); });
}

} // namespace runtime
