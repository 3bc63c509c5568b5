// Selection: the active selection, the hilite list and the component selection modes of the
// running host.
//
// Every call of setActive() is a change: it fires "SelectionChanged" once, synchronously,
// before returning, even when the list ends up the same. The hilite list never fires it; a
// change of it is announced to the display (DisplayRefresh::changed).
// Deleting selected nodes drops them from both lists (firing "SelectionChanged" once when the
// active selection lost items); a scene reset (new or opened scene) empties both lists without
// firing anything. The component modes are plain settings the viewport's picking reads:
// allComponents ("selectType -ocm -alc", off by default) and vertices ("selectType
// -vertex", on by default).
#pragma once

#include "HGlobal.h"
#include "HSelectionList.h"
#include "core/HostContext.h"
#include "scene/Scene.h"

namespace runtime {

class Selection : public HostModule {
public:
    Selection();
    ~Selection() override;

    const HSelectionList& active() const { return m_active; }
    void setActive(const HSelectionList& list,
                   HGlobal::ListAdjustment mode = HGlobal::kReplaceList);
    const HSelectionList& hilite() const { return m_hilite; }
    void setHilite(const HSelectionList& list);

    bool allComponents() const { return m_allComponents; }
    void setAllComponents(bool on) { m_allComponents = on; }
    bool vertices() const { return m_vertices; }
    void setVertices(bool on) { m_vertices = on; }

    // Empties both lists without any event (before "SceneOpened").
    void clearQuietly();

private:
    void sceneChanged(const SceneChange& change);

    // The scene outlives the selection (lower rank); kept because the host is already gone
    // while modules are destroyed.
    Scene& m_scene;
    HSelectionList m_active;
    HSelectionList m_hilite;
    bool m_allComponents = false;
    bool m_vertices = true;
    Scene::ListenerId m_listener = 0;
};

// The running host's selection.
Selection& selection();

} // namespace runtime
