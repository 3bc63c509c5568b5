// SkinLocks: the parts of a skin cluster's weights that edits must leave alone: influences
// whose joint has lockInfluenceWeights on, and vertices whose lockVertex element is on.
//
// Both are read from the scene when asked, without changing it. A VertexLocks reads the
// cluster's stored lockVertex values and must not outlive a change of them (it is meant for
// the length of one edit); reading it from several threads at once is safe.
#pragma once

#include <vector>

namespace runtime {

class Node;
class SkinClusterData;
class ValueTree;

// One entry per influence: 1 where the influence's joint is locked, 0 elsewhere.
std::vector<char> influenceLocks(const SkinClusterData& data);

class VertexLocks {
public:
    explicit VertexLocks(const Node& cluster);
    bool locked(unsigned vertex) const;

private:
    const ValueTree* m_locks = nullptr;
};

} // namespace runtime
