#include "core/DisplayRefresh.h"

namespace runtime {

namespace {

const bool registered = registerHostModule(
    kEventsRank, [](HostContext&) { return std::unique_ptr<HostModule>(new DisplayRefresh); });

} // namespace

unsigned long long DisplayRefresh::add(CallbackList<Redraw>& list, Redraw redraw) {
    unsigned long long id = host().nextCallbackId();
    list.add(id, std::move(redraw), nullptr);
    return id;
}

void DisplayRefresh::callAll(const CallbackList<Redraw>& list) {
    list.call([](const Redraw& redraw, void*) { redraw(); });
}

unsigned long long DisplayRefresh::subscribe(Redraw redraw) {
    return add(m_subscribers, std::move(redraw));
}

bool DisplayRefresh::unsubscribe(unsigned long long id) {
    return m_subscribers.remove(id);
}

void DisplayRefresh::request() {
    callAll(m_subscribers);
}

unsigned long long DisplayRefresh::watch(Redraw changed) {
    return add(m_watchers, std::move(changed));
}

bool DisplayRefresh::unwatch(unsigned long long id) {
    return m_watchers.remove(id);
}

void DisplayRefresh::changed() {
    callAll(m_watchers);
}

} // namespace runtime
