// The built-in node types and their static attributes.
#include "scene/MeshData.h"
#include "scene/NodeType.h"
#include "scene/SkinClusterData.h"

namespace runtime {

namespace {

AttributePtr boolean(const char* longName, const char* shortName, bool value = false) {
    return AttributeDef::numeric(longName, shortName, ValueType::kBool, value ? 1.0 : 0.0);
}

AttributePtr integer(const char* longName, const char* shortName, int value = 0) {
    return AttributeDef::numeric(longName, shortName, ValueType::kInt, value);
}

AttributePtr real(const char* longName, const char* shortName, double value = 0.0) {
    return AttributeDef::numeric(longName, shortName, ValueType::kDouble, value);
}

AttributePtr array(AttributePtr def) {
    def->setArray(true);
    return def;
}

// A compound of three doubles named NAME + X, Y, Z ("translate": translateX ... or tx ...).
AttributePtr triple(const std::string& longName, const std::string& shortName, double value) {
    return AttributeDef::compound(
        longName, shortName,
        {real((longName + "X").c_str(), (shortName + "x").c_str(), value),
         real((longName + "Y").c_str(), (shortName + "y").c_str(), value),
         real((longName + "Z").c_str(), (shortName + "z").c_str(), value)});
}

std::unique_ptr<NodePayload> makeMesh() {
    return std::make_unique<MeshData>();
}

std::unique_ptr<NodePayload> makeSkinCluster() {
    return std::make_unique<SkinClusterData>();
}

NodeTypePtr make(const char* name, HFn::Type kind, const NodeTypePtr& base, NodeType::Traits traits,
                 std::vector<AttributePtr> attributes, NodeType::PayloadFactory payload = nullptr) {
    return std::make_shared<NodeType>(name, kind, base.get(), traits, std::move(attributes),
                                      payload);
}

} // namespace

std::vector<NodeTypePtr> builtInNodeTypes() {
    NodeType::Traits abstractDepend{false, false, true};
    NodeType::Traits abstractDag{true, false, true};
    NodeType::Traits abstractShape{true, true, true};
    NodeType::Traits depend{false, false, false};
    NodeType::Traits dag{true, false, false};
    NodeType::Traits shape{true, true, false};

    NodeTypePtr dependNode = make("dependNode", HFn::kDependencyNode, nullptr, abstractDepend,
                                  {AttributeDef::message("message", "msg")});

    // instObjGroups[i].objectGroups[g] with children objectGrpCompList (0), objectGroupId
    // (1), objectGrpColor (2): how sets (and the skin clusters that use them) find the parts
    // of an instance they hold.
    AttributePtr objectGroups = array(AttributeDef::compound(
        "objectGroups", "og",
        {AttributeDef::typed("objectGrpCompList", "gcl", ValueType::kStringArray),
         integer("objectGroupId", "gid"), integer("objectGrpColor", "gco")}));
    NodeTypePtr dagNode =
        make("dagNode", HFn::kDagNode, dependNode, abstractDag,
             {boolean("visibility", "v", true),
              array(AttributeDef::compound("instObjGroups", "iog", {objectGroups}))});

    NodeTypePtr transform = make(
        "transform", HFn::kTransform, dagNode, dag,
        {triple("translate", "t", 0.0), triple("rotate", "r", 0.0), triple("scale", "s", 1.0)});
    NodeTypePtr joint = make("joint", HFn::kJoint, transform, dag,
                             {triple("jointOrient", "jo", 0.0),
                              boolean("lockInfluenceWeights", "liw"), integer("objectColor", "oc"),
                              boolean("useObjectColor", "uoc"), real("radius", "radi", 1.0)});

    NodeTypePtr shapeNode = make("shape", HFn::kShape, dagNode, abstractShape, {});
    NodeTypePtr mesh = make(
        "mesh", HFn::kMesh, shapeNode, shape,
        {AttributeDef::geometry("inMesh", "i"), AttributeDef::geometry("outMesh", "o")}, makeMesh);

    NodeTypePtr geometryFilter = make(
        "geometryFilter", HFn::kGeometryFilter, dependNode, abstractDepend,
        {array(AttributeDef::geometry("outputGeometry", "outg")), real("envelope", "en", 1.0)});
    NodeTypePtr skinCluster =
        make("skinCluster", HFn::kSkinClusterFilter, geometryFilter, depend,
             {integer("normalizeWeights", "nw", 1), integer("maxInfluences", "mi", 5),
              boolean("maintainMaxInfluences", "mmi"), array(boolean("lockVertex", "lv"))},
             makeSkinCluster);

    NodeTypePtr objectSet = make("objectSet", HFn::kSet, dependNode, depend,
                                 {array(AttributeDef::message("dagSetMembers", "dsm")),
                                  integer("memberWireframeColor", "mwc", -1),
                                  array(AttributeDef::message("usedBy", "ub")),
                                  array(AttributeDef::message("groupNodes", "gn"))});
    NodeTypePtr groupId =
        make("groupId", HFn::kGroupId, dependNode, depend, {integer("groupId", "id")});

    return {dependNode, dagNode,        transform,   joint,     shapeNode,
            mesh,       geometryFilter, skinCluster, objectSet, groupId};
}

} // namespace runtime
