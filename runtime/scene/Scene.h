// Scene: the dependency graph of the running host: every node, their names, the DAG, the
// connections, and the notices of change. It is the internal interface that the H classes,
// the command language, the file formats and the application build on.
//
// Ownership: the Scene owns the live nodes; handles (HObject, HDagPath, Plug) share them.
// Deleting nodes moves them into a DeletedNodes record that restore() puts back exactly
// (values, dynamic attributes, connections, place among the parent's children), so an undo
// queue only keeps records. Every changing call notifies the listeners once (SceneChange) and
// marks the scene modified; reading never does either.
//
// Names: a non-DAG node's name is unique in the scene; a DAG node's name is unique among its
// siblings and differs from every non-DAG node's name. A taken name gets a number appended
// (or its trailing number raised): "joint" -> "joint1", "joint1" -> "joint2". Look-ups take a
// name, a full path ("|root|spine") or a partial path ("root|spine"); a name that matches
// several nodes is refused with "More than one object matches name: NAME", a missing one with
// "No object matches name: NAME".
//
// Failures (bad names, unknown types, impossible parenting, incompatible connections) return
// a status with a message and change nothing.
//
// Writing a whole scene out (file formats): nodesParentsFirst(); for each node its typeName(),
// name(), parent(), dynamicAttributes() (definitions, children included), forEachStoredValue()
// (each plug as attribute name plus indices()), mesh()->geometry(), and skinCluster()
// (influences, bind-pre matrices, geometry matrix, weights); then connections(). Reading it
// back: into a makeStaging() scene, createNode() in that order, each under its parent;
// addAttribute(); setValue() on Plug(node, attribute, indices); setMeshGeometry(); the
// SkinClusterData setters followed by notify(kWeightsChanged); connect(); then, once all of it
// succeeded, replaceWith() (opening) or takeNodes() (importing), so that a file that fails
// half-way leaves the scene as it was.
#pragma once

#include "HStatus.h"
#include "core/CallbackList.h"
#include "core/HostContext.h"
#include "scene/MeshData.h"
#include "scene/Node.h"
#include "scene/NodeType.h"
#include "scene/SceneChange.h"

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

namespace runtime {

// What deleteNodes() took out of the scene; restore() puts it back.
class DeletedNodes {
public:
    // Every deleted node, the ones asked for and the ones that went with them.
    const std::vector<NodePtr>& nodes() const { return m_nodes; }

private:
    friend class Scene;
    struct Placement {
        NodePtr node;
        NodePtr parent;
        size_t position;
    };
    std::vector<NodePtr> m_nodes;
    std::vector<Placement> m_placements;
    std::vector<ConnectionPtr> m_connections;
};

// What removeAttribute() took off a node; restoreAttribute() puts it back.
class RemovedAttribute {
public:
    const NodePtr& node() const { return m_node; }
    const AttributePtr& attribute() const { return m_attribute; }

private:
    friend class Scene;
    NodePtr m_node;
    AttributePtr m_attribute;
    size_t m_position = 0;
    bool m_hadValues = false;
    ValueTree m_values;
    std::vector<ConnectionPtr> m_connections;
};

// The values stored at one plug (and below it) at one moment, for undoing a write.
struct ValueSnapshot {
    Plug plug;
    bool existed = false;
    ValueTree values;
};

class Scene : public HostModule {
public:
    using Listener = std::function<void(const SceneChange&)>;

    Scene();
    ~Scene() override;

    // Node types by name ("transform", "joint", "mesh", "skinCluster", "objectSet",
    // "groupId"); null when unknown.
    const NodeType* nodeType(const std::string& typeName) const;

    // Creates a node. An empty name gives the type name with a number ("joint1"). parent
    // (null: the world) is for DAG nodes; a shape created without a parent gets a new
    // transform as its parent. Fails for an unknown or abstract type, an invalid name, or a
    // parent that is not a live transform.
    NodePtr createNode(const std::string& typeName, const std::string& name = std::string(),
                       Node* parent = nullptr, HStatus* status = nullptr);

    // Live nodes in creation order.
    std::vector<NodePtr> nodes() const;
    // Live nodes in the order a scene is best written and read back in: the DAG depth first
    // (every node after its parent, siblings in order), then the other nodes in creation
    // order. Creating the nodes in this order, each under its parent, rebuilds the hierarchy.
    std::vector<NodePtr> nodesParentsFirst() const;
    size_t nodeCount() const { return m_nodes.size(); }
    // The DAG nodes directly under the world, in order.
    const std::vector<NodePtr>& topLevelNodes() const { return m_topLevel; }

    // One node by name or path (see above).
    NodePtr findNode(const std::string& nameOrPath, HStatus* status = nullptr) const;
    // Every node whose name (or path, for text containing '|') matches; '*' and '?' are
    // wildcards. Creation order.
    std::vector<NodePtr> matchNodes(const std::string& pattern) const;
    // The shortest trailing part of the node's full path that names only this node.
    std::string partialPathName(const Node& node) const;
    // Renames; returns the name the node got (see the naming rules above).
    std::string rename(Node& node, const std::string& name, HStatus* status = nullptr);
    static bool isValidNodeName(const std::string& name);
    // A valid name made from any text: invalid characters become '_'.
    static std::string legalNodeName(const std::string& text);

