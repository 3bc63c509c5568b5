// SceneDescription: a skinned scene as plain values, where the file formats meet the live scene.
//
// A reader fills one from a file; a writer turns one into a file; the scene's converter builds the
// live scene from one and makes one from the live scene. Everything is held by value and
// referenced by position: a node's parent, a node's mesh, a skin's mesh node and joints are
// indices into `nodes` and `meshes`. Numbers are kept as the file has them: no change of units or
// axes, points and weights as doubles, vertex order as in the file.
//
// `source` is the one shared part: a read-only handle on the document the description was read
// from, which a writer of the same format uses to keep everything the host does not model
// (materials, animations, extensions...). The `sourceIndex` fields tie nodes, meshes and skins to
// their counterparts in that document. Whoever builds a description for writing back keeps
// `source` and the `sourceIndex` of every element that came from it, and leaves -1 on elements
// the host created.
//
// Nothing here fails; `firstInconsistency()` says what is wrong with a description that did not
// come from a reader, which a writer checks before it starts.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace runtime {

// A 4x4 matrix in column-major order: element (row r, column c) is at [c * 4 + r], so the
// translation of an affine matrix is at [12], [13], [14].
using Matrix4 = std::array<double, 16>;
Matrix4 identityMatrix();

// A node's transform relative to its parent: either translation, rotation and scale (applied
// scale first, then rotation, then translation), or a matrix, whichever the file gave.
struct NodeTransform {
    enum class Form { kComponents, kMatrix };
    Form form = Form::kComponents;
    std::array<double, 3> translation{0.0, 0.0, 0.0};
    std::array<double, 4> rotation{0.0, 0.0, 0.0, 1.0}; // unit quaternion x, y, z, w
    std::array<double, 3> scale{1.0, 1.0, 1.0};
    Matrix4 matrix = identityMatrix(); // used when form is kMatrix

    bool operator==(const NodeTransform& other) const;
    bool operator!=(const NodeTransform& other) const { return !(*this == other); }
};

struct SceneNode {
    // As in the file: may be empty, and need not be unique, not even among siblings.
    std::string name;
    // Index of the parent node, always lower than the node's own index; -1 for a root.
    int parent = -1;
    NodeTransform transform;
    // The node is an influence of a skin (the host makes it a joint).
    bool isJoint = false;
    // The joint's own lock ("lockInfluenceWeights").
    bool lockInfluenceWeights = false;
    // Index into `meshes` of the mesh this node shows; -1 for none.
    int mesh = -1;
    int sourceIndex = -1;
};

struct SceneMesh {
    std::string name;
    // Vertex positions, in the order of the file.
    std::vector<std::array<double, 3>> points;
    // Polygons: polygonSizes[i] vertices each, their vertex indices one after the other in
    // polygonVertices.
    std::vector<int> polygonSizes;
    std::vector<int> polygonVertices;
    int sourceIndex = -1;

    int vertexCount() const { return static_cast<int>(points.size()); }
};

struct SkinWeight {
    int influence = 0; // position in the skin's `joints`
    double weight = 0.0;

    bool operator==(const SkinWeight& other) const {
        return influence == other.influence && weight == other.weight;
    }
};

// An entry of weights given in no particular vertex order, for SparseSkinWeights::gather().
struct VertexWeight {
    int vertex = 0;
    int influence = 0;
    double weight = 0.0;
};

// Per-vertex sparse weights, stored one vertex after the other. Absent influences weigh 0.
// Each vertex holds each influence at most once; nothing is normalised.
class SparseSkinWeights {
public:
    struct Range {
        const SkinWeight* first;
        const SkinWeight* last;
        const SkinWeight* begin() const { return first; }
        const SkinWeight* end() const { return last; }
        std::size_t size() const { return static_cast<std::size_t>(last - first); }
    };

