#include "document/WeightsImport.h"

#include "api/StatusReport.h"
#include "document/SkinLockAttributes.h"
#include "scene/NearestPoints.h"
#include "scene/NodeValues.h"
#include "scene/Scene.h"
#include "scene/SkinBindPose.h"
#include "scene/SkinClusterData.h"
#include "scene/SkinLinks.h"
#include "scene/SkinWeightCleanup.h"
#include "scene/VertexWeightRecord.h"
#include "undo/SceneJournal.h"

#include <algorithm>
#include <cmath>
#include <unordered_map>

namespace runtime {

namespace {

std::string joined(const std::vector<std::string>& names) {
    std::string text;
    for (const std::string& name : names)
        text += (text.empty() ? "" : ", ") + name;
    return text;
}

HStatus matchInfluences(const WeightsFileCluster& file, const Node& cluster,
                        const std::vector<InfluenceRemap>& remaps, ImportPlan& plan) {
    const std::vector<NodePtr>& influences = cluster.skinCluster()->influences();
    std::unordered_map<std::string, unsigned> byName;
    for (unsigned i = 0; i < influences.size(); ++i)
        byName.emplace(influences[i]->name(), i);
    std::vector<std::string> lacking;
    for (const WeightsFileInfluence& influence : file.influences) {
        std::string name = influence.name;
        for (const InfluenceRemap& remap : remaps) {
            if (remap.from == name) {
                name = remap.to;
                break;
            }
        }
        auto found = byName.find(name);
        if (found == byName.end())
            lacking.push_back(name);
        else
            plan.influences.push_back(found->second);
    }
    if (!lacking.empty())
        return invalidParameter(cluster.name() +
                                " lacks influences of the file: " + joined(lacking) + ".");
    return HS::kSuccess;
}

HStatus matchByIndex(const WeightsFileCluster& file, const Node& mesh, unsigned vertexCount,
                     const std::vector<int>* vertices, ImportPlan& plan) {
    if (file.vertexCount != vertexCount)
        return invalidParameter(mesh.name() + " has " + std::to_string(vertexCount) +
                                " vertices, but the file's mesh " + file.mesh + " has " +
                                std::to_string(file.vertexCount) + ".");
    if (!vertices) {
        plan.targets = file.vertices;
        for (unsigned slot = 0; slot < file.vertices.size(); ++slot)
            plan.sources.push_back(slot);
        return HS::kSuccess;
    }
    for (int vertex : *vertices) {
        auto at = std::lower_bound(file.vertices.begin(), file.vertices.end(),
                                   static_cast<unsigned>(vertex));
        if (at != file.vertices.end() && *at == static_cast<unsigned>(vertex)) {
            plan.targets.push_back(static_cast<unsigned>(vertex));
            plan.sources.push_back(static_cast<unsigned>(at - file.vertices.begin()));
        }
    }
    return HS::kSuccess;
}

HStatus matchByPosition(const WeightsFileCluster& file, const Node& cluster,
                        const std::vector<int>* vertices, ImportPlan& plan) {
    if (file.vertices.empty())
        return invalidParameter("the file lists no vertices of " + file.mesh + ".");
    const std::vector<HPoint> positions = bindPosePositions(cluster);
    const unsigned count = vertices ? static_cast<unsigned>(vertices->size())
                                    : static_cast<unsigned>(positions.size());
    std::vector<HPoint> places;
    places.reserve(count);
    for (unsigned n = 0; n < count; ++n) {
        const unsigned vertex = vertices ? static_cast<unsigned>((*vertices)[n]) : n;
        plan.targets.push_back(vertex);
        places.push_back(positions[vertex]);
    }
    plan.sources = NearestPoints(file.positions).nearestEach(places);
    return HS::kSuccess;
}

// The weight editor's locks after the import: the file's joint locks, the file's vertex and
// cell locks on the planned vertices, the cluster's own on the others.
SkinLocks importedLocks(const ImportPlan& plan, const SkinLocks& current) {
    const WeightsFileCluster& file = *plan.file;
    const std::vector<NodePtr>& influences = plan.cluster->skinCluster()->influences();
    std::unordered_map<std::string, std::string> paths;
    for (size_t i = 0; i < file.influences.size(); ++i)
        if (!file.influences[i].path.empty())
            paths[file.influences[i].path] = influences[plan.influences[i]]->fullPathName();
    auto mapped = [&](const std::string& path) {
        auto found = paths.find(path);
        return found == paths.end() ? path : found->second;
    };
    std::vector<char> plannedVertices(plan.cluster->skinCluster()->weights().vertexCount(), 0);
    for (unsigned vertex : plan.targets)
        plannedVertices[vertex] = 1;
    auto planned = [&](int vertex) {
        return static_cast<unsigned>(vertex) < plannedVertices.size() &&
               plannedVertices[static_cast<unsigned>(vertex)];
    };

    SkinLocks locks;
    for (const std::string& name : file.locks.lockedJointNames)
        locks.lockedJointNames.push_back(mapped(name));
    for (int vertex : current.lockedVertices)
        if (!planned(vertex))
            locks.lockedVertices.push_back(vertex);
    for (const CellLocks& cell : current.lockedCells)
        if (!planned(cell.vertex))
            locks.lockedCells.push_back(cell);
    const std::vector<int>& fileLocked = file.locks.lockedVertices;
    const std::vector<CellLocks>& fileCells = file.locks.lockedCells;
    for (size_t k = 0; k < plan.targets.size(); ++k) {
        const int target = static_cast<int>(plan.targets[k]);
        const int source = static_cast<int>(file.vertices[plan.sources[k]]);
        if (std::binary_search(fileLocked.begin(), fileLocked.end(), source))
            locks.lockedVertices.push_back(target);
        auto cell = std::lower_bound(
            fileCells.begin(), fileCells.end(), source,
            [](const CellLocks& entry, int vertex) { return entry.vertex < vertex; });
        if (cell == fileCells.end() || cell->vertex != source)
            continue;
        CellLocks imported{target, {}};
        for (const std::string& joint : cell->joints)
            imported.joints.push_back(mapped(joint));
        locks.lockedCells.push_back(std::move(imported));
    }
    std::sort(locks.lockedVertices.begin(), locks.lockedVertices.end());
    locks.lockedVertices.erase(
        std::unique(locks.lockedVertices.begin(), locks.lockedVertices.end()),
        locks.lockedVertices.end());
    std::sort(locks.lockedCells.begin(), locks.lockedCells.end(),
              [](const CellLocks& a, const CellLocks& b) { return a.vertex < b.vertex; });
    return locks;
}

HStatus importLocks(Scene& scene, SceneJournal& journal, const ImportPlan& plan) {
    Node& cluster = *plan.cluster;
    const std::vector<NodePtr>& influences = cluster.skinCluster()->influences();
    for (size_t i = 0; i < plan.file->influences.size(); ++i) {
        Node& joint = *influences[plan.influences[i]];
        const bool locked = plan.file->influences[i].locked;
        if (storedBool(joint, "lockInfluenceWeights") == locked)
            continue;
        HStatus status = journal.setValue(joint.plug("lockInfluenceWeights"), locked);
        if (!status)
            return status;
    }
    const SkinLocks current = readSkinLocks(cluster);
    const SkinLocks locks = importedLocks(plan, current);
    if (locks == current)
        return HS::kSuccess;
    const std::pair<const char*, AttributePtr (*)()> attributes[] = {
        {"lockedJointNames", lockedJointNamesAttribute},
        {"lockedVertexIndices", lockedVertexIndicesAttribute},
        {"lockedCellIndices", lockedCellIndicesAttribute},
    };
    for (const auto& attribute : attributes) {
        if (!cluster.findAttribute(attribute.first)) {
            HStatus added = journal.addAttribute(cluster, attribute.second());
            if (!added)
                return added;
        }
        const Plug plug = cluster.plug(attribute.first);
        journal.keepValues(plug);
        // Emptied, so that writeSkinLocks leaves exactly the new locks.
        scene.restoreSnapshot(ValueSnapshot{plug, false, {}});
    }
    return writeSkinLocks(scene, cluster, locks);
}

// The file vertex's weights on the cluster's influences, sorted, remapped ones added up.
void mappedWeights(const ImportPlan& plan, unsigned slot, VertexEntries& entries) {
    const SkinWeights& weights = plan.file->weights;
    entries.clear();
    for (unsigned i = 0; i < weights.entryCount(slot); ++i)
        entries.push_back({plan.influences[weights.influences(slot)[i]], weights.weights(slot)[i]});
    std::sort(entries.begin(), entries.end(),
              [](const WeightEntry& a, const WeightEntry& b) { return a.influence < b.influence; });
    size_t kept = 0;
    for (size_t i = 0; i < entries.size(); ++i) {
        if (kept > 0 && entries[kept - 1].influence == entries[i].influence)
            entries[kept - 1].weight += entries[i].weight;
        else
            entries[kept++] = entries[i];
    }
    entries.resize(kept);
}

} // namespace

HStatus planImport(const WeightsFileCluster& file, const NodePtr& cluster,
                   const std::vector<int>* vertices, VertexMatching matching,
                   const std::vector<InfluenceRemap>& remaps, ImportPlan& plan) {
    plan = ImportPlan();
    plan.cluster = cluster;
    plan.file = &file;
    NodePtr mesh = skinClusterGeometry(*cluster);
    if (!mesh)
        return invalidParameter(cluster->name() + " deforms no mesh.");
    HStatus status = matchInfluences(file, *cluster, remaps, plan);
    if (!status)
        return status;
    if (matching == VertexMatching::kIndex)
        return matchByIndex(file, *mesh, cluster->skinCluster()->weights().vertexCount(), vertices,
                            plan);
    return matchByPosition(file, *cluster, vertices, plan);
}

HStatus applyImport(Scene& scene, SceneJournal& journal, const ImportPlan& plan,
                    ImportCounts& counts) {
    Node& cluster = *plan.cluster;
    if (plan.file->hasLocks) {
        HStatus status = importLocks(scene, journal, plan);
        if (!status) {
            journal.undo();
            return status;
        }
    }
    SkinWeights& weights = cluster.skinCluster()->weights();
    VertexWeightRecord& record = journal.keepWeights(cluster);
    VertexEntries entries;
    auto changed = std::make_shared<std::vector<unsigned>>();
    for (size_t k = 0; k < plan.targets.size(); ++k) {
        const unsigned vertex = plan.targets[k];
        mappedWeights(plan, plan.sources[k], entries);
        double sum = 0.0;
        for (const WeightEntry& entry : entries)
            sum += entry.weight;
        if (std::fabs(sum - 1.0) > kSumTolerance)
            ++counts.notSummingToOne;
        ++counts.written;
        if (holdsEntries(weights, vertex, entries))
            continue;
        record.keep(weights, vertex);
        storeEntries(weights, vertex, entries);
        changed->push_back(vertex);
    }
    scene.notify(SceneChange::weightsChanged(cluster.shared_from_this(), std::move(changed)));
    return HS::kSuccess;
}

} // namespace runtime