    // Moves a DAG node under newParent (null: the world) at position (-1: last). A name taken
    // among the new siblings is made unique. Fails for a parent that is the node itself, one
    // of its descendants, or a shape, and for moving a shape to the world.
    HStatus reparent(Node& node, Node* newParent, int position = -1);
    // The node's position among its parent's (or the world's) children.
    size_t childPosition(const Node& node) const;

    // Deletes nodes with their DAG descendants. A skin cluster takes its set and group id with
    // it; a mesh takes the skin clusters that deform it. Connections to the deleted nodes are
    // removed. Nodes already deleted are skipped.
    std::shared_ptr<DeletedNodes> deleteNodes(const std::vector<NodePtr>& nodes,
                                              HStatus* status = nullptr);
    // Brings deleted nodes back exactly; a name taken in the meantime is made unique, and a
    // connection whose other end is gone or whose destination got another source stays out.
    HStatus restore(const DeletedNodes& record);

    // Dynamic attributes. The definition must be top-level, and none of the names in its tree
    // may be used by the node already.
    HStatus addAttribute(Node& node, const AttributePtr& attribute);
    std::shared_ptr<RemovedAttribute> removeAttribute(Node& node, const AttributeDef* attribute,
                                                      HStatus* status = nullptr);
    HStatus restoreAttribute(const RemovedAttribute& record);

    // Writes a value (converted between numeric types); creates the elements on the way.
    HStatus setValue(const Plug& plug, const Value& value);
    ValueSnapshot snapshot(const Plug& plug) const;
    // Puts back what snapshot() saw, removing elements created since.
    HStatus restoreSnapshot(const ValueSnapshot& snapshot);

    // Connects source to destination; both must be resolved and not whole arrays, and their
    // kinds must fit (a message destination takes anything). A destination that has a source
    // fails unless replace is set; the connection replaced is then given back.
    HStatus connect(const Plug& source, const Plug& destination, bool replace = false,
                    ConnectionPtr* replaced = nullptr);
    HStatus disconnect(const Plug& source, const Plug& destination);
    // The plug's source (asDestination) and/or its destinations (asSource).
    std::vector<Plug> connectedPlugs(const Plug& plug, bool asDestination, bool asSource) const;
    // Every connection once, ordered by the source node's creation.
    std::vector<ConnectionPtr> connections() const;

    // Mesh data (the node must be a mesh).
    HStatus setMeshGeometry(Node& mesh, MeshGeometry geometry);
    HStatus setMeshPoints(Node& mesh, std::vector<HPoint> points);

    using ListenerId = unsigned long long;
    ListenerId addListener(Listener listener);
    bool removeListener(ListenerId id);
    // Sends a notice to the listeners and marks the scene modified (unless it is a reset).
    // For changes made directly on node data (SkinClusterData's weights).
    void notify(SceneChange change);

    // Whether the scene changed since it was last opened, created or saved.
    bool isModified() const { return m_modified; }
    void setModified(bool modified) { m_modified = modified; }

    // Empties the scene (a new scene): every node is deleted for good, listeners get
    // kSceneReset (the selection empties without "SelectionChanged"), isModified() is false.
    void reset();

    // A scene to build into while it is not yet known whether the building succeeds (a file
    // being read): empty, with this scene's node types, numbering its nodes after this scene's,
    // without listeners. What is built there is seen only once replaceWith() or takeNodes()
    // moves it here; dropping the staging scene drops it.
    std::unique_ptr<Scene> makeStaging() const;
    // Opens the staging scene's nodes as this scene: the current nodes are deleted for good,
    // listeners get kSceneReset and then kNodesAdded with the new nodes, isModified() is false.
    // staging is left empty.
    void replaceWith(Scene& staging);
    // Adds the staging scene's nodes to this scene, with their values, connections and
    // hierarchy; names taken here are made unique as createNode() does. Listeners get
    // kNodesAdded. Returns the nodes added, parents first; staging is left empty.
    std::vector<NodePtr> takeNodes(Scene& staging);

private:
    bool nameIsFree(const std::string& name, const Node* node, bool dag, const Node* parent) const;
    std::string uniqueName(const std::string& name, const Node* node, bool dag,
                           const Node* parent) const;
    std::vector<NodePtr>& siblingsOf(Node* parent);
    void insertChild(Node* parent, const NodePtr& child, size_t position);
    void removeChild(Node& child);
    void indexNode(Node& node);
    void unindexNode(Node& node);
    std::vector<NodePtr> expandDeletion(const std::vector<NodePtr>& nodes) const;
    void attachConnection(const ConnectionPtr& connection);
    void detachConnection(const ConnectionPtr& connection);
    void clearAll();
    HStatus changeMesh(Node& mesh, const std::function<HStatus(MeshData&)>& change);
    // Takes staging's nodes out of it, leaving it empty, parents first.
    std::vector<NodePtr> releaseNodes(Scene& staging);

    std::vector<NodeTypePtr> m_types;
    std::map<std::uint64_t, NodePtr> m_nodes;
    std::vector<NodePtr> m_topLevel;
    std::unordered_multimap<std::string, Node*> m_byName;
    std::uint64_t m_nextSerial = 1;
    CallbackList<std::shared_ptr<Listener>> m_listeners;
    ListenerId m_nextListener = 1;
    bool m_modified = false;
};

// The running host's scene.
Scene& scene();

} // namespace runtime
