// HFnDependencyNode: the operations every node of the dependency graph has: its unique name,
// its type name and its attributes (static ones of its type, dynamic ones added later).
//
// Attach it to any node. Looking up an attribute or plug that does not exist gives a null
// result and kInvalidParameter; adding an attribute whose long or short name is taken fails
// with kInvalidParameter and changes nothing.
#pragma once

#include "HFnBase.h"
#include "HPlug.h"
#include "HString.h"

class HFnDependencyNode : public HFnBase {
public:
    HFnDependencyNode();
    explicit HFnDependencyNode(const HObject& node, HStatus* status = nullptr);

    HFn::Type type() const override;
    HStatus setObject(const HObject& node) override;

    HString name(HStatus* status = nullptr) const;
    // Renames the node. Dependency nodes get a unique name (a number is appended when the
    // name is taken); DAG nodes need only be unique among their siblings. Returns the name
    // the node got.
    HString setName(const HString& name, HStatus* status = nullptr);
    HString typeName(HStatus* status = nullptr) const;

    // The plug of a top-level or child attribute, by long or short name. For a child of an
    // array compound, the ancestor's element is left open (see HPlug::selectAncestorLogicalIndex).
    HPlug findPlug(const HString& attributeName, bool wantNetworkedPlug = true,
                   HStatus* status = nullptr) const;
    HPlug findPlug(const HObject& attribute, bool wantNetworkedPlug = true,
                   HStatus* status = nullptr) const;
    // The attribute definition, by long or short name; null with kInvalidParameter if absent.
    HObject attribute(const HString& attributeName, HStatus* status = nullptr) const;
    bool hasAttribute(const HString& attributeName, HStatus* status = nullptr) const;
    unsigned attributeCount(HStatus* status = nullptr) const;
    HObject attribute(unsigned index, HStatus* status = nullptr) const;

    // Adds a dynamic attribute made with one of the attribute function sets. Children of a
    // compound come with it.
    HStatus addAttribute(const HObject& attribute);
    // Removes a dynamic attribute with its values and connections.
    HStatus removeAttribute(const HObject& attribute);
    bool isDynamicAttribute(const HObject& attribute, HStatus* status = nullptr) const;
};
