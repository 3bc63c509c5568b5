// CallbackList: an ordered list of callbacks that may be removed while they are being called.
//
// call() walks a snapshot of the ids; before calling one it checks that it is still
// registered, so a callback removed during the walk (by itself or another) is not called
// again. Callbacks added during a walk are called from the next walk on.
#pragma once

#include <algorithm>
#include <vector>

namespace runtime {

template <typename Function> class CallbackList {
public:
    void add(unsigned long long id, Function function, void* clientData) {
        m_entries.push_back({id, function, clientData});
    }
    bool remove(unsigned long long id) {
        auto it = std::find_if(m_entries.begin(), m_entries.end(),
                               [id](const Entry& e) { return e.id == id; });
        if (it == m_entries.end())
            return false;
        m_entries.erase(it);
        return true;
    }
    bool contains(unsigned long long id) const { return find(id) != nullptr; }
    bool empty() const { return m_entries.empty(); }

    // invoke(function, clientData) is called for every callback still registered.
    template <typename Invoke> void call(Invoke invoke) const {
        std::vector<unsigned long long> ids;
        ids.reserve(m_entries.size());
        for (const Entry& e : m_entries)
            ids.push_back(e.id);
        for (unsigned long long id : ids) {
            const Entry* entry = find(id);
            if (entry)
                invoke(entry->function, entry->clientData);
        }
    }

private:
    struct Entry {
        unsigned long long id;
        Function function;
        void* clientData;
    };
    const Entry* find(unsigned long long id) const {
        for (const Entry& e : m_entries)
            if (e.id == id)
                return &e;
        return nullptr;
    }

    std::vector<Entry> m_entries;
};

} // namespace runtime
