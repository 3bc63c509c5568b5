#include "document/SkinLockAttributes.h"

#include "api/StatusReport.h"
#include "scene/Node.h"
#include "scene/Scene.h"

namespace runtime {

namespace {

const char* const kJointNames = "lockedJointNames";
const char* const kVertexIndices = "lockedVertexIndices";
const char* const kCellIndices = "lockedCellIndices";
const char* const kLocalJoints = "lockedLocalJoints";

bool sameKind(const AttributeDef& a, const AttributeDef& b) {
    if (a.kind() != b.kind() || a.valueType() != b.valueType() || a.isArray() != b.isArray() ||
        a.childCount() != b.childCount())
        return false;
    for (size_t i = 0; i < a.childCount(); ++i)
        if (a.child(i)->longName() != b.child(i)->longName() || !sameKind(*a.child(i), *b.child(i)))
            return false;
    return true;
}

// The node's attribute of that name when it is of the editor's kind; null otherwise.
const AttributeDef* lockAttribute(const Node& cluster, const char* name, AttributePtr (*make)()) {
    const AttributeDef* def = cluster.findAttribute(name);
    return def && def->parentInTree() == nullptr && sameKind(*def, *make()) ? def : nullptr;
}

HStatus ensureAttribute(Scene& scene, Node& cluster, const char* name, AttributePtr (*make)(),
                        const AttributeDef*& def) {
    if (!cluster.findAttribute(name)) {
        HStatus added = scene.addAttribute(cluster, make());
        if (!added)
            return added;
    }
    def = lockAttribute(cluster, name, make);
    return def ? HStatus(HS::kSuccess)
               : invalidParameter(cluster.name() + "." + name + " is not a lock attribute.");
}

std::vector<std::string> storedStrings(const Plug& plug) {
    Value value;
    if (plug.read(value) && std::holds_alternative<StringList>(value))
        return std::get<StringList>(value);
    return {};
}

// The strings of the cell locks of one vertex, in element order.
std::vector<std::string> cellJoints(const NodePtr& cluster, const AttributeDef& localJoints,
                                    unsigned vertex) {
    std::vector<std::string> joints;
    Plug list(cluster, &localJoints, {static_cast<int>(vertex), Plug::kOpen});
    for (unsigned index : list.elementIndices()) {
        Value value;
        if (list.element(index).read(value) && std::holds_alternative<std::string>(value))
            joints.push_back(std::get<std::string>(value));
    }
    return joints;
}

} // namespace

AttributePtr lockedJointNamesAttribute() {
    return AttributeDef::typed(kJointNames, kJointNames, ValueType::kStringArray);
}

AttributePtr lockedVertexIndicesAttribute() {
    AttributePtr def = AttributeDef::numeric(kVertexIndices, kVertexIndices, ValueType::kBool, 0.0);
    def->setArray(true);
    return def;
}

AttributePtr lockedCellIndicesAttribute() {
    AttributePtr joints = AttributeDef::typed(kLocalJoints, kLocalJoints, ValueType::kString);
    joints->setArray(true);
    AttributePtr cells = AttributeDef::compound(kCellIndices, kCellIndices);
    cells->addChild(joints);
    cells->setArray(true);
    return cells;
}

HStatus writeSkinLocks(Scene& scene, Node& cluster, const SkinLocks& locks) {
    const AttributeDef* jointNames = nullptr;
    const AttributeDef* vertexIndices = nullptr;
    const AttributeDef* cellIndices = nullptr;
    HStatus status =
        ensureAttribute(scene, cluster, kJointNames, lockedJointNamesAttribute, jointNames);
    if (status)
        status = ensureAttribute(scene, cluster, kVertexIndices, lockedVertexIndicesAttribute,
                                 vertexIndices);
    if (status)
        status =
            ensureAttribute(scene, cluster, kCellIndices, lockedCellIndicesAttribute, cellIndices);
    NodePtr node = cluster.shared_from_this();
    if (status && !locks.lockedJointNames.empty())
        status = scene.setValue(Plug(node, jointNames), locks.lockedJointNames);
    for (size_t i = 0; status && i < locks.lockedVertices.size(); ++i)
        status = scene.setValue(Plug(node, vertexIndices).element(locks.lockedVertices[i]), true);
    const AttributeDef* localJoints = status ? cellIndices->child(0) : nullptr;
    for (const CellLocks& cell : locks.lockedCells)
        for (size_t i = 0; status && i < cell.joints.size(); ++i)
            status = scene.setValue(Plug(node, localJoints, {cell.vertex, static_cast<int>(i)}),
                                    cell.joints[i]);
    return status;
}

SkinLocks readSkinLocks(const Node& cluster) {
    SkinLocks locks;
    NodePtr node = std::const_pointer_cast<Node>(cluster.shared_from_this());
    if (const AttributeDef* def = lockAttribute(cluster, kJointNames, lockedJointNamesAttribute))
        locks.lockedJointNames = storedStrings(Plug(node, def));
    if (const AttributeDef* def =
            lockAttribute(cluster, kVertexIndices, lockedVertexIndicesAttribute)) {
        Plug vertices(node, def);
        for (unsigned v : vertices.elementIndices()) {
            Value value;
            if (vertices.element(v).read(value) && value == Value(true))
                locks.lockedVertices.push_back(static_cast<int>(v));
        }
    }
    if (const AttributeDef* def =
            lockAttribute(cluster, kCellIndices, lockedCellIndicesAttribute)) {
        for (unsigned v : Plug(node, def).elementIndices()) {
            std::vector<std::string> joints = cellJoints(node, *def->child(0), v);
            if (!joints.empty())
                locks.lockedCells.push_back({static_cast<int>(v), std::move(joints)});
        }
    }
    return locks;
}

HStatus renameLockedPaths(Scene& scene, Node& cluster,
                          const std::map<std::string, std::string>& renamed) {
    auto rename = [&](std::string& name) {
        auto found = renamed.find(name);
        if (found == renamed.end())
            return false;
        name = found->second;
        return true;
    };
    NodePtr node = cluster.shared_from_this();
    HStatus status;
    if (const AttributeDef* def = lockAttribute(cluster, kJointNames, lockedJointNamesAttribute)) {
        std::vector<std::string> names = storedStrings(Plug(node, def));
        bool changed = false;
        for (std::string& name : names)
            changed = rename(name) || changed;
        if (changed)
            status = scene.setValue(Plug(node, def), names);
    }
    const AttributeDef* cells = lockAttribute(cluster, kCellIndices, lockedCellIndicesAttribute);
    if (!cells)
        return status;
    for (unsigned v : Plug(node, cells).elementIndices()) {
        Plug list(node, cells->child(0), {static_cast<int>(v), Plug::kOpen});
        for (unsigned index : list.elementIndices()) {
            Value value;
            if (!status || !list.element(index).read(value) ||
                !std::holds_alternative<std::string>(value))
                continue;
            std::string name = std::get<std::string>(value);
            if (rename(name))
                status = scene.setValue(list.element(index), name);
        }
    }
    return status;
}

} // namespace runtime
