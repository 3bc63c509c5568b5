#include "api/HObjectData.h"

namespace runtime {

namespace {

struct KindInfo {
    HFn::Type type;
    HFn::Type parent;
    const char* name;
};

// Every kind with its more general kind; kBase is the top.
const KindInfo kKinds[] = {
    {HFn::kBase, HFn::kInvalid, "kBase"},
    {HFn::kNamedObject, HFn::kBase, "kNamedObject"},
    {HFn::kDependencyNode, HFn::kNamedObject, "kDependencyNode"},
    {HFn::kDagNode, HFn::kDependencyNode, "kDagNode"},
    {HFn::kTransform, HFn::kDagNode, "kTransform"},
    {HFn::kJoint, HFn::kTransform, "kJoint"},
    {HFn::kShape, HFn::kDagNode, "kShape"},
    {HFn::kMesh, HFn::kShape, "kMesh"},
    {HFn::kGroupId, HFn::kDependencyNode, "kGroupId"},
    {HFn::kSet, HFn::kDependencyNode, "kSet"},
    {HFn::kGeometryFilter, HFn::kDependencyNode, "kGeometryFilter"},
    {HFn::kSkinClusterFilter, HFn::kGeometryFilter, "kSkinClusterFilter"},
    {HFn::kComponent, HFn::kBase, "kComponent"},
    {HFn::kSingleIndexedComponent, HFn::kComponent, "kSingleIndexedComponent"},
    {HFn::kMeshEdgeComponent, HFn::kSingleIndexedComponent, "kMeshEdgeComponent"},
    {HFn::kMeshPolygonComponent, HFn::kSingleIndexedComponent, "kMeshPolygonComponent"},
    {HFn::kMeshVertComponent, HFn::kSingleIndexedComponent, "kMeshVertComponent"},
    {HFn::kAttribute, HFn::kBase, "kAttribute"},
    {HFn::kNumericAttribute, HFn::kAttribute, "kNumericAttribute"},
    {HFn::kTypedAttribute, HFn::kAttribute, "kTypedAttribute"},
    {HFn::kCompoundAttribute, HFn::kAttribute, "kCompoundAttribute"},
    {HFn::kMessageAttribute, HFn::kAttribute, "kMessageAttribute"},
    {HFn::kData, HFn::kBase, "kData"},
    {HFn::kStringData, HFn::kData, "kStringData"},
    {HFn::kStringArrayData, HFn::kData, "kStringArrayData"},
    {HFn::kPlugin, HFn::kBase, "kPlugin"},
};

const KindInfo* find(HFn::Type type) {
    for (const KindInfo& kind : kKinds)
        if (kind.type == type)
            return &kind;
    return nullptr;
}

} // namespace

bool fnTypeIncludes(HFn::Type type, HFn::Type fn) {
    for (const KindInfo* kind = find(type); kind; kind = find(kind->parent))
        if (kind->type == fn)
            return true;
    return false;
}

const char* fnTypeName(HFn::Type type) {
    const KindInfo* kind = find(type);
    return kind ? kind->name : "kInvalid";
}

} // namespace runtime

HObjectData::~HObjectData() = default;
