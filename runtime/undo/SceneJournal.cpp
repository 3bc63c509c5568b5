#include "undo/SceneJournal.h"

#include "api/HApiAccess.h"
#include "scene/Scene.h"
#include "scene/Selection.h"
#include "scene/SelectionItems.h"
#include "scene/SkinClusterData.h"
#include "scene/VertexWeightRecord.h"

namespace runtime {

namespace {

// The outermost level of plug that holds nothing yet (the plug itself when it exists).
Plug outermostMissing(const Plug& plug) {
    Plug place = plug;
    for (;;) {
        Plug up = place.isElement() ? place.array() : place.parent();
        if (up.isNull() || up.exists())
            return place;
        place = up;
    }
}

bool isActiveSelection(const HSelectionList& list) {
    return sameItems(HApiAccess::items(selection().active()), HApiAccess::items(list));
}

void makeActiveSelection(const HSelectionList& list) {
    if (!isActiveSelection(list))
        selection().setActive(list);
}

} // namespace

struct SceneJournal::Step {
    virtual ~Step() = default;
    virtual void undo(Scene& scene) = 0;
    virtual void redo(Scene& scene) = 0;
    virtual bool empty() const { return false; }
};

// The state after a change is read when it is first undone: steps are undone in reverse
// order, so the scene is then as the change left it.
struct SceneJournal::ValueStep : Step {
    ValueSnapshot before;
    std::unique_ptr<ValueSnapshot> after;
    void undo(Scene& scene) override {
        if (!after)
            after = std::make_unique<ValueSnapshot>(scene.snapshot(before.plug));
        scene.restoreSnapshot(before);
    }
    void redo(Scene& scene) override {
        if (after)
            scene.restoreSnapshot(*after);
    }
};

struct SceneJournal::ConnectionStep : Step {
    Plug source, destination;
    bool connected = true;
    void apply(Scene& scene, bool connect) {
        if (connect)
            scene.connect(source, destination);
        else
            scene.disconnect(source, destination);
    }
    void undo(Scene& scene) override { apply(scene, !connected); }
    void redo(Scene& scene) override { apply(scene, connected); }
};

struct SceneJournal::NodesStep : Step {
    std::vector<NodePtr> nodes;
    std::shared_ptr<DeletedNodes> record;
    bool created = true;
    void apply(Scene& scene, bool bringBack) {
        if (bringBack && record)
            scene.restore(*record);
        else if (!bringBack)
            record = scene.deleteNodes(nodes);
    }
    void undo(Scene& scene) override { apply(scene, !created); }
    void redo(Scene& scene) override { apply(scene, created); }
    bool empty() const override { return nodes.empty(); }
};

struct SceneJournal::RenameStep : Step {
    NodePtr node;
    std::string before, after;
    void undo(Scene& scene) override { scene.rename(*node, before); }
    void redo(Scene& scene) override { scene.rename(*node, after); }
};

struct SceneJournal::ReparentStep : Step {
    struct Place {
        NodePtr parent;
        size_t position = 0;
        std::string name;
    };
    NodePtr node;
    Place before, after;
    void moveTo(Scene& scene, const Place& place) {
        scene.reparent(*node, place.parent.get(), static_cast<int>(place.position));
        if (node->name() != place.name)
            scene.rename(*node, place.name);
    }
    void undo(Scene& scene) override { moveTo(scene, before); }
    void redo(Scene& scene) override { moveTo(scene, after); }
};

struct SceneJournal::AttributeStep : Step {
    NodePtr node;
    AttributePtr attribute;
    std::shared_ptr<RemovedAttribute> removed;
    void undo(Scene& scene) override { removed = scene.removeAttribute(*node, attribute.get()); }
    void redo(Scene& scene) override {
        if (removed)
            scene.restoreAttribute(*removed);
    }
};

struct SceneJournal::SelectionStep : Step {
    HSelectionList before;
    std::unique_ptr<HSelectionList> after;
    void undo(Scene&) override {
        if (!after)
            after = std::make_unique<HSelectionList>(selection().active());
        makeActiveSelection(before);
    }
    void redo(Scene&) override {
        if (after)
            makeActiveSelection(*after);
    }
};

struct SceneJournal::WeightsStep : Step {
    NodePtr cluster;
    VertexWeightRecord record;
    void restore(Scene& scene, void (VertexWeightRecord::*state)(SkinWeights&)) {
        if (record.empty() || !cluster->isAlive() || !cluster->skinCluster())
            return;
        (record.*state)(cluster->skinCluster()->weights());
        scene.notify(SceneChange::weightsChanged(
            cluster, std::make_shared<std::vector<unsigned>>(record.vertices())));
    }
    void undo(Scene& scene) override { restore(scene, &VertexWeightRecord::restoreBefore); }
    void redo(Scene& scene) override { restore(scene, &VertexWeightRecord::restoreAfter); }
    bool empty() const override { return record.empty(); }
};

SceneJournal::SceneJournal(Scene& scene) : m_scene(scene) {}
SceneJournal::~SceneJournal() = default;

bool SceneJournal::empty() const {
    for (const std::unique_ptr<Step>& step : m_steps)
        if (!step->empty())
            return false;
    return true;
}

void SceneJournal::add(std::unique_ptr<Step> step) {
    m_steps.push_back(std::move(step));
}

HStatus SceneJournal::setValue(const Plug& plug, const Value& value) {
    auto step = std::make_unique<ValueStep>();
    step->before = m_scene.snapshot(outermostMissing(plug));
    HStatus status = m_scene.setValue(plug, value);
    if (status)
        add(std::move(step));
    return status;
}

void SceneJournal::keepValues(const Plug& plug) {
    auto step = std::make_unique<ValueStep>();
    step->before = m_scene.snapshot(outermostMissing(plug));
    add(std::move(step));
}

HStatus SceneJournal::connect(const Plug& source, const Plug& destination, bool replace) {
    // Connecting creates the elements it names; undo takes them away again.
    std::vector<std::unique_ptr<Step>> created;
    for (const Plug* end : {&source, &destination}) {
        if (end->isNull() || end->exists())
            continue;
        auto step = std::make_unique<ValueStep>();
        step->before = m_scene.snapshot(outermostMissing(*end));
        created.push_back(std::move(step));
    }
    ConnectionPtr replaced;
    HStatus status = m_scene.connect(source, destination, replace, &replaced);
    if (!status)
        return status;
    for (std::unique_ptr<Step>& step : created)
        add(std::move(step));
    if (replaced) {
        auto step = std::make_unique<ConnectionStep>();
        step->source = replaced->source;
        step->destination = replaced->destination;
        step->connected = false;
        add(std::move(step));
    }
    auto step = std::make_unique<ConnectionStep>();
    step->source = source;
    step->destination = destination;
    add(std::move(step));
    return status;
}

HStatus SceneJournal::disconnect(const Plug& source, const Plug& destination) {
    HStatus status = m_scene.disconnect(source, destination);
    if (status) {
        auto step = std::make_unique<ConnectionStep>();
        step->source = source;
        step->destination = destination;
        step->connected = false;
        add(std::move(step));
    }
    return status;
}

NodePtr SceneJournal::createNode(const std::string& typeName, const std::string& name, Node* parent,
                                 HStatus* status) {
    NodePtr node = m_scene.createNode(typeName, name, parent, status);
    if (!node)
        return node;
    // A shape made without a parent came with a transform of its own.
    bool ownTransform = !parent && node->isShape() && node->parent();
    nodesCreated({ownTransform ? node->parent()->shared_from_this() : node});
    return node;
}

void SceneJournal::nodesCreated(const std::vector<NodePtr>& nodes) {
    auto step = std::make_unique<NodesStep>();
    step->nodes = nodes;
    add(std::move(step));
}

HStatus SceneJournal::deleteNodes(const std::vector<NodePtr>& nodes) {
    keepSelection();
    HStatus status;
    auto step = std::make_unique<NodesStep>();
    step->nodes = nodes;
    step->created = false;
    step->record = m_scene.deleteNodes(nodes, &status);
    if (status)
        add(std::move(step));
    return status;
}

std::string SceneJournal::rename(Node& node, const std::string& name, HStatus* status) {
    std::string before = node.name();
    HStatus renamed;
    std::string given = m_scene.rename(node, name, &renamed);
    if (renamed && given != before) {
        auto step = std::make_unique<RenameStep>();
        step->node = node.shared_from_this();
        step->before = before;
        step->after = given;
        add(std::move(step));
    }
    if (status)
        *status = renamed;
    return given;
}

HStatus SceneJournal::reparent(Node& node, Node* parent) {
    auto step = std::make_unique<ReparentStep>();
    step->node = node.shared_from_this();
    auto placeOf = [&](ReparentStep::Place& place) {
        place.parent = node.parent() ? node.parent()->shared_from_this() : nullptr;
        place.position = node.isAlive() ? m_scene.childPosition(node) : 0;
        place.name = node.name();
    };
    placeOf(step->before);
    HStatus status = m_scene.reparent(node, parent);
    if (status) {
        placeOf(step->after);
        add(std::move(step));
    }
    return status;
}

HStatus SceneJournal::addAttribute(Node& node, const AttributePtr& attribute) {
    HStatus status = m_scene.addAttribute(node, attribute);
    if (status) {
        auto step = std::make_unique<AttributeStep>();
        step->node = node.shared_from_this();
        step->attribute = attribute;
        add(std::move(step));
    }
    return status;
}

void SceneJournal::setSelection(const HSelectionList& list, HGlobal::ListAdjustment mode) {
    keepSelection();
    selection().setActive(list, mode);
}

void SceneJournal::keepSelection() {
    auto step = std::make_unique<SelectionStep>();
    step->before = selection().active();
    add(std::move(step));
}

VertexWeightRecord& SceneJournal::keepWeights(Node& cluster) {
    auto step = std::make_unique<WeightsStep>();
    step->cluster = cluster.shared_from_this();
    VertexWeightRecord& record = step->record;
    add(std::move(step));
    return record;
}

void SceneJournal::undo() {
    for (auto it = m_steps.rbegin(); it != m_steps.rend(); ++it)
        (*it)->undo(m_scene);
}

void SceneJournal::redo() {
    for (const std::unique_ptr<Step>& step : m_steps)
        step->redo(m_scene);
}

} // namespace runtime
