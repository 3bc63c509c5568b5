#include "scene/SkinWeightChange.h"

#include "scene/Scene.h"
#include "scene/SkinClusterData.h"

#include <cassert>

namespace runtime {

SkinWeightChange::SkinWeightChange(NodePtr cluster, std::vector<int> vertices)
    : m_cluster(std::move(cluster)), m_vertices(std::move(vertices)) {
    assert(m_cluster && m_cluster->skinCluster());
    capture(m_before);
}

void SkinWeightChange::captureAfter() {
    capture(m_after);
}

void SkinWeightChange::restoreBefore(Scene& scene) const {
    restore(scene, m_before);
}

void SkinWeightChange::restoreAfter(Scene& scene) const {
    restore(scene, m_after);
}

void SkinWeightChange::capture(SkinWeights& into) const {
    const SkinWeights& weights = m_cluster->skinCluster()->weights();
    into = SkinWeights(static_cast<unsigned>(m_vertices.size()));
    for (unsigned n = 0; n < m_vertices.size(); ++n) {
        unsigned vertex = static_cast<unsigned>(m_vertices[n]);
        into.assign(n, weights.influences(vertex), weights.weights(vertex),
                    weights.entryCount(vertex));
    }
}

void SkinWeightChange::restore(Scene& scene, const SkinWeights& from) const {
    SkinWeights& weights = m_cluster->skinCluster()->weights();
    for (unsigned n = 0; n < m_vertices.size(); ++n) {
        unsigned vertex = static_cast<unsigned>(m_vertices[n]);
        assert(vertex < weights.vertexCount());
        weights.assign(vertex, from.influences(n), from.weights(n), from.entryCount(n));
    }
    scene.notify({SceneChange::kWeightsChanged, {m_cluster}, Plug()});
}

} // namespace runtime
