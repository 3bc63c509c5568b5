#include "scene/SkinWeightAccess.h"

#include "api/StatusReport.h"
#include "scene/MeshData.h"
#include "scene/Node.h"
#include "scene/NodeValues.h"
#include "scene/Scene.h"
#include "scene/SkinClusterData.h"
#include "scene/SkinLinks.h"
#include "scene/SkinLocks.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <string>

namespace runtime {

namespace {

unsigned vertexAt(const std::vector<int>* vertices, unsigned n) {
    return vertices ? static_cast<unsigned>((*vertices)[n]) : n;
}

// The facts about a cluster that hold for a whole write. Lock states are read when first
// needed, so a write costs the weights it touches, not the cluster's influence count.
struct WriteContext {
    const SkinClusterData* data = nullptr;
    unsigned influenceCount = 0;
    std::vector<char> listed;
    mutable std::vector<signed char> lockStates;
    // Unlisted unlocked influences: where a remainder may go when nothing else takes it.
    mutable std::vector<unsigned> fallbacks;
    mutable bool fallbacksKnown = false;
    const MeshData* mesh = nullptr;

    bool locked(unsigned influence) const {
        signed char& state = lockStates[influence];
        if (state < 0)
            state = storedBool(*data->influences()[influence], "lockInfluenceWeights");
        return state != 0;
    }
    const std::vector<unsigned>& fallbackInfluences() const {
        if (!fallbacksKnown) {
            for (unsigned i = 0; i < influenceCount; ++i)
                if (!listed[i] && !locked(i))
                    fallbacks.push_back(i);
            fallbacksKnown = true;
        }
        return fallbacks;
    }
};

// The fallback influence nearest to the vertex's bind position; -1 when there is none.
int nearestFallback(const WriteContext& context, unsigned vertex) {
    const std::vector<unsigned>& fallbacks = context.fallbackInfluences();
    if (fallbacks.empty() || !context.mesh || vertex >= context.mesh->vertexCount())
        return fallbacks.empty() ? -1 : static_cast<int>(fallbacks.front());
    HPoint position = context.data->geometryMatrix().transformPoint(context.mesh->point(vertex));
    int nearest = -1;
    double best = std::numeric_limits<double>::infinity();
    for (unsigned influence : fallbacks) {
        double distance = position.distanceTo(context.data->bindPosition(influence));
        if (distance < best) {
            best = distance;
            nearest = static_cast<int>(influence);
        }
    }
    return nearest;
}

struct Entry {
    unsigned influence;
    double weight;
    bool listed;
};

// Spreads what the listed values leave over the rest of the vertex (see the header). entries
// hold the vertex's unlisted weights and its non-zero listed values.
void normalise(const WriteContext& context, unsigned vertex, const std::vector<unsigned>& listed,
               std::vector<Entry>& entries) {
    double lockedSum = 0.0, unlockedSum = 0.0, listedSum = 0.0;
    for (const Entry& e : entries) {
        if (e.listed)
            listedSum += e.weight;
        else if (context.locked(e.influence))
            lockedSum += e.weight;
        else
            unlockedSum += e.weight;
    }
    double room = std::max(0.0, 1.0 - lockedSum);
    if (listedSum > room) {
        for (Entry& e : entries)
            if (e.listed)
                e.weight *= room / listedSum;
        listedSum = room;
    }
    double remainder = std::max(0.0, room - listedSum);
    if (unlockedSum > 0.0) {
        for (Entry& e : entries)
            if (!e.listed && !context.locked(e.influence))
                e.weight *= remainder / unlockedSum;
        return;
    }
    if (remainder <= 0.0)
        return;
    int nearest = nearestFallback(context, vertex);
    if (nearest >= 0) {
        entries.push_back({static_cast<unsigned>(nearest), remainder, false});
        return;
    }
    if (listedSum > 0.0) {
        for (Entry& e : entries)
            if (e.listed)
                e.weight *= (listedSum + remainder) / listedSum;
        return;
    }
    for (unsigned influence : listed)
        entries.push_back({influence, remainder / static_cast<double>(listed.size()), true});
}

bool byInfluence(const Entry& a, const Entry& b) {
    return a.influence < b.influence;
}

} // namespace

unsigned vertexListSize(const SkinClusterData& data, const std::vector<int>* vertices) {
    return vertices ? static_cast<unsigned>(vertices->size()) : data.weights().vertexCount();
}

HStatus checkVertices(const SkinClusterData& data, const std::vector<int>* vertices) {
    if (!vertices)
        return HS::kSuccess;
    for (int vertex : *vertices)
        if (vertex < 0 || static_cast<unsigned>(vertex) >= data.weights().vertexCount())
            return invalidParameter("Vertex " + std::to_string(vertex) +
                                    " is not a vertex of the geometry.");
    return HS::kSuccess;
}

void readWeights(const SkinClusterData& data, const std::vector<int>* vertices, double* out) {
    unsigned count = data.influenceCount();
    unsigned size = vertexListSize(data, vertices);
    for (unsigned n = 0; n < size; ++n)
        data.weights().scatter(vertexAt(vertices, n), out + static_cast<size_t>(n) * count, count);
}

void readInfluenceWeights(const SkinClusterData& data, const std::vector<int>* vertices,
                          unsigned influence, double* out) {
    unsigned size = vertexListSize(data, vertices);
    for (unsigned n = 0; n < size; ++n)
        out[n] = data.weights().weight(vertexAt(vertices, n), influence);
}

HStatus writeWeights(Scene& scene, Node& cluster, const std::vector<int>* vertices,
                     const std::vector<unsigned>& influences, const std::vector<double>& values,
                     bool sameForEveryVertex, bool normalize, bool restoreWhenComplete,
                     std::vector<double>* old) {
    WeightValues given{values.data(), values.size(),
                       sameForEveryVertex ? WeightValues::Layout::kSameForEveryVertex
                                          : WeightValues::Layout::kPerVertex};
    return writeWeights(scene, cluster, vertices, influences, given, normalize, restoreWhenComplete,
                        old);
}

HStatus writeWeights(Scene& scene, Node& cluster, const std::vector<int>* vertices,
                     const std::vector<unsigned>& influences, const WeightValues& values,
                     bool normalize, bool restoreWhenComplete, std::vector<double>* old) {
    using Layout = WeightValues::Layout;
    SkinClusterData* data = cluster.skinCluster();
    if (!cluster.isAlive() || !data)
        return invalidParameter("The node is not a live skin cluster.");
    HStatus status = checkVertices(*data, vertices);
    if (!status)
        return status;
    WriteContext context;
    context.data = data;
    context.influenceCount = data->influenceCount();
    context.listed.assign(context.influenceCount, 0);
    for (unsigned influence : influences) {
        if (influence >= context.influenceCount)
            return invalidParameter("Influence index " + std::to_string(influence) +
                                    " is out of range.");
        if (context.listed[influence])
            return invalidParameter("Influence index " + std::to_string(influence) +
                                    " is listed twice.");
        context.listed[influence] = 1;
    }
    unsigned size = vertexListSize(*data, vertices);
    size_t rowLength =
        values.layout == Layout::kFullRows ? context.influenceCount : influences.size();
    size_t expected = values.layout == Layout::kSameForEveryVertex ? rowLength : rowLength * size;
    if (values.size != expected)
        return invalidParameter("Expected " + std::to_string(expected) + " weight values, got " +
                                std::to_string(values.size) + ".");
    if (!std::all_of(values.data, values.data + values.size,
                     [](double value) { return std::isfinite(value); }))
        return invalidParameter("A weight value is not a finite number.");

    bool complete = influences.size() == context.influenceCount;
    bool normalising = normalize && intValue(cluster, "normalizeWeights", 1) == 1 &&
                       !(restoreWhenComplete && complete);
    context.lockStates.assign(context.influenceCount, -1);
    VertexLocks vertexLocks(cluster);
    NodePtr geometry = skinClusterGeometry(cluster);
    context.mesh = geometry ? geometry->mesh() : nullptr;

    SkinWeights& weights = data->weights();
    if (old)
        old->reserve(old->size() + static_cast<size_t>(size) * context.influenceCount);
    std::vector<double> dense(old ? context.influenceCount : 0);
    std::vector<Entry> entries;
    std::vector<SkinWeights::Influence> newInfluences;
    std::vector<double> newWeights;
    // A write to every vertex is announced as such, without a list.
    std::shared_ptr<std::vector<unsigned>> changed;
    if (vertices)
        changed = std::make_shared<std::vector<unsigned>>();
    for (unsigned n = 0; n < size; ++n) {
        unsigned vertex = vertexAt(vertices, n);
        if (old) {
            weights.readDense(vertex, dense.data(), context.influenceCount);
            old->insert(old->end(), dense.begin(), dense.end());
        }
        if (vertexLocks.locked(vertex))
            continue;
        entries.clear();
        unsigned count = weights.entryCount(vertex);
        for (unsigned i = 0; i < count; ++i) {
            unsigned influence = weights.influences(vertex)[i];
            if (influence < context.influenceCount && !context.listed[influence])
                entries.push_back({influence, weights.weights(vertex)[i], false});
        }
        const double* row =
            values.data + (values.layout == Layout::kSameForEveryVertex ? 0 : n * rowLength);
        for (size_t j = 0; j < influences.size(); ++j) {
            double given = row[values.layout == Layout::kFullRows ? influences[j] : j];
            // A weight of zero is no entry: rows of many influences cost their non-zero ones.
            if (given > 0.0)
                entries.push_back({influences[j], std::min(given, 1.0), true});
        }
        if (normalising)
            normalise(context, vertex, influences, entries);
        // In influence order, the storage's fast path.
        if (!std::is_sorted(entries.begin(), entries.end(), byInfluence))
            std::sort(entries.begin(), entries.end(), byInfluence);
        newInfluences.clear();
        newWeights.clear();
        for (const Entry& e : entries) {
            newInfluences.push_back(static_cast<SkinWeights::Influence>(e.influence));
            newWeights.push_back(e.weight);
        }
        weights.assign(vertex, newInfluences.data(), newWeights.data(),
                       static_cast<unsigned>(entries.size()));
        if (changed)
            changed->push_back(vertex);
    }
    scene.notify(SceneChange::weightsChanged(cluster.shared_from_this(), std::move(changed)));
    return HS::kSuccess;
}

} // namespace runtime
