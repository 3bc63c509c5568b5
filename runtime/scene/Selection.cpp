#include "scene/Selection.h"

#include "core/DisplayRefresh.h"
#include "core/EventBus.h"
#include "scene/SelectionItems.h"

namespace runtime {

namespace {

const bool registered = registerHostModule(
    kSelectionRank, [](HostContext&) { return std::unique_ptr<HostModule>(new Selection); });

} // namespace

Selection& selection() {
    return host().get<Selection>();
}

Selection::Selection() : m_scene(scene()) {
    m_listener = m_scene.addListener([this](const SceneChange& change) { sceneChanged(change); });
}

Selection::~Selection() {
    m_scene.removeListener(m_listener);
}

void Selection::setActive(const HSelectionList& list, HGlobal::ListAdjustment mode) {
    SelectionItems& items = HApiAccess::items(m_active);
    // A copy: list may be the active selection itself.
    const SelectionItems given = HApiAccess::items(list);
    if (mode == HGlobal::kReplaceList)
        items.clear();
    for (const SelectionItem& item : given) {
        if (!itemNode(item))
            continue;
        switch (mode) {
        case HGlobal::kReplaceList:
        case HGlobal::kAddToList:
            addItem(items, item);
            break;
        case HGlobal::kRemoveFromList:
            removeItem(items, item);
            break;
        case HGlobal::kXORWithList:
            toggleItem(items, item);
            break;
        }
    }
    host().get<EventBus>().fire(events::kSelectionChanged);
}

void Selection::setHilite(const HSelectionList& list) {
    SelectionItems& items = HApiAccess::items(m_hilite);
    const SelectionItems given = HApiAccess::items(list);
    items.clear();
    for (const SelectionItem& item : given)
        if (itemNode(item))
            addItem(items, item);
    host().get<DisplayRefresh>().changed();
}

void Selection::clearQuietly() {
    m_active.clear();
    m_hilite.clear();
}

void Selection::sceneChanged(const SceneChange& change) {
    if (change.kind == SceneChange::kSceneReset) {
        clearQuietly();
    } else if (change.kind == SceneChange::kNodesRemoved) {
        dropDeadItems(HApiAccess::items(m_hilite));
        if (dropDeadItems(HApiAccess::items(m_active)))
            host().get<EventBus>().fire(events::kSelectionChanged);
    }
}

} // namespace runtime
