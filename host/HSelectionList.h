// HSelectionList: an ordered list of scene items: DAG paths with an optional component, and
// dependency nodes. The active selection and the hilite list are lists of this kind
// (HGlobal).
//
// A plain value. Adding a component of a shape that is already in the list merges its
// elements into that shape's item (in the order added), so a shape appears once; adding an
// item that is already there changes nothing. add(name) accepts a node name, a full or
// partial path, or a component string ("body.vtx[3]", "body.vtx[2:5]", "bodyShape.vtx[*]");
// an unknown name fails with kInvalidParameter and a name matching several nodes with
// kInvalidParameter and "More than one object matches name: NAME". A component string names
// the shape: "body.vtx[3]" gives the path of body's mesh shape with a vertex component.
#pragma once

#include "HDagPath.h"
#include "HObject.h"
#include "HStatus.h"
#include "HString.h"
#include "HStringArray.h"

#include <vector>

class HSelectionList {
public:
    HSelectionList();

    HStatus add(const HString& matchString);
    HStatus add(const HDagPath& path, const HObject& component = HObject::kNullObj);
    HStatus add(const HObject& node);
    // Appends every item of other, merging as add() does.
    HStatus merge(const HSelectionList& other);
    HStatus remove(unsigned index);
    HStatus clear();

    unsigned length(HStatus* status = nullptr) const;
    bool isEmpty(HStatus* status = nullptr) const;

    // The item's path and component (null for a whole object). Fails with kInvalidParameter
    // for an item that is a dependency node and not a DAG node.
    HStatus getDagPath(unsigned index, HDagPath& path, HObject& component) const;
    HStatus getDagPath(unsigned index, HDagPath& path) const;
    // The item's node (the shape for a component item).
    HStatus getDependNode(unsigned index, HObject& node) const;
    // Whether the list holds path (or node) as a whole object.
    bool hasItem(const HDagPath& path) const;
    bool hasItem(const HObject& node) const;
    // One text per item, as add(name) accepts them ("bodyShape.vtx[3:5]", "|root|joint1").
    HStatus getSelectionStrings(HStringArray& strings) const;

private:
    friend struct HApiAccess;
    struct Item {
        HDagPath path;
        HObject node;
        HObject component;
    };
    std::vector<Item> m_items;
};
