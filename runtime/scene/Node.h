// Node: one node of the dependency graph: its type, its name, its attribute values (static
// attributes of its type and dynamic ones added to it), its connections, its place in the
// DAG when it is a DAG node, and the data of its type (mesh geometry, skin weights).
//
// Nodes are owned by the Scene and shared with every handle (HObject, HDagPath, Plug) to
// them. Everything that changes a node goes through the Scene, which keeps names unique,
// notifies listeners and makes the change reversible; a Node only answers questions. A node
// that was deleted stays intact in memory while a handle or an undo record holds it: isAlive()
// is false and its handles read as null until the Scene restores it.
#pragma once

#include "api/HObjectData.h"
#include "scene/AttributeDef.h"
#include "scene/NodeType.h"
#include "scene/Plug.h"
#include "scene/ValueTree.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

namespace runtime {

class MeshData;
class SkinClusterData;

// A connection from a source plug to a destination plug; a destination has one source.
struct Connection {
    Plug source;
    Plug destination;
};
using ConnectionPtr = std::shared_ptr<const Connection>;

class Node : public HObjectData, public std::enable_shared_from_this<Node> {
public:
    Node(NodeTypePtr type, std::string name, std::uint64_t serial);
    ~Node() override;

    HFn::Type apiType() const override;
    bool isAlive() const override { return m_alive; }

    const NodeType& type() const { return *m_type; }
    const std::string& typeName() const { return m_type->name(); }
    bool isDag() const { return m_type->isDag(); }
    bool isShape() const { return m_type->isShape(); }
    bool hasFn(HFn::Type fn) const;
    const std::string& name() const { return m_name; }
    // Creation order; file writers list nodes by it.
    std::uint64_t serial() const { return m_serial; }

    // DAG: the parent is null for nodes directly under the world (and for non-DAG nodes).
    Node* parent() const { return m_parent; }
    const std::vector<NodePtr>& children() const { return m_children; }
    // "|root|child|shape"; the plain name for a non-DAG node.
    std::string fullPathName() const;
    // Nodes on the path from the world down to this one (this one last).
    std::vector<const Node*> pathFromWorld() const;
    bool isDescendantOf(const Node& ancestor) const;

    // Attributes: by long or short name, top-level or child, static or dynamic.
    const AttributeDef* findAttribute(const std::string& name) const;
    // The plug of the named attribute; null when the node has no such attribute.
    Plug plug(const std::string& attributeName) const;
    Plug plug(const AttributeDef* attribute) const;
    // Top-level attributes: the type's, then the dynamic ones in the order they were added.
    std::vector<const AttributeDef*> attributes() const;
    const std::vector<AttributePtr>& dynamicAttributes() const { return m_dynamic; }
    bool hasAttribute(const AttributeDef* attribute) const;
    bool isDynamic(const AttributeDef* attribute) const;

    // The stored values of a top-level attribute (null when nothing was stored).
    const ValueTree* storedValues(const AttributeDef* topLevel) const;
    // Visits every value that was stored on the node, with its resolved plug, attributes in
    // the order of attributes(), elements ascending.
    void forEachStoredValue(const std::function<void(const Plug&, const Value&)>& visit) const;

    // Connections of which this node holds the source or the destination.
    const std::vector<ConnectionPtr>& connections() const { return m_connections; }

    // Type data; null for the other types.
    MeshData* mesh() const;
    SkinClusterData* skinCluster() const;

private:
    friend class Scene;
    friend class Plug;

    ValueTree& storedValuesForWrite(const AttributeDef* topLevel);

    NodeTypePtr m_type;
    std::string m_name;
    std::uint64_t m_serial;
    bool m_alive = true;
    Node* m_parent = nullptr;
    std::vector<NodePtr> m_children;
    std::vector<AttributePtr> m_dynamic;
    std::unordered_map<std::string, const AttributeDef*> m_dynamicByName;
    std::unordered_map<const AttributeDef*, ValueTree> m_values;
    std::vector<ConnectionPtr> m_connections;
    std::unique_ptr<NodePayload> m_payload;
};

} // namespace runtime
