// The shared steps of weight writes and reads; see weightWriting.h.
#include "weightWriting.h"

#include "HDoubleArray.h"
#include "HFnDependencyNode.h"
#include "HFnSingleIndexedComponent.h"
#include "HFnSkinCluster.h"
#include "HGlobal.h"
#include "HIntArray.h"
#include "HItMeshVertex.h"
#include "HPlug.h"

namespace weightWriting {

namespace {

// Vertices per read: large enough to keep the calls few, small enough to stay in the cache.
constexpr unsigned kSliceVertices = 1024;

} // namespace

HObject singleVertexComponent(int vertex) {
    HFnSingleIndexedComponent single;
    HObject component = single.create(HFn::kMeshVertComponent);
    single.addElement(vertex);
    return component;
}

HObject wholeShapeComponent(const HDagPath& shape, const HObject& stored) {
    if (!stored.isNull())
        return stored;
    HIntArray indices;
    for (HItMeshVertex it(shape); !it.isDone(); it.next())
        indices.append(it.index());
    HFnSingleIndexedComponent vertices;
    HObject component = vertices.create(HFn::kMeshVertComponent);
    vertices.addElements(indices);
    return component;
}

NormalisationGuard::NormalisationGuard(const HObject& skinCluster) : cluster(skinCluster) {
    HPlug plug = HFnDependencyNode(cluster).findPlug("normalizeWeights", true);
    int mode = -1;
    plug.getValue(mode);
    if (mode == 0) {
        plug.setInt(1);
        raised = true;
    }
}

NormalisationGuard::~NormalisationGuard() {
    if (raised)
        HFnDependencyNode(cluster).findPlug("normalizeWeights", true).setInt(0);
}

InfluenceLockGuard::InfluenceLockGuard(const QList<HString>& influences, bool undoEnabled)
    : undo(undoEnabled) {
    // An influence locked already (a locked column) stays out: switching it off afterwards
    // would release a lock the user set.
    for (const HString& name : influences) {
        int locked = 0;
        HGlobal::executeCommand(HString("getAttr ") + name + ".lockInfluenceWeights", locked, false,
                                false);
        if (locked == 0 && !names.contains(name))
            names.append(name);
    }
    setLocks(" 1");
}

InfluenceLockGuard::~InfluenceLockGuard() {
    setLocks(" 0");
}

void InfluenceLockGuard::setLocks(const char* value) const {
    for (const HString& name : names)
        HGlobal::executeCommand(HString("setAttr ") + name + ".lockInfluenceWeights" + value, false,
                                undo);
}

bool influenceLockedInHost(const HDagPath& influence) {
    const HObject node = influence.node();
    return !node.isNull() &&
           HFnDependencyNode(node).findPlug("lockInfluenceWeights", true).asInt() != 0;
}

bool readVertexWeights(const HObject& skinCluster, const HDagPath& shape, const HObject& vertices,
                       const VertexWeightVisitor& visit) {
    HIntArray indices;
    if (vertices.isNull()) {
        // Every vertex, in index order, which is the vertex iterator's order.
        const int count = HItMeshVertex(shape).count();
        indices.setLength(static_cast<unsigned>(std::max(count, 0)));
        for (int i = 0; i < count; ++i)
            indices[static_cast<unsigned>(i)] = i;
    } else {
        HFnSingleIndexedComponent(vertices).getElements(indices);
    }
    return readVertexWeights(skinCluster, shape, indices, visit);
}

bool readVertexWeights(const HObject& skinCluster, const HDagPath& shape, const HIntArray& indices,
                       const VertexWeightVisitor& visit) {
    HFnSkinCluster cluster(skinCluster);
    HDoubleArray weights;
    const unsigned total = indices.length();
    for (unsigned first = 0; first < total; first += kSliceVertices) {
        const unsigned end = std::min(total, first + kSliceVertices);
        HIntArray slice;
        slice.setLength(end - first);
        for (unsigned i = first; i < end; ++i)
            slice[i - first] = indices[i];
        HFnSingleIndexedComponent part;
        HObject component = part.create(HFn::kMeshVertComponent);
        part.addElements(slice);
        unsigned count = 0;
        weights.clear();
        if (!cluster.getWeights(shape, component, weights, count))
            return false;
        if (weights.length() < static_cast<size_t>(end - first) * count)
            return false;
        const double* all = weights.length() != 0 ? &weights[0] : nullptr;
        for (unsigned i = first; i < end; ++i)
            visit(static_cast<int>(i), all + static_cast<size_t>(i - first) * count, count);
    }
    return true;
}

} // namespace weightWriting
