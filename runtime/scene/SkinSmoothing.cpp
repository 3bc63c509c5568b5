#include "scene/SkinSmoothing.h"

#include "api/StatusReport.h"
#include "core/ParallelParts.h"
#include "scene/MeshData.h"
#include "scene/Node.h"
#include "scene/Scene.h"
#include "scene/SkinClusterData.h"
#include "scene/SkinLinks.h"
#include "scene/SkinLocks.h"
#include "scene/SkinWeightCleanup.h"
#include "scene/VertexWeightRecord.h"

#include <algorithm>
#include <cmath>
#include <string>

namespace runtime {

namespace {

// Below this many vertices per thread, starting threads costs more than it saves.
constexpr size_t kVerticesPerThread = 20000;
// Weights per changed vertex that the change buffers make room for at first.
constexpr size_t kExpectedWeights = 8;

// The vertices one share of a pass changes, with their new weights one after the other.
struct PassChanges {
    std::vector<unsigned> vertices;
    std::vector<unsigned> ends;
    std::vector<SkinWeights::Influence> influences;
    std::vector<double> weights;

    void clear() {
        vertices.clear();
        ends.clear();
        influences.clear();
        weights.clear();
    }
};

// Computes new weights for vertices from the weights as they stand; never writes them. One
// per thread: it owns its scratch space.
class VertexSmoother {
public:
    VertexSmoother(const SkinWeights& weights, const MeshData& mesh, const std::vector<char>& locks,
                   const VertexLocks& vertexLocks, const SmoothingOptions& options,
                   unsigned influenceCount)
        : m_weights(weights), m_mesh(mesh), m_locks(locks), m_vertexLocks(vertexLocks),
          m_options(options), m_influenceCount(influenceCount), m_sums(influenceCount, 0.0),
          m_marks(influenceCount, 0) {}

    void run(const unsigned* first, const unsigned* last, PassChanges& changes) {
        changes.clear();
        // Room for every vertex to change with as many weights as its neighbours bring.
        size_t count = static_cast<size_t>(last - first);
        changes.vertices.reserve(count);
        changes.ends.reserve(count);
        changes.influences.reserve(count * kExpectedWeights);
        changes.weights.reserve(count * kExpectedWeights);
        for (const unsigned* vertex = first; vertex != last; ++vertex) {
            if (!smooth(*vertex))
                continue;
            changes.vertices.push_back(*vertex);
            for (const WeightEntry& e : m_entries) {
                changes.influences.push_back(static_cast<SkinWeights::Influence>(e.influence));
                changes.weights.push_back(e.weight);
            }
            changes.ends.push_back(static_cast<unsigned>(changes.weights.size()));
        }
    }

private:
    enum : unsigned char { kNeighbour = 1, kOwn = 2 };

    // Leaves the vertex's new weights, sorted by influence, in m_entries; false when the
    // vertex stays as it is.
    bool smooth(unsigned vertex) {
        if (m_vertexLocks.locked(vertex))
            return false;
        IndexRange neighbours = m_mesh.neighbours(vertex);
        if (neighbours.size() == 0)
            return false;
        const double count = static_cast<double>(neighbours.size());
        m_touched.clear();
        for (int neighbour : neighbours) {
            unsigned n = static_cast<unsigned>(neighbour);
            for (unsigned i = 0; i < m_weights.entryCount(n); ++i) {
                unsigned k = m_weights.influences(n)[i];
                if (k >= m_influenceCount)
                    continue;
                if (!(m_marks[k] & kNeighbour)) {
                    m_marks[k] |= kNeighbour;
                    m_sums[k] = 0.0;
                    m_touched.push_back(k);
                }
                m_sums[k] += m_weights.weights(n)[i];
            }
        }
        const unsigned ownCount = m_weights.entryCount(vertex);
        const SkinWeights::Influence* ownInfluences = m_weights.influences(vertex);
        const double* ownWeights = m_weights.weights(vertex);
        double largest = 0.0;
        for (unsigned i = 0; i < ownCount; ++i) {
            unsigned k = ownInfluences[i];
            if (k >= m_influenceCount)
                continue;
            m_marks[k] |= kOwn;
            double average = (m_marks[k] & kNeighbour) ? m_sums[k] / count : 0.0;
            largest = std::max(largest, std::fabs(ownWeights[i] - average));
        }
        for (unsigned k : m_touched)
            if (!(m_marks[k] & kOwn))
                largest = std::max(largest, m_sums[k] / count);
        bool differs = largest > m_options.threshold;

        m_entries.clear();
        for (unsigned i = 0; i < ownCount; ++i) {
            unsigned k = ownInfluences[i];
            if (k < m_influenceCount && m_locks[k])
                m_entries.push_back({k, ownWeights[i]});
            if (k < m_influenceCount)
                m_marks[k] = 0;
        }
        for (unsigned k : m_touched) {
            if (!m_locks[k])
                m_entries.push_back({k, m_sums[k] / count});
            m_marks[k] = 0;
        }
        if (!differs || !normaliseUnlocked(m_entries, m_locks))
            return false;
        if (m_options.obeyMaxInfluences)
            limitInfluences(m_entries, m_locks, m_options.maxInfluences);
        std::sort(
            m_entries.begin(), m_entries.end(),
            [](const WeightEntry& a, const WeightEntry& b) { return a.influence < b.influence; });
        return !holdsEntries(m_weights, vertex, m_entries);
    }

