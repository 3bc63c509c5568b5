#include "tools/SkinPaintFlood.h"

#include "scene/MeshData.h"
#include "scene/Scene.h"
#include "scene/SelectionItems.h"
#include "scene/SkinClusterData.h"
#include "scene/SkinLinks.h"
#include "scene/SkinWeightAccess.h"
#include "scene/VertexWeightRecord.h"
#include "undo/SceneJournal.h"

#include <algorithm>

namespace runtime {

namespace {

// Gathers the targets, each vertex once however often the selection names it.
class TargetCollector {
public:
    explicit TargetCollector(const Node& influence) : m_influence(influence) {}

    void addShape(const NodePtr& shape, const ComponentData* component) {
        Entry* entry = entryFor(shape);
        if (!entry)
            return;
        unsigned count = shape->mesh()->vertexCount();
        if (!component) {
            for (unsigned v = 0; v < count; ++v)
                add(*entry, static_cast<int>(v));
            return;
        }
        for (int v : component->elements())
            if (v >= 0 && static_cast<unsigned>(v) < count)
                add(*entry, v);
    }

    std::vector<PaintTarget> take() {
        std::vector<PaintTarget> targets;
        for (Entry& entry : m_entries)
            if (!entry.target.vertices.empty())
                targets.push_back(std::move(entry.target));
        return targets;
    }

private:
    struct Entry {
        PaintTarget target;
        std::vector<char> taken;
    };

    // Null for a shape that is no mesh or whose cluster lacks the influence.
    Entry* entryFor(const NodePtr& shape) {
        for (Entry& entry : m_entries)
            if (entry.target.shape == shape)
                return &entry;
        if (!shape || !shape->mesh())
            return nullptr;
        NodePtr cluster = skinClusterOfGeometry(*shape);
        int influence = cluster ? cluster->skinCluster()->indexOf(&m_influence) : -1;
        if (influence < 0)
            return nullptr;
        Entry entry;
        entry.target.shape = shape;
        entry.target.cluster = cluster;
        entry.target.influence = static_cast<unsigned>(influence);
        entry.taken.assign(shape->mesh()->vertexCount(), 0);
        m_entries.push_back(std::move(entry));
        return &m_entries.back();
    }

    static void add(Entry& entry, int vertex) {
        if (!entry.taken[vertex]) {
            entry.taken[vertex] = 1;
            entry.target.vertices.push_back(vertex);
        }
    }

    const Node& m_influence;
    std::vector<Entry> m_entries;
};

double neighbourAverage(const MeshData& mesh, const SkinWeights& weights, unsigned vertex,
                        unsigned influence, double own) {
    IndexRange neighbours = mesh.neighbours(vertex);
    if (neighbours.size() == 0)
        return own;
    double sum = 0.0;
    for (int neighbour : neighbours)
        sum += weights.weight(static_cast<unsigned>(neighbour), influence);
    return sum / static_cast<double>(neighbours.size());
}

} // namespace

std::vector<PaintTarget> paintTargets(const HSelectionList& selection, const Node& influence) {
    TargetCollector collector(influence);
    for (const SelectionItem& item : HApiAccess::items(selection)) {
        NodePtr node = itemNode(item);
        if (!node)
            continue;
        std::shared_ptr<ComponentData> component = itemComponent(item);
        if (component) {
            if (component->apiType() == HFn::kMeshVertComponent)
                collector.addShape(node, component.get());
        } else if (node->mesh()) {
            collector.addShape(node, nullptr);
        } else {
            for (const NodePtr& child : node->children())
                if (child->mesh())
                    collector.addShape(child, nullptr);
        }
    }
    return collector.take();
}

std::vector<double> paintedWeights(const PaintTarget& target, PaintOperation operation,
                                   double opacity) {
    const SkinWeights& weights = target.cluster->skinCluster()->weights();
    const MeshData& mesh = *target.shape->mesh();
    std::vector<double> values;
    values.reserve(target.vertices.size());
    for (int vertex : target.vertices) {
        unsigned v = static_cast<unsigned>(vertex);
        double w = weights.weight(v, target.influence);
        switch (operation) {
        case PaintOperation::kReplace:
            w = opacity;
            break;
        case PaintOperation::kAdd:
            w = std::min(1.0, w + opacity);
            break;
        case PaintOperation::kScale:
            w *= opacity;
            break;
        case PaintOperation::kSmooth:
            w = (1.0 - opacity) * w +
                opacity * neighbourAverage(mesh, weights, v, target.influence, w);
            break;
        }
        values.push_back(w);
    }
    return values;
}

HStatus floodTarget(Scene& scene, SceneJournal& journal, const PaintTarget& target,
                    PaintOperation operation, double opacity) {
    std::vector<double> values = paintedWeights(target, operation, opacity);
    const SkinWeights& weights = target.cluster->skinCluster()->weights();
    VertexWeightRecord& record = journal.keepWeights(*target.cluster);
    for (int vertex : target.vertices)
        record.keep(weights, static_cast<unsigned>(vertex));
    return writeWeights(scene, *target.cluster, &target.vertices, {target.influence}, values, false,
                        true, false, nullptr);
}

} // namespace runtime
