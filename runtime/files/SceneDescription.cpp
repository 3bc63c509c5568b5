#include "files/SceneDescription.h"

#include <algorithm>
#include <cassert>
#include <cmath>
#include <set>
#include <string>

namespace runtime {

Matrix4 identityMatrix() {
    return {1.0, 0.0, 0.0, 0.0, 0.0, 1.0, 0.0, 0.0, 0.0, 0.0, 1.0, 0.0, 0.0, 0.0, 0.0, 1.0};
}

bool NodeTransform::operator==(const NodeTransform& other) const {
    if (form != other.form)
        return false;
    if (form == Form::kMatrix)
        return matrix == other.matrix;
    return translation == other.translation && rotation == other.rotation && scale == other.scale;
}

SceneSource::~SceneSource() = default;

SparseSkinWeights::Range SparseSkinWeights::vertex(int v) const {
    assert(v >= 0 && v < vertexCount());
    const SkinWeight* base = m_entries.data();
    return {base + m_offsets[v], base + m_offsets[v + 1]};
}

double SparseSkinWeights::weight(int v, int influence) const {
    for (const SkinWeight& entry : vertex(v))
        if (entry.influence == influence)
            return entry.weight;
    return 0.0;
}

void SparseSkinWeights::reserve(std::size_t vertices, std::size_t entries) {
    m_offsets.reserve(vertices + 1);
    m_entries.reserve(entries);
}

void SparseSkinWeights::startVertex() {
    m_offsets.push_back(m_offsets.back());
}

void SparseSkinWeights::add(int influence, double weight) {
    assert(vertexCount() > 0);
    auto first = m_entries.begin() + m_offsets[m_offsets.size() - 2];
    auto same = std::find_if(first, m_entries.end(),
                             [&](const SkinWeight& e) { return e.influence == influence; });
    if (same != m_entries.end()) {
        same->weight += weight;
        return;
    }
    m_entries.push_back({influence, weight});
    ++m_offsets.back();
}

void SparseSkinWeights::clear() {
    m_offsets.assign(1, 0);
    m_entries.clear();
}

SparseSkinWeights SparseSkinWeights::gather(int vertexCount,
                                            const std::vector<VertexWeight>& entries) {
    // A counting sort by vertex keeps each vertex's entries in their given order.
    std::vector<std::uint32_t> starts(static_cast<std::size_t>(vertexCount) + 1, 0);
    for (const VertexWeight& entry : entries) {
        assert(entry.vertex >= 0 && entry.vertex < vertexCount);
        ++starts[entry.vertex + 1];
    }
    for (int v = 0; v < vertexCount; ++v)
        starts[v + 1] += starts[v];
    std::vector<const VertexWeight*> ordered(entries.size());
    std::vector<std::uint32_t> next(starts.begin(), starts.end() - 1);
    for (const VertexWeight& entry : entries)
        ordered[next[entry.vertex]++] = &entry;

    SparseSkinWeights weights;
    weights.reserve(static_cast<std::size_t>(vertexCount), entries.size());
    for (int v = 0; v < vertexCount; ++v) {
        weights.startVertex();
        for (std::uint32_t i = starts[v]; i < starts[v + 1]; ++i)
            weights.add(ordered[i]->influence, ordered[i]->weight);
    }
    return weights;
}

bool SparseSkinWeights::sameWeights(const SparseSkinWeights& other) const {
    return vertexCount() == other.vertexCount() && sameWeights(other, 0, vertexCount());
}

bool SparseSkinWeights::sameWeights(const SparseSkinWeights& other, int firstVertex,
                                    int count) const {
    assert(firstVertex >= 0 && firstVertex + count <= vertexCount());
    if (firstVertex + count > other.vertexCount())
        return false;
    for (int v = firstVertex; v < firstVertex + count; ++v) {
        Range mine = vertex(v);
        Range theirs = other.vertex(v);
        if (mine.size() != theirs.size())
            return false;
        for (const SkinWeight& entry : mine)
            if (std::find(theirs.begin(), theirs.end(), entry) == theirs.end())
                return false;
    }
    return true;
}

bool SparseSkinWeights::operator==(const SparseSkinWeights& other) const {
    return m_offsets == other.m_offsets && m_entries == other.m_entries;
}

namespace {

// Influence indices are stored in 16 bits by the formats that store them most compactly.
constexpr std::size_t kMaxInfluences = 65536;

bool finite(double value) {
    return std::isfinite(value);
}

template <std::size_t N> bool allFinite(const std::array<double, N>& values) {
    return std::all_of(values.begin(), values.end(), finite);
}

std::string nodeProblem(const SceneDescription& scene, int i) {
    const SceneNode& node = scene.nodes[i];
    const std::string what = "node " + std::to_string(i);
    if (node.parent < -1 || node.parent >= i)
        return what + " has a parent that does not come before it";
    if (node.mesh < -1 || node.mesh >= static_cast<int>(scene.meshes.size()))
        return what + " shows a mesh that does not exist";
    const NodeTransform& t = node.transform;
    if (!allFinite(t.translation) || !allFinite(t.rotation) || !allFinite(t.scale) ||
        !allFinite(t.matrix))
        return what + " has a transform that is not finite";
    return {};
}

std::string meshProblem(const SceneMesh& mesh, int i) {
    const std::string what = "mesh " + std::to_string(i);
    for (const auto& point : mesh.points)
        if (!allFinite(point))
            return what + " has a point that is not finite";
    std::size_t corners = 0;
    for (int size : mesh.polygonSizes) {
        if (size < 1)
            return what + " has an empty polygon";
        corners += static_cast<std::size_t>(size);
    }
    if (corners != mesh.polygonVertices.size())
        return what + " has polygon sizes that do not match its polygon vertices";
    for (int v : mesh.polygonVertices)
        if (v < 0 || v >= mesh.vertexCount())
            return what + " has a polygon vertex out of range";
    return {};
}

std::string locksProblem(const SkinLocks& locks, int vertexCount, const std::string& what) {
    int previous = -1;
    for (int v : locks.lockedVertices) {
        if (v <= previous || v >= vertexCount)
            return what + " has locked vertices out of range or out of order";
        previous = v;
    }
    previous = -1;
    for (const CellLocks& cell : locks.lockedCells) {
        if (cell.vertex <= previous || cell.vertex >= vertexCount)
            return what + " has cell locks out of range or out of order";
        previous = cell.vertex;
    }
    return {};
}

std::string skinProblem(const SceneDescription& scene, const SceneSkin& skin, int i) {
    const std::string what = "skin " + std::to_string(i);
    const int nodeCount = static_cast<int>(scene.nodes.size());
    if (skin.meshNode < 0 || skin.meshNode >= nodeCount || scene.nodes[skin.meshNode].mesh < 0)
        return what + " does not deform a node with a mesh";
    if (skin.joints.size() > kMaxInfluences)
        return what + " has more than " + std::to_string(kMaxInfluences) + " joints";
    std::set<int> seen;
    for (int joint : skin.joints)
        if (joint < 0 || joint >= nodeCount || !seen.insert(joint).second)
            return what + " has a joint out of range or twice";
    if (skin.inverseBindMatrices.size() != skin.joints.size())
        return what + " needs one inverse bind matrix per joint";
    for (const Matrix4& matrix : skin.inverseBindMatrices)
        if (!allFinite(matrix))
            return what + " has an inverse bind matrix that is not finite";
    const int vertexCount = scene.meshes[scene.nodes[skin.meshNode].mesh].vertexCount();
    if (skin.weights.vertexCount() != vertexCount)
        return what + " has weights for " + std::to_string(skin.weights.vertexCount()) +
               " vertices, its mesh has " + std::to_string(vertexCount);
    const int influenceCount = static_cast<int>(skin.joints.size());
    for (int v = 0; v < vertexCount; ++v)
        for (const SkinWeight& entry : skin.weights.vertex(v))
            if (entry.influence < 0 || entry.influence >= influenceCount || !finite(entry.weight))
                return what + " has a weight out of range or not finite on vertex " +
                       std::to_string(v);
    return locksProblem(skin.locks, vertexCount, what);
}

std::string skinsProblem(const SceneDescription& scene) {
    std::set<int> deformed;
    for (int i = 0; i < static_cast<int>(scene.skins.size()); ++i) {
        if (std::string problem = skinProblem(scene, scene.skins[i], i); !problem.empty())
            return problem;
        if (!deformed.insert(scene.skins[i].meshNode).second)
            return "node " + std::to_string(scene.skins[i].meshNode) +
                   " is deformed by more than one skin";
    }
    return {};
}

} // namespace

std::string tooDeepProblem(int node) {
    return "node " + std::to_string(node) + " is more than " + std::to_string(kMaxHierarchyDepth) +
           " levels deep in the hierarchy";
}

std::string firstInconsistency(const SceneDescription& scene) {
    std::vector<int> depths(scene.nodes.size(), 1);
    for (int i = 0; i < static_cast<int>(scene.nodes.size()); ++i) {
        if (std::string problem = nodeProblem(scene, i); !problem.empty())
            return problem;
        const int parent = scene.nodes[i].parent;
        depths[i] = parent < 0 ? 1 : depths[parent] + 1;
        if (depths[i] > kMaxHierarchyDepth)
            return tooDeepProblem(i);
    }
    for (int i = 0; i < static_cast<int>(scene.meshes.size()); ++i)
        if (std::string problem = meshProblem(scene.meshes[i], i); !problem.empty())
            return problem;
    return skinsProblem(scene);
}

} // namespace runtime