    int vertexCount() const { return static_cast<int>(m_offsets.size()) - 1; }
    std::size_t entryCount() const { return m_entries.size(); }
    Range vertex(int v) const;
    // The weight of one influence on one vertex (0 when absent).
    double weight(int v, int influence) const;

    // Building vertex by vertex: startVertex() opens the next vertex, add() gives it a weight;
    // adding an influence the vertex already has adds to its weight.
    void reserve(std::size_t vertices, std::size_t entries);
    void startVertex();
    void add(int influence, double weight);
    void clear();

    // Builds the weights of `vertexCount` vertices from entries in any order; entries of one
    // vertex keep their order, repeated influences add up. Every entry's vertex must be in range.
    static SparseSkinWeights gather(int vertexCount, const std::vector<VertexWeight>& entries);

    // Same vertices with the same weights per influence, in whatever order each vertex lists
    // them.
    bool sameWeights(const SparseSkinWeights& other) const;
    bool sameWeights(const SparseSkinWeights& other, int firstVertex, int vertexCount) const;
    bool operator==(const SparseSkinWeights& other) const;

private:
    std::vector<std::uint32_t> m_offsets{0};
    std::vector<SkinWeight> m_entries;
};

// The locks the weight editor stores on a skin cluster, named after the attributes that hold
// them in the scene.
struct CellLocks {
    int vertex = 0;
    // "lockedCellIndices"[vertex].lockedLocalJoints: full path names, in stored order.
    std::vector<std::string> joints;

    bool operator==(const CellLocks& other) const {
        return vertex == other.vertex && joints == other.joints;
    }
};

struct SkinLocks {
    // "lockedJointNames": full path names of locked influences, in stored order (repeats kept).
    std::vector<std::string> lockedJointNames;
    // The vertex indices whose "lockedVertexIndices" element is on, ascending, each once.
    std::vector<int> lockedVertices;
    // The vertices that have cell locks, ascending by vertex, each vertex once.
    std::vector<CellLocks> lockedCells;

    bool empty() const {
        return lockedJointNames.empty() && lockedVertices.empty() && lockedCells.empty();
    }
    bool operator==(const SkinLocks& other) const {
        return lockedJointNames == other.lockedJointNames &&
               lockedVertices == other.lockedVertices && lockedCells == other.lockedCells;
    }
    bool operator!=(const SkinLocks& other) const { return !(*this == other); }
};

// One skin cluster: the weights with which joints move the vertices of one mesh node.
struct SceneSkin {
    // The node whose mesh this skin deforms.
    int meshNode = -1;
    // The influences, as node indices; a joint's position here is its influence index.
    std::vector<int> joints;
    // One per joint: the inverse of the joint's world matrix when the skin was bound, in the
    // mesh's space.
    std::vector<Matrix4> inverseBindMatrices;
    // One entry per vertex of the mesh.
    SparseSkinWeights weights;
    SkinLocks locks;
    // The skin of the source document this one came from (for glTF: the index in "skins";
    // several skin clusters may share one).
    int sourceIndex = -1;
};

// The document a description was read from, as its format keeps it. Only writers of that format
// look inside (with dynamic_cast).
class SceneSource {
public:
    virtual ~SceneSource();
};

struct SceneDescription {
    std::vector<SceneNode> nodes;
    std::vector<SceneMesh> meshes;
    std::vector<SceneSkin> skins;
    std::shared_ptr<const SceneSource> source;
};

// How deep a file's hierarchy may be: far deeper than any rig, and shallow enough that full path
// names and code that walks the hierarchy stay in proportion to the file.
constexpr int kMaxHierarchyDepth = 256;
std::string tooDeepProblem(int node);

// The first thing that makes the description unusable (an index out of range, a parent after
// its child, a hierarchy deeper than kMaxHierarchyDepth, a weight that is not a finite
// number...), or an empty string when there is none.
std::string firstInconsistency(const SceneDescription& scene);

} // namespace runtime