    const SkinWeights& m_weights;
    const MeshData& m_mesh;
    const std::vector<char>& m_locks;
    const VertexLocks& m_vertexLocks;
    const SmoothingOptions& m_options;
    unsigned m_influenceCount;
    std::vector<double> m_sums;
    std::vector<unsigned char> m_marks;
    std::vector<unsigned> m_touched;
    VertexEntries m_entries;
};

HStatus checkSmoothing(const Node& cluster, const MeshData* mesh,
                       const std::vector<unsigned>& vertices) {
    const SkinClusterData* data = cluster.skinCluster();
    if (!cluster.isAlive() || !data)
        return invalidParameter(cluster.name() + " is not a live skin cluster.");
    if (!mesh || mesh->vertexCount() != data->weights().vertexCount())
        return invalidParameter(cluster.name() + " has no mesh that matches its weights.");
    for (unsigned vertex : vertices)
        if (vertex >= mesh->vertexCount())
            return invalidParameter("Vertex " + std::to_string(vertex) +
                                    " is not a vertex of the geometry.");
    return HS::kSuccess;
}

} // namespace

HStatus smoothSkinWeights(Scene& scene, Node& cluster, const std::vector<unsigned>& vertices,
                          const SmoothingOptions& options, VertexWeightRecord* record,
                          unsigned* passes) {
    NodePtr geometry = cluster.isAlive() ? skinClusterGeometry(cluster) : nullptr;
    const MeshData* mesh = geometry ? geometry->mesh() : nullptr;
    HStatus status = checkSmoothing(cluster, mesh, vertices);
    if (passes)
        *passes = 0;
    if (!status || vertices.empty())
        return status;
    SkinClusterData& data = *cluster.skinCluster();
    SkinWeights& weights = data.weights();
    // Built here, once: the threads only read it.
    mesh->neighbours(0);
    std::vector<char> locks = influenceLocks(data);
    VertexLocks vertexLocks(cluster);

    const unsigned threads = partCount(vertices.size(), kVerticesPerThread);
    std::vector<VertexSmoother> smoothers(
        threads,
        VertexSmoother(weights, *mesh, locks, vertexLocks, options, data.influenceCount()));
    std::vector<PassChanges> changes(threads);
    const unsigned* list = vertices.data();

    unsigned changedPasses = 0;
    auto changedVertices = std::make_shared<std::vector<unsigned>>();
    for (unsigned pass = 0; pass < options.maxPasses; ++pass) {
        runInParts(vertices.size(), threads, [&](unsigned part, size_t begin, size_t end) {
            smoothers[part].run(list + begin, list + end, changes[part]);
        });

        bool changed = false;
        for (const PassChanges& part : changes) {
            unsigned begin = 0;
            for (size_t i = 0; i < part.vertices.size(); ++i) {
                unsigned vertex = part.vertices[i];
                if (record)
                    record->keep(weights, vertex);
                weights.assign(vertex, part.influences.data() + begin, part.weights.data() + begin,
                               part.ends[i] - begin);
                begin = part.ends[i];
                changedVertices->push_back(vertex);
                changed = true;
            }
        }
        if (!changed)
            break;
        ++changedPasses;
    }
    if (changedPasses > 0)
        scene.notify(
            SceneChange::weightsChanged(cluster.shared_from_this(), std::move(changedVertices)));
    if (passes)
        *passes = changedPasses;
    return HS::kSuccess;
}

} // namespace runtime
