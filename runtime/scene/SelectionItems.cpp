#include "scene/SelectionItems.h"

#include "scene/ComponentText.h"
#include "scene/MeshData.h"
#include "scene/Scene.h"
#include "scene/SkinBinding.h"

#include <algorithm>

namespace runtime {

namespace {

bool sameTarget(const SelectionItem& a, const SelectionItem& b) {
    if (HApiAccess::data(a.node) != HApiAccess::data(b.node))
        return false;
    std::shared_ptr<HObjectData> ca = HApiAccess::data(a.component);
    std::shared_ptr<HObjectData> cb = HApiAccess::data(b.component);
    if (!ca || !cb)
        return !ca && !cb;
    return ca->apiType() == cb->apiType();
}

std::shared_ptr<ComponentData> copyOf(const ComponentData& component) {
    return std::make_shared<ComponentData>(component);
}

unsigned elementCount(const MeshData& mesh, HFn::Type kind) {
    switch (kind) {
    case HFn::kMeshEdgeComponent:
        return mesh.edgeCount();
    case HFn::kMeshPolygonComponent:
        return mesh.polygonCount();
    default:
        return mesh.vertexCount();
    }
}

HStatus componentFromText(const Scene& scene, const std::string& text, SelectionItems& items) {
    ComponentText parsed;
    HStatus status = parseComponentText(text, parsed);
    if (!status)
        return status;
    NodePtr node = scene.findNode(parsed.object, &status);
    if (!status)
        return status;
    NodePtr shape = meshShapeOf(*node);
    if (!shape)
        return HStatus(HS::kInvalidParameter, parsed.object + " has no single mesh shape.");
    unsigned count = elementCount(*shape->mesh(), parsed.kind);
    int last = parsed.all ? static_cast<int>(count) - 1 : parsed.last;
    if (!parsed.all && static_cast<unsigned>(last) >= count)
        return HStatus(HS::kInvalidParameter, "Index out of range: " + text);
    auto component = std::make_shared<ComponentData>(parsed.kind);
    for (int element = parsed.all ? 0 : parsed.first; element <= last; ++element)
        component->add(element);
    addItem(items, itemForComponent(shape, component));
    return HS::kSuccess;
}

} // namespace

SelectionItem itemForNode(const NodePtr& node) {
    SelectionItem item;
    item.node = HApiAccess::object(node);
    if (node->isDag())
        item.path = HApiAccess::path(node);
    return item;
}

SelectionItem itemForComponent(const NodePtr& shape,
                               const std::shared_ptr<ComponentData>& component) {
    SelectionItem item = itemForNode(shape);
    item.component = HApiAccess::object(component);
    return item;
}

NodePtr itemNode(const SelectionItem& item) {
    return HApiAccess::node(item.node);
}

std::shared_ptr<ComponentData> itemComponent(const SelectionItem& item) {
    return HApiAccess::as<ComponentData>(item.component);
}

void addItem(SelectionItems& items, const SelectionItem& item) {
    for (SelectionItem& existing : items) {
        if (!sameTarget(existing, item))
            continue;
        std::shared_ptr<ComponentData> added = itemComponent(item);
        if (!added)
            return;
        std::shared_ptr<ComponentData> merged = copyOf(*itemComponent(existing));
        for (int element : added->elements())
            merged->add(element);
        existing.component = HApiAccess::object(merged);
        return;
    }
    SelectionItem copy = item;
    if (std::shared_ptr<ComponentData> component = itemComponent(item))
        copy.component = HApiAccess::object(copyOf(*component));
    items.push_back(copy);
}

void removeItem(SelectionItems& items, const SelectionItem& item) {
    for (auto it = items.begin(); it != items.end(); ++it) {
        if (!sameTarget(*it, item))
            continue;
        std::shared_ptr<ComponentData> removed = itemComponent(item);
        if (removed) {
            std::shared_ptr<ComponentData> kept = copyOf(*itemComponent(*it));
            kept->removeAll(*removed);
            it->component = HApiAccess::object(kept);
            if (!kept->empty())
                return;
        }
        items.erase(it);
        return;
    }
}

void toggleItem(SelectionItems& items, const SelectionItem& item) {
    std::shared_ptr<ComponentData> toggled = itemComponent(item);
    for (const SelectionItem& existing : items) {
        if (!sameTarget(existing, item))
            continue;
        if (!toggled) {
            removeItem(items, item);
            return;
        }
        auto absent = std::make_shared<ComponentData>(toggled->apiType());
        auto present = std::make_shared<ComponentData>(toggled->apiType());
        std::shared_ptr<ComponentData> current = itemComponent(existing);
        for (int element : toggled->elements())
            (current->contains(element) ? present : absent)->add(element);
        NodePtr shape = itemNode(item);
        removeItem(items, itemForComponent(shape, present));
        if (!absent->empty())
            addItem(items, itemForComponent(shape, absent));
        return;
    }
    addItem(items, item);
}

bool dropDeadItems(SelectionItems& items) {
    size_t before = items.size();
    items.erase(std::remove_if(items.begin(), items.end(),
                               [](const SelectionItem& item) { return !itemNode(item); }),
                items.end());
    return items.size() != before;
}

HStatus itemsFromText(const Scene& scene, const std::string& text, bool allowPatterns,
                      SelectionItems& items) {
    if (looksLikeComponent(text))
        return componentFromText(scene, text, items);
    bool pattern = text.find_first_of("*?") != std::string::npos;
    if (pattern && !allowPatterns)
        return HStatus(HS::kInvalidParameter, "No object matches name: " + text);
    if (!pattern) {
        HStatus status;
        NodePtr node = scene.findNode(text, &status);
        if (node)
            addItem(items, itemForNode(node));
        return status;
    }
    std::vector<NodePtr> found = scene.matchNodes(text);
    if (found.empty())
        return HStatus(HS::kInvalidParameter, "No object matches name: " + text);
    for (const NodePtr& node : found)
        addItem(items, itemForNode(node));
    return HS::kSuccess;
}

bool sameItems(const SelectionItems& a, const SelectionItems& b) {
    if (a.size() != b.size())
        return false;
    for (size_t i = 0; i < a.size(); ++i) {
        if (!sameTarget(a[i], b[i]))
            return false;
        std::shared_ptr<ComponentData> ca = itemComponent(a[i]);
        std::shared_ptr<ComponentData> cb = itemComponent(b[i]);
        if (ca && cb && ca->elements() != cb->elements())
            return false;
    }
    return true;
}

std::vector<unsigned> verticesOn(const SelectionItems& items, const Node& shape) {
    std::vector<unsigned> vertices;
    const MeshData* mesh = shape.mesh();
    if (!mesh)
        return vertices;
    std::vector<bool> named(mesh->vertexCount(), false);
    auto name = [&](int vertex) {
        if (vertex >= 0 && static_cast<unsigned>(vertex) < named.size() && !named[vertex]) {
            named[vertex] = true;
            vertices.push_back(static_cast<unsigned>(vertex));
        }
    };
    for (const SelectionItem& item : items) {
        std::shared_ptr<ComponentData> component = itemComponent(item);
        if (!component || itemNode(item).get() != &shape)
            continue;
        for (int element : component->elements()) {
            switch (component->apiType()) {
            case HFn::kMeshEdgeComponent:
                if (static_cast<unsigned>(element) < mesh->edgeCount()) {
                    name(mesh->edges()[element].first);
                    name(mesh->edges()[element].second);
                }
                break;
            case HFn::kMeshPolygonComponent:
                if (static_cast<unsigned>(element) < mesh->polygonCount())
                    for (int vertex : mesh->polygon(static_cast<unsigned>(element)))
                        name(vertex);
                break;
            default:
                name(element);
                break;
            }
        }
    }
    return vertices;
}

std::vector<std::string> itemTexts(const Scene& scene, const SelectionItems& items,
                                   bool longNames) {
    std::vector<std::string> texts;
    for (const SelectionItem& item : items) {
        NodePtr node = itemNode(item);
        if (!node)
            continue;
        std::shared_ptr<ComponentData> component = itemComponent(item);
        if (!component) {
            texts.push_back(longNames ? node->fullPathName() : scene.partialPathName(*node));
            continue;
        }
        std::string name = scene.partialPathName(*node);
        const std::vector<int>& elements = component->elements();
        for (size_t start = 0; start < elements.size();) {
            size_t end = start;
            while (end + 1 < elements.size() && elements[end + 1] == elements[end] + 1)
                ++end;
            std::string range = std::to_string(elements[start]);
            if (end > start)
                range += ":" + std::to_string(elements[end]);
            texts.push_back(name + "." + componentKindText(component->apiType()) + "[" + range +
                            "]");
            start = end + 1;
        }
    }
    return texts;
}

} // namespace runtime
