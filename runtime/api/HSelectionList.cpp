#include "HSelectionList.h"

#include "api/HApiAccess.h"
#include "api/StatusReport.h"
#include "core/HostContext.h"
#include "scene/Scene.h"
#include "scene/SelectionItems.h"
#include "scene/SkinBinding.h"

using runtime::report;

namespace {

HStatus noItem() {
    return runtime::invalidParameter("No item at this index.");
}

} // namespace

HSelectionList::HSelectionList() = default;

HStatus HSelectionList::add(const HString& matchString) {
    if (!runtime::hostRunning())
        return HStatus(HS::kFailure, "The host is not running.");
    return runtime::itemsFromText(runtime::scene(), matchString.str(), false, m_items);
}

HStatus HSelectionList::add(const HDagPath& path, const HObject& component) {
    runtime::NodePtr node = HApiAccess::node(path);
    if (!node)
        return runtime::invalidParameter("The path is not valid.");
    if (component.isNull()) {
        runtime::addItem(m_items, runtime::itemForNode(node));
        return HS::kSuccess;
    }
    std::shared_ptr<runtime::ComponentData> elements =
        HApiAccess::as<runtime::ComponentData>(component);
    runtime::NodePtr shape = node->isShape() ? node : runtime::meshShapeOf(*node);
    if (!elements || !shape)
        return runtime::invalidParameter("The component does not belong to a shape of the path.");
    runtime::addItem(m_items, runtime::itemForComponent(shape, elements));
    return HS::kSuccess;
}

HStatus HSelectionList::add(const HObject& node) {
    runtime::NodePtr live = HApiAccess::node(node);
    if (!live)
        return runtime::invalidParameter("The object is not a live node.");
    runtime::addItem(m_items, runtime::itemForNode(live));
    return HS::kSuccess;
}

HStatus HSelectionList::merge(const HSelectionList& other) {
    const std::vector<Item> items = other.m_items;
    for (const Item& item : items)
        runtime::addItem(m_items, item);
    return HS::kSuccess;
}

HStatus HSelectionList::remove(unsigned index) {
    if (index >= m_items.size())
        return noItem();
    m_items.erase(m_items.begin() + index);
    return HS::kSuccess;
}

HStatus HSelectionList::clear() {
    m_items.clear();
    return HS::kSuccess;
}

unsigned HSelectionList::length(HStatus* status) const {
    report(status, HS::kSuccess);
    return static_cast<unsigned>(m_items.size());
}

bool HSelectionList::isEmpty(HStatus* status) const {
    report(status, HS::kSuccess);
    return m_items.empty();
}

HStatus HSelectionList::getDagPath(unsigned index, HDagPath& path, HObject& component) const {
    path = HDagPath();
    component = HObject();
    if (index >= m_items.size())
        return noItem();
    if (!m_items[index].path.isValid())
        return runtime::invalidParameter("The item is not a live DAG node.");
    path = m_items[index].path;
    component = m_items[index].component;
    return HS::kSuccess;
}

HStatus HSelectionList::getDagPath(unsigned index, HDagPath& path) const {
    HObject component;
    return getDagPath(index, path, component);
}

HStatus HSelectionList::getDependNode(unsigned index, HObject& node) const {
    node = HObject();
    if (index >= m_items.size())
        return noItem();
    if (m_items[index].node.isNull())
        return runtime::invalidParameter("The item's node was deleted.");
    node = m_items[index].node;
    return HS::kSuccess;
}

bool HSelectionList::hasItem(const HDagPath& path) const {
    return hasItem(path.node());
}

bool HSelectionList::hasItem(const HObject& node) const {
    for (const Item& item : m_items)
        if (!node.isNull() && item.node == node && item.component.isNull())
            return true;
    return false;
}

HStatus HSelectionList::getSelectionStrings(HStringArray& strings) const {
    strings.clear();
    if (!runtime::hostRunning())
        return HStatus(HS::kFailure, "The host is not running.");
    for (const std::string& text : runtime::itemTexts(runtime::scene(), m_items))
        strings.append(HString(text));
    return HS::kSuccess;
}
