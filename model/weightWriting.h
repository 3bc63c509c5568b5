// weightWriting: the steps every weight write of the editor shares, for the model and for the
// commands: single-vertex and whole-shape components, the normalisation guard and the
// temporary influence locks around a write, and the chunked reading of a shape's weights.
//
// The guards are scoped: construct them in the order "locks, then normalisation" before the
// write, and they undo themselves in the reverse order when they go out of scope. Host calls
// made here are not checked; a failed write shows in the status of the write itself.
#pragma once

#include "HDagPath.h"
#include "HIntArray.h"
#include "HObject.h"
#include "HString.h"

#include <QList>
#include <functional>

namespace weightWriting {

// A new mesh-vertex component holding one vertex.
HObject singleVertexComponent(int vertex);
// Every vertex of the shape in the vertex iterator's order when `stored` is null; otherwise
// `stored` itself.
HObject wholeShapeComponent(const HDagPath& shape, const HObject& stored);

// Raises the skin cluster's "normalizeWeights" from 0 to 1 for the life of the guard; any other
// value is left alone.
class NormalisationGuard {
public:
    explicit NormalisationGuard(const HObject& skinCluster);
    ~NormalisationGuard();
    NormalisationGuard(const NormalisationGuard&) = delete;
    NormalisationGuard& operator=(const NormalisationGuard&) = delete;

private:
    HObject cluster;
    bool raised = false;
};

// Switches ".lockInfluenceWeights" on for each named influence that is not locked yet, for the
// life of the guard, with "setAttr" commands run with display off and undo as asked; influences
// locked before keep their lock.
class InfluenceLockGuard {
public:
    InfluenceLockGuard(const QList<HString>& influences, bool undoEnabled);
    ~InfluenceLockGuard();
    InfluenceLockGuard(const InfluenceLockGuard&) = delete;
    InfluenceLockGuard& operator=(const InfluenceLockGuard&) = delete;

private:
    void setLocks(const char* value) const;

    QList<HString> names;
    bool undo;
};

// Whether the influence's ".lockInfluenceWeights" is on in the host (false for a deleted one).
bool influenceLockedInHost(const HDagPath& influence);

// Reads the weights of `vertices` of the shape (every vertex in index order when null) from the
// skin cluster in slices, so that a large mesh never needs one array of all its weights. `visit`
// gets each vertex's position in `vertices` and its weights in influence order (`count` of them).
// False when a read failed.
using VertexWeightVisitor =
    std::function<void(int position, const double* weights, unsigned count)>;
bool readVertexWeights(const HObject& skinCluster, const HDagPath& shape, const HObject& vertices,
                       const VertexWeightVisitor& visit);
// The same for the listed vertices, which must be distinct; `position` is in the list.
bool readVertexWeights(const HObject& skinCluster, const HDagPath& shape, const HIntArray& vertices,
                       const VertexWeightVisitor& visit);

} // namespace weightWriting
