#include "scene/SkinLocks.h"

#include "scene/Node.h"
#include "scene/NodeValues.h"
#include "scene/SkinClusterData.h"
#include "scene/ValueTree.h"

namespace runtime {

std::vector<char> influenceLocks(const SkinClusterData& data) {
    std::vector<char> locks(data.influenceCount(), 0);
    for (unsigned i = 0; i < data.influenceCount(); ++i)
        locks[i] = storedBool(*data.influences()[i], "lockInfluenceWeights") ? 1 : 0;
    return locks;
}

VertexLocks::VertexLocks(const Node& cluster)
    : m_locks(cluster.storedValues(cluster.findAttribute("lockVertex"))) {}

bool VertexLocks::locked(unsigned vertex) const {
    if (!m_locks)
        return false;
    const ValueTree* element = m_locks->findElement(vertex);
    const bool* locked = element ? std::get_if<bool>(&element->value()) : nullptr;
    return locked && *locked;
}

} // namespace runtime
