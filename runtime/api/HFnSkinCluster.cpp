#include "HFnSkinCluster.h"

#include "api/HApiAccess.h"
#include "api/StatusReport.h"
#include "scene/Scene.h"
#include "scene/SkinClusterData.h"
#include "scene/SkinLinks.h"
#include "scene/SkinWeightAccess.h"

using runtime::NodePtr;
using runtime::report;

namespace {

// What every weight call needs: the live cluster and the component's vertices (null: all).
struct WeightTarget {
    NodePtr cluster;
    const std::vector<int>* vertices = nullptr;
    std::shared_ptr<runtime::ComponentData> component;
};

HStatus openTarget(const HObject& clusterObject, const HDagPath& shape, const HObject& components,
                   WeightTarget& target) {
    target.cluster = HApiAccess::node(clusterObject);
    if (!target.cluster || !target.cluster->skinCluster())
        return runtime::invalidParameter("The function set has no live skin cluster.");
    NodePtr geometry = runtime::skinClusterGeometry(*target.cluster);
    if (!geometry || HApiAccess::node(shape) != geometry)
        return runtime::invalidParameter("The path is not the skin cluster's geometry.");
    if (!components.isNull()) {
        target.component = HApiAccess::as<runtime::ComponentData>(components);
        if (!target.component || target.component->apiType() != HFn::kMeshVertComponent)
            return runtime::invalidParameter("The component is not a mesh vertex component.");
        target.vertices = &target.component->elements();
    }
    return runtime::checkVertices(*target.cluster->skinCluster(), target.vertices);
}

void appendOld(const std::vector<double>& old, HDoubleArray* oldValues) {
    if (!oldValues)
        return;
    oldValues->reserve(oldValues->length() + static_cast<unsigned>(old.size()));
    for (double value : old)
        oldValues->append(value);
}

} // namespace

HFnSkinCluster::HFnSkinCluster() = default;

HFnSkinCluster::HFnSkinCluster(const HObject& node, HStatus* status) {
    report(status, setObject(node));
}

HFn::Type HFnSkinCluster::type() const {
    return HFn::kSkinClusterFilter;
}

HStatus HFnSkinCluster::setObject(const HObject& node) {
    return attach(node, HFn::kSkinClusterFilter);
}

unsigned HFnSkinCluster::influenceObjects(HDagPathArray& paths, HStatus* status) const {
    paths.clear();
    NodePtr cluster = HApiAccess::node(m_object);
    if (!cluster) {
        report(status, checkAttached());
        return 0;
    }
    for (const NodePtr& joint : cluster->skinCluster()->influences())
        paths.append(HApiAccess::path(joint));
    report(status, HS::kSuccess);
    return paths.length();
}

unsigned HFnSkinCluster::indexForInfluenceObject(const HDagPath& path, HStatus* status) const {
    NodePtr cluster = HApiAccess::node(m_object);
    NodePtr joint = HApiAccess::node(path);
    int index = cluster && joint ? cluster->skinCluster()->indexOf(joint.get()) : -1;
    report(status,
           index >= 0 ? HStatus() : runtime::invalidParameter("The path is not an influence."));
    return index >= 0 ? static_cast<unsigned>(index) : 0u;
}

HStatus HFnSkinCluster::getPathAtIndex(unsigned index, HDagPath& path) const {
    NodePtr cluster = HApiAccess::node(m_object);
    NodePtr geometry = cluster ? runtime::skinClusterGeometry(*cluster) : nullptr;
    path = HDagPath();
    if (!geometry || index != 0)
        return runtime::invalidParameter("The skin cluster has no geometry at this index.");
    path = HApiAccess::path(geometry);
    return HS::kSuccess;
}

unsigned HFnSkinCluster::numOutputConnections(HStatus* status) const {
    NodePtr cluster = HApiAccess::node(m_object);
    report(status, checkAttached());
    return cluster && runtime::skinClusterGeometry(*cluster) ? 1u : 0u;
}

HStatus HFnSkinCluster::getWeights(const HDagPath& shape, const HObject& components,
                                   HDoubleArray& weights, unsigned& influenceCount) const {
    WeightTarget target;
    HStatus status = openTarget(m_object, shape, components, target);
    if (!status)
        return status;
    const runtime::SkinClusterData& data = *target.cluster->skinCluster();
    influenceCount = data.influenceCount();
    size_t total =
        static_cast<size_t>(runtime::vertexListSize(data, target.vertices)) * influenceCount;
    // Cleared first so that every element starts at 0, as readWeights expects.
    weights.clear();
    weights.setLength(static_cast<unsigned>(total));
    if (total > 0)
        runtime::readWeights(data, target.vertices, &weights[0]);
    return HS::kSuccess;
}

HStatus HFnSkinCluster::getWeights(const HDagPath& shape, const HObject& components,
                                   unsigned influence, HDoubleArray& weights) const {
    WeightTarget target;
    HStatus status = openTarget(m_object, shape, components, target);
    if (!status)
        return status;
    const runtime::SkinClusterData& data = *target.cluster->skinCluster();
    if (influence >= data.influenceCount())
        return runtime::invalidParameter("Influence index out of range.");
    weights.setLength(runtime::vertexListSize(data, target.vertices));
    if (weights.length() > 0)
        runtime::readInfluenceWeights(data, target.vertices, influence, &weights[0]);
    return HS::kSuccess;
}

HStatus HFnSkinCluster::setWeights(const HDagPath& shape, const HObject& components,
                                   unsigned influence, double value, bool normalize,
                                   HDoubleArray* oldValues) {
    WeightTarget target;
    HStatus status = openTarget(m_object, shape, components, target);
    std::vector<double> old;
    if (status)
        status =
            runtime::writeWeights(runtime::scene(), *target.cluster, target.vertices, {influence},
                                  {value}, true, normalize, false, oldValues ? &old : nullptr);
    appendOld(old, oldValues);
    return status;
}

HStatus HFnSkinCluster::setWeights(const HDagPath& shape, const HObject& components,
                                   const HIntArray& influences, const HDoubleArray& values,
                                   bool normalize, HDoubleArray* oldValues) {
    WeightTarget target;
    HStatus status = openTarget(m_object, shape, components, target);
    std::vector<unsigned> indices;
    for (int influence : influences) {
        if (influence < 0)
            status = runtime::invalidParameter("Influence indices cannot be negative.");
        indices.push_back(static_cast<unsigned>(influence));
    }
    std::vector<double> old;
    if (status)
        status = runtime::writeWeights(runtime::scene(), *target.cluster, target.vertices, indices,
                                       std::vector<double>(values.begin(), values.end()), false,
                                       normalize, true, oldValues ? &old : nullptr);
    appendOld(old, oldValues);
    return status;
}
