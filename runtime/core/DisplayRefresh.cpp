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
    m_subscribers.call([](const Redraw& redraw, void*) { redraw(); });
}

unsigned long long DisplayRefresh::watch(Redraw changed) {
    unsigned long long id = host().nextCallbackId();
    m_watchers.add(id, std::move(changed), nullptr);
    return id;
}

bool DisplayRefresh::unwatch(unsigned long long id) {
    return m_watchers.remove(id);
}

void DisplayRefresh::changed() {
    m_watchers.call([](const Redraw& changed, void*) { changed(); });
}

} // namespace runtime
