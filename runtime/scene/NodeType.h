// NodeType: what every node of one type shares: its type name, its HFn kind, whether it
// belongs to the DAG (and is a shape), its static attributes, and the data a node of the type
// carries besides attribute values (a mesh's geometry, a skin cluster's weights).
//
// Types are immutable once built and shared by their nodes. Abstract types ("dagNode",
// "shape") exist only to be inherited from: their attributes come first in every derived
// type. The built-in types are made by builtInNodeTypes() (NodeTypes.cpp).
#pragma once

#include "HFn.h"
#include "scene/AttributeDef.h"

#include <memory>
#include <string>
#include <unordered_map>
#include <unordered_set>
#include <vector>

namespace runtime {

// Data a node carries besides its attribute values.
class NodePayload {
public:
    virtual ~NodePayload();
};

class NodeType {
public:
    using PayloadFactory = std::unique_ptr<NodePayload> (*)();

    struct Traits {
        bool dag = false;
        bool shape = false;
        bool abstract = false;
    };

    NodeType(std::string name, HFn::Type apiType, const NodeType* base, Traits traits,
             std::vector<AttributePtr> attributes, PayloadFactory payload = nullptr);

    const std::string& name() const { return m_name; }
    HFn::Type apiType() const { return m_apiType; }
    bool isDag() const { return m_traits.dag; }
    bool isShape() const { return m_traits.shape; }
    bool isAbstract() const { return m_traits.abstract; }

    // Top-level attributes, inherited ones first.
    const std::vector<AttributePtr>& attributes() const { return m_attributes; }
    // Any attribute of the type, top-level or child, by long or short name.
    const AttributeDef* findAttribute(const std::string& name) const;
    // Whether def is one of this type's attributes (at any depth).
    bool owns(const AttributeDef* def) const;

    std::unique_ptr<NodePayload> makePayload() const;

private:
    std::string m_name;
    HFn::Type m_apiType;
    Traits m_traits;
    std::vector<AttributePtr> m_attributes;
    std::unordered_map<std::string, const AttributeDef*> m_byName;
    std::unordered_set<const AttributeDef*> m_roots;
    PayloadFactory m_payload;
};

using NodeTypePtr = std::shared_ptr<const NodeType>;

// The node types of the host, abstract ones included, bases before derived types.
std::vector<NodeTypePtr> builtInNodeTypes();

} // namespace runtime
