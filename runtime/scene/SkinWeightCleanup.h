// SkinWeightCleanup: the edits that tidy a vertex's weights without a new value for any
// influence: normalising, pruning small weights and limiting the number of influences. Each
// leaves locked influences (lockInfluenceWeights) at their weights and works on the unlocked
// rest: "normalised" means the unlocked weights are scaled so that the vertex sums to 1.
//
// The entry functions work on one vertex's non-zero weights and are pure; the cluster
// functions apply them to a list of vertices (null: every vertex), leave vertices with their
// lockVertex element on unchanged, keep every vertex they change in the record first (when
// one is given), and notify the scene once. They fail, changing nothing, for a node that is
// not a live skin cluster or a vertex out of range.
#pragma once

#include "HStatus.h"

#include <vector>

namespace runtime {

class Node;
class Scene;
class SkinWeights;
class VertexWeightRecord;

struct WeightEntry {
    unsigned influence;
    double weight;
};
using VertexEntries = std::vector<WeightEntry>;

// Whether the vertex holds exactly these weights; entries sorted by influence.
bool holdsEntries(const SkinWeights& weights, unsigned vertex, const VertexEntries& entries);
// The vertex's non-zero weights, sorted by influence, in place of what entries held.
void readEntries(const SkinWeights& weights, unsigned vertex, VertexEntries& entries);
// Makes the entries the vertex's weights: influences listed once each, zeros dropped.
void storeEntries(SkinWeights& weights, unsigned vertex, const VertexEntries& entries);

// locks: one entry per influence, non-zero where locked (influenceLocks()).
// False, changing nothing, when the unlocked influences hold no weight but the locked ones
// leave room; otherwise the unlocked weights are scaled to 1 minus the locked sum (none when
// that is not positive) and zero weights are dropped.
bool normaliseUnlocked(VertexEntries& entries, const std::vector<char>& locks);
// Keeps the locked weights and the largest unlocked ones (ties to the lower influence index),
// `limit` weights in all but at least one unlocked weight when there was one, then normalises.
// A vertex with `limit` weights or fewer is left as it is.
void limitInfluences(VertexEntries& entries, const std::vector<char>& locks, unsigned limit);

HStatus normalizeVertexWeights(Scene& scene, Node& cluster, const std::vector<int>* vertices,
                               VertexWeightRecord* record);
// Removes unlocked weights below threshold, then normalises when `normalise` is on. A vertex
// whose unlocked weights would all go is left as it is.
HStatus pruneVertexWeights(Scene& scene, Node& cluster, const std::vector<int>* vertices,
                           double threshold, bool normalise, VertexWeightRecord* record);

} // namespace runtime
