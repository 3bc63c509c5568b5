// HFnSkinCluster: reads and writes the weights of a skin cluster, the deformer that moves
// each vertex of its geometry by a weighted blend of its influences (joints).
//
// Influences are ordered; a position in that order is an influence index. Weights are read
// and written per vertex component of the cluster's geometry (a null component means every
// vertex, in index order); arrays are vertex-major: the weight of influence k on the n-th
// component vertex is at n * influenceCount + k.
//
// setWeights, per vertex: `oldValues` (when given) receives the weights of all influences
// before the change, appended; a vertex whose lockVertex element is on is left unchanged; the
// written weights are clamped to [0, 1]. With normalize on and the cluster's normalizeWeights
// at 1, the remainder 1 - L - written is spread over the unlocked other influences in
// proportion to their weights (L: the weights of the other influences whose joint has
// lockInfluenceWeights on; a written weight larger than 1 - L is reduced to it). When the
// unlocked others hold nothing, the remainder goes to the unlocked other influence nearest to
// the vertex (bind pose, ties to the lower index), or back to the written influence when
// there is none. With normalize off, or normalizeWeights 0 or 2, values are stored as given.
// The array form writes the listed influences and spreads the remainder over the unlisted
// unlocked ones; when every influence is listed nothing else changes, so writing back what
// getWeights read restores it exactly.
//
// Failures: kInvalidParameter for a node that is not a skin cluster, a path that is not the
// cluster's geometry, an influence index out of range, a component of another kind, or value
// arrays of the wrong length. Nothing is written when a call fails.
#pragma once

#include "HDagPath.h"
#include "HDagPathArray.h"
#include "HDoubleArray.h"
#include "HFnDependencyNode.h"
#include "HIntArray.h"

class HFnSkinCluster : public HFnDependencyNode {
public:
    HFnSkinCluster();
    explicit HFnSkinCluster(const HObject& node, HStatus* status = nullptr);

    HFn::Type type() const override;
    HStatus setObject(const HObject& node) override;

    // Paths of the influences in influence order; returns their count.
    unsigned influenceObjects(HDagPathArray& paths, HStatus* status = nullptr) const;
    // The influence index of path, or fails with kInvalidParameter.
    unsigned indexForInfluenceObject(const HDagPath& path, HStatus* status = nullptr) const;
    // Path of the geometry (mesh shape) the cluster deforms.
    HStatus getPathAtIndex(unsigned index, HDagPath& path) const;
    unsigned numOutputConnections(HStatus* status = nullptr) const;

    HStatus getWeights(const HDagPath& shape, const HObject& components, HDoubleArray& weights,
                       unsigned& influenceCount) const;
    HStatus getWeights(const HDagPath& shape, const HObject& components, unsigned influence,
                       HDoubleArray& weights) const;

    HStatus setWeights(const HDagPath& shape, const HObject& components, unsigned influence,
                       double value, bool normalize = true, HDoubleArray* oldValues = nullptr);
    HStatus setWeights(const HDagPath& shape, const HObject& components,
                       const HIntArray& influences, const HDoubleArray& values,
                       bool normalize = true, HDoubleArray* oldValues = nullptr);
};
