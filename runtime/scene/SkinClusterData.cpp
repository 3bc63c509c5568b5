#include "scene/SkinClusterData.h"

#include "scene/Node.h"

#include <algorithm>
#include <set>

namespace runtime {

int SkinClusterData::indexOf(const Node* joint) const {
    for (size_t i = 0; i < m_influences.size(); ++i)
        if (m_influences[i].get() == joint)
            return static_cast<int>(i);
    return -1;
}

HStatus SkinClusterData::setInfluences(std::vector<NodePtr> influences,
                                       std::vector<Matrix> bindPreMatrices) {
    if (influences.size() != bindPreMatrices.size())
        return HStatus(HS::kInvalidParameter, "Each influence needs one bind matrix.");
    if (influences.size() > SkinWeights::kMaxInfluences)
        return HStatus(HS::kInvalidParameter, "A skin cluster takes at most 65535 influences.");
    std::set<const Node*> seen;
    for (const NodePtr& joint : influences) {
        if (!joint || !joint->hasFn(HFn::kTransform))
            return HStatus(HS::kInvalidParameter, "Influences must be joints or transforms.");
        if (!seen.insert(joint.get()).second)
            return HStatus(HS::kInvalidParameter,
                           "Influence " + joint->name() + " is listed twice.");
    }
    std::vector<HPoint> positions;
    for (const Matrix& bindPre : bindPreMatrices) {
        Matrix world;
        bindPre.inverse(world);
        positions.push_back(world.translationPart());
    }
    unsigned count = static_cast<unsigned>(influences.size());
    if (count < m_influences.size()) {
        std::vector<double> dense(m_influences.size());
        for (unsigned v = 0; v < m_weights.vertexCount(); ++v) {
            m_weights.readDense(v, dense.data(), influenceCount());
            m_weights.assignDense(v, dense.data(), count);
        }
    }
    m_influences = std::move(influences);
    m_bindPre = std::move(bindPreMatrices);
    m_bindPositions = std::move(positions);
    return HS::kSuccess;
}

} // namespace runtime
