// Fires "SkinWeightsChanged" after every change of a skin cluster's weights or influences,
// whoever made it (a command, its undo or redo, a file read into the scene, the programming
// interface), so that a plug-in showing weights knows when what it shows may be out of date.
// The event carries no data; the scene's own notices name the vertices for the runtime's views.
#include "core/EventBus.h"
#include "scene/Scene.h"

namespace runtime {

namespace {

class WeightChangeEvents : public HostModule {
public:
    WeightChangeEvents() : m_scene(scene()) {
        m_listener = m_scene.addListener([](const SceneChange& change) {
            if (change.kind == SceneChange::kWeightsChanged)
                host().get<EventBus>().fire(events::kSkinWeightsChanged);
        });
    }
    ~WeightChangeEvents() override { m_scene.removeListener(m_listener); }

private:
    Scene& m_scene;
    Scene::ListenerId m_listener = 0;
};

const bool registered = registerHostModule(kWeightEventsRank, [](HostContext&) {
    return std::unique_ptr<HostModule>(new WeightChangeEvents);
});

} // namespace

} // namespace runtime
