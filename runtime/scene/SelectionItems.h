// SelectionItems: the rules of selection lists (HSelectionList, the active selection, the
// hilite list), and the reading of selection strings.
//
// An item is a DAG path with an optional component, or a dependency node. Adding a component
// of a shape that already has a component item of the same kind merges the new elements into
// it (in the order added); adding an item that is already there changes nothing. Components
// are never changed in place: a merge puts a new component object into the item, so a
// component a caller still holds keeps its elements.
//
// itemsFromText() reads a node name, a full or partial path, a pattern with '*' and '?'
// (allowPatterns), or a component string ("body.vtx[3]", "body.vtx[2:5]",
// "bodyShape.vtx[*]", "body.e[4]", "body.f[0:3]"); a component string names the mesh shape,
// reached from a transform with one mesh shape. Unknown names, ambiguous names, malformed
// component strings and indices beyond the mesh fail with kInvalidParameter and the message.
#pragma once

#include "HStatus.h"
#include "api/HApiAccess.h"

#include <string>
#include <vector>

namespace runtime {

class Scene;

using SelectionItem = HApiAccess::SelectionItem;
using SelectionItems = std::vector<SelectionItem>;

SelectionItem itemForNode(const NodePtr& node);
SelectionItem itemForComponent(const NodePtr& shape,
                               const std::shared_ptr<ComponentData>& component);
// The item's node (the shape for a component item); null when it is gone.
NodePtr itemNode(const SelectionItem& item);
std::shared_ptr<ComponentData> itemComponent(const SelectionItem& item);

void addItem(SelectionItems& items, const SelectionItem& item);
// Takes the item out: a whole object leaves the list; components leave their shape's item
// (which goes when it has no elements left).
void removeItem(SelectionItems& items, const SelectionItem& item);
// Adds what is not in the list and removes what is.
void toggleItem(SelectionItems& items, const SelectionItem& item);
// Drops items whose node is gone; returns whether any was dropped.
bool dropDeadItems(SelectionItems& items);
// The same items in the same order, components with the same elements in the same order.
bool sameItems(const SelectionItems& a, const SelectionItems& b);
// The vertices of shape that the items name, each once, in the order first named: vertex
// components as they are, edges and polygons by their vertices. Whole objects name none.
std::vector<unsigned> verticesOn(const SelectionItems& items, const Node& shape);

HStatus itemsFromText(const Scene& scene, const std::string& text, bool allowPatterns,
                      SelectionItems& items);
// The items as itemsFromText reads them: "|root|joint1" for a whole object, and for a
// component one text per run of consecutive elements ("bodyShape.vtx[3:5]"). With longNames
// off, objects are named by their shortest unique path ("joint1") as components always are.
std::vector<std::string> itemTexts(const Scene& scene, const SelectionItems& items,
                                   bool longNames = true);

} // namespace runtime
