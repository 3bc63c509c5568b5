#include "scene/Scene.h"

#include "api/StatusReport.h"

#include <algorithm>
#include <cassert>

namespace runtime {

namespace {

const bool registered = registerHostModule(
    kSceneRank, [](HostContext&) { return std::unique_ptr<HostModule>(new Scene); });

// Whether text matches a pattern with '*' (any run) and '?' (any one character).
bool globMatch(const char* pattern, const char* text) {
    const char* starPattern = nullptr;
    const char* starText = nullptr;
    while (*text) {
        if (*pattern == '*') {
            starPattern = ++pattern;
            starText = text;
        } else if (*pattern == '?' || *pattern == *text) {
            ++pattern;
            ++text;
        } else if (starPattern) {
            pattern = starPattern;
            text = ++starText;
        } else {
            return false;
        }
    }
    while (*pattern == '*')
        ++pattern;
    return *pattern == '\0';
}

std::vector<std::string> splitPath(const std::string& path) {
    std::vector<std::string> parts;
    size_t start = 0;
    while (start <= path.size()) {
        size_t bar = path.find('|', start);
        if (bar == std::string::npos)
            bar = path.size();
        parts.push_back(path.substr(start, bar - start));
        start = bar + 1;
    }
    return parts;
}

// Whether the node's path ends with the given names (the last one being the node's).
bool pathEndsWith(const Node& node, const std::vector<std::string>& names, bool fromWorld) {
    const Node* at = &node;
    for (size_t i = names.size(); i-- > 0;) {
        if (!at || at->name() != names[i])
            return false;
        at = at->parent();
    }
    return !fromWorld || at == nullptr;
}

} // namespace

Scene& scene() {
    return host().get<Scene>();
}

Scene::Scene() : m_types(builtInNodeTypes()) {}

Scene::~Scene() {
    clearAll();
}

const NodeType* Scene::nodeType(const std::string& typeName) const {
    for (const NodeTypePtr& type : m_types)
        if (type->name() == typeName)
            return type.get();
    return nullptr;
}

NodePtr Scene::createNode(const std::string& typeName, const std::string& name, Node* parent,
                          HStatus* status) {
    auto typeIt = std::find_if(m_types.begin(), m_types.end(),
                               [&](const NodeTypePtr& t) { return t->name() == typeName; });
    if (typeIt == m_types.end() || (*typeIt)->isAbstract()) {
        report(status, invalidParameter("Unknown node type: " + typeName));
        return nullptr;
    }
    const NodeTypePtr& type = *typeIt;
    if (!name.empty() && !isValidNodeName(name)) {
        report(status, invalidParameter("Invalid node name: " + name));
        return nullptr;
    }
    if (parent && (!type->isDag() || !parent->isAlive() || !parent->isDag() || parent->isShape())) {
        report(status, invalidParameter(type->isDag() ? "The parent must be a transform or a joint."
                                                      : "Only DAG nodes have a parent."));
        return nullptr;
    }
    if (type->isShape() && !parent)
        parent = createNode("transform", std::string(), nullptr, status).get();
    std::string wanted = name.empty() ? typeName + "1" : name;
    auto node = std::make_shared<Node>(type, uniqueName(wanted, nullptr, type->isDag(), parent),
                                       m_nextSerial++);
    m_nodes.emplace(node->serial(), node);
    indexNode(*node);
    if (type->isDag())
        insertChild(parent, node, siblingsOf(parent).size());
    notify({SceneChange::kNodesAdded, {node}, Plug()});
    report(status, HS::kSuccess);
    return node;
}

std::vector<NodePtr> Scene::nodes() const {
    std::vector<NodePtr> all;
    all.reserve(m_nodes.size());
    for (const auto& entry : m_nodes)
        all.push_back(entry.second);
    return all;
}

std::vector<NodePtr> Scene::nodesParentsFirst() const {
    std::vector<NodePtr> ordered;
    ordered.reserve(m_nodes.size());
    std::vector<NodePtr> pending(m_topLevel.rbegin(), m_topLevel.rend());
    while (!pending.empty()) {
        NodePtr node = pending.back();
        pending.pop_back();
        ordered.push_back(node);
        pending.insert(pending.end(), node->children().rbegin(), node->children().rend());
    }
    for (const auto& entry : m_nodes)
        if (!entry.second->isDag())
            ordered.push_back(entry.second);
    return ordered;
}

NodePtr Scene::findNode(const std::string& nameOrPath, HStatus* status) const {
    std::vector<NodePtr> found;
    if (nameOrPath.find_first_of("*?") == std::string::npos)
        found = matchNodes(nameOrPath);
    if (found.size() == 1) {
        report(status, HS::kSuccess);
        return found.front();
    }
    report(status,
           invalidParameter(found.empty() ? "No object matches name: " + nameOrPath
                                          : "More than one object matches name: " + nameOrPath));
    return nullptr;
}

std::vector<NodePtr> Scene::matchNodes(const std::string& pattern) const {
    std::vector<NodePtr> found;
    bool wildcard = pattern.find_first_of("*?") != std::string::npos;
    bool isPath = pattern.find('|') != std::string::npos;
    auto keep = [&](Node* node) { found.push_back(node->shared_from_this()); };
    if (!wildcard && !isPath) {
        auto range = m_byName.equal_range(pattern);
        for (auto it = range.first; it != range.second; ++it)
            keep(it->second);
    } else if (!wildcard) {
        bool fromWorld = pattern[0] == '|';
        std::vector<std::string> names = splitPath(fromWorld ? pattern.substr(1) : pattern);
        auto range = m_byName.equal_range(names.back());
        for (auto it = range.first; it != range.second; ++it)
            if (it->second->isDag() && pathEndsWith(*it->second, names, fromWorld))
                keep(it->second);
    } else {
        for (const auto& entry : m_nodes) {
            const Node& node = *entry.second;
            std::string text = isPath ? node.fullPathName() : node.name();
            bool matches = isPath && pattern[0] != '|'
                               ? globMatch(("*|" + pattern).c_str(), text.c_str())
                               : globMatch(pattern.c_str(), text.c_str());
            if (matches)
                found.push_back(entry.second);
        }
        return found;
    }
    std::sort(found.begin(), found.end(),
              [](const NodePtr& a, const NodePtr& b) { return a->serial() < b->serial(); });
    return found;
}

std::string Scene::partialPathName(const Node& node) const {
    if (!node.isDag())
        return node.name();
    std::vector<std::string> names;
    for (const Node* at : node.pathFromWorld())
        names.push_back(at->name());
    for (size_t count = 1; count <= names.size(); ++count) {
        std::vector<std::string> tail(names.end() - static_cast<std::ptrdiff_t>(count),
                                      names.end());
        size_t matches = 0;
        auto range = m_byName.equal_range(names.back());
        for (auto it = range.first; it != range.second; ++it)
            matches += it->second->isDag() ? pathEndsWith(*it->second, tail, false) : 1;
        if (matches == 1) {
            std::string text;
            for (const std::string& name : tail)
                text += (text.empty() ? "" : "|") + name;
            return text;
        }
    }
    return node.fullPathName();
}

bool Scene::isValidNodeName(const std::string& name) {
    return AttributeDef::isValidName(name);
}

std::string Scene::legalNodeName(const std::string& text) {
    std::string name;
    for (char c : text) {
        bool keep = (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9');
        name += keep ? c : '_';
    }
    if (name.empty() || (name[0] >= '0' && name[0] <= '9'))
        name.insert(name.begin(), '_');
    return name;
}

bool Scene::nameIsFree(const std::string& name, const Node* node, bool dag,
                       const Node* parent) const {
    auto range = m_byName.equal_range(name);
    for (auto it = range.first; it != range.second; ++it) {
        const Node* other = it->second;
        if (other == node)
            continue;
        if (!dag || !other->isDag() || other->parent() == parent)
            return false;
    }
    return true;
}

std::string Scene::uniqueName(const std::string& name, const Node* node, bool dag,
                              const Node* parent) const {
    if (nameIsFree(name, node, dag, parent))
        return name;
    size_t digits = name.size();
    while (digits > 0 && name[digits - 1] >= '0' && name[digits - 1] <= '9')
        --digits;
    std::string stem = name.substr(0, digits);
    unsigned long long number = 1;
    if (digits < name.size() && name.size() - digits <= 9)
        number = std::stoull(name.substr(digits)) + 1;
    else if (digits < name.size())
        stem = name;
    for (;; ++number) {
        std::string candidate = stem + std::to_string(number);
        if (nameIsFree(candidate, node, dag, parent))
            return candidate;
    }
}

std::string Scene::rename(Node& node, const std::string& name, HStatus* status) {
    if (!node.isAlive()) {
        report(status, invalidParameter("The node was deleted."));
        return std::string();
    }
    if (!isValidNodeName(name)) {
        report(status, invalidParameter("Invalid node name: " + name));
        return node.name();
    }
    std::string given = uniqueName(name, &node, node.isDag(), node.parent());
    if (given != node.name()) {
        unindexNode(node);
        node.m_name = given;
        indexNode(node);
        notify({SceneChange::kNodeRenamed, {node.shared_from_this()}, Plug()});
    }
    report(status, HS::kSuccess);
    return given;
}

std::vector<NodePtr>& Scene::siblingsOf(Node* parent) {
    return parent ? parent->m_children : m_topLevel;
}

void Scene::insertChild(Node* parent, const NodePtr& child, size_t position) {
    std::vector<NodePtr>& siblings = siblingsOf(parent);
    position = std::min(position, siblings.size());
    siblings.insert(siblings.begin() + static_cast<std::ptrdiff_t>(position), child);
    child->m_parent = parent;
}

void Scene::removeChild(Node& child) {
    std::vector<NodePtr>& siblings = siblingsOf(child.m_parent);
    siblings.erase(std::find_if(siblings.begin(), siblings.end(),
                                [&](const NodePtr& n) { return n.get() == &child; }));
    child.m_parent = nullptr;
}

size_t Scene::childPosition(const Node& node) const {
    const std::vector<NodePtr>& siblings = node.m_parent ? node.m_parent->m_children : m_topLevel;
    for (size_t i = 0; i < siblings.size(); ++i)
        if (siblings[i].get() == &node)
            return i;
    return siblings.size();
}

HStatus Scene::reparent(Node& node, Node* newParent, int position) {
    if (!node.isAlive() || !node.isDag())
        return invalidParameter("Only live DAG nodes can be parented.");
    if (newParent && (!newParent->isAlive() || !newParent->isDag() || newParent->isShape()))
        return invalidParameter("The parent must be a transform or a joint.");
    if (newParent && (newParent == &node || newParent->isDescendantOf(node)))
        return invalidParameter("A node cannot be parented under itself or its descendants.");
    if (!newParent && node.isShape())
        return invalidParameter("A shape must stay under a transform.");
    removeChild(node);
    size_t at = position < 0 ? siblingsOf(newParent).size() : static_cast<size_t>(position);
    insertChild(newParent, node.shared_from_this(), at);
    std::string given = uniqueName(node.m_name, &node, true, newParent);
    if (given != node.m_name) {
        unindexNode(node);
        node.m_name = given;
        indexNode(node);
    }
    notify({SceneChange::kNodeReparented, {node.shared_from_this()}, Plug()});
    return HS::kSuccess;
}

void Scene::indexNode(Node& node) {
    m_byName.emplace(node.m_name, &node);
}

void Scene::unindexNode(Node& node) {
    auto range = m_byName.equal_range(node.m_name);
    for (auto it = range.first; it != range.second; ++it) {
        if (it->second == &node) {
            m_byName.erase(it);
            return;
        }
    }
}

HStatus Scene::setMeshGeometry(Node& mesh, MeshGeometry geometry) {
    return changeMesh(mesh, [&](MeshData& data) { return data.setGeometry(std::move(geometry)); });
}

HStatus Scene::setMeshPoints(Node& mesh, std::vector<HPoint> points) {
    return changeMesh(mesh, [&](MeshData& data) { return data.setPoints(std::move(points)); });
}

HStatus Scene::changeMesh(Node& mesh, const std::function<HStatus(MeshData&)>& change) {
    if (!mesh.isAlive() || !mesh.mesh())
        return invalidParameter(mesh.name() + " is not a mesh.");
    HStatus status = change(*mesh.mesh());
    if (status)
        notify({SceneChange::kGeometryChanged, {mesh.shared_from_this()}, Plug()});
    return status;
}

Scene::ListenerId Scene::addListener(Listener listener) {
    ListenerId id = m_nextListener++;
    m_listeners.add(id, std::make_shared<Listener>(std::move(listener)), nullptr);
    return id;
}

bool Scene::removeListener(ListenerId id) {
    return m_listeners.remove(id);
}

void Scene::notify(SceneChange change) {
    if (change.kind != SceneChange::kSceneReset)
        m_modified = true;
    if (m_listeners.empty())
        return;
    m_listeners.call([&](const std::shared_ptr<Listener>& listener, void*) {
        std::shared_ptr<Listener> keep = listener;
        (*keep)(change);
    });
}

void Scene::clearAll() {
    for (auto& entry : m_nodes) {
        Node& node = *entry.second;
        node.m_alive = false;
        node.m_parent = nullptr;
        node.m_children.clear();
        node.m_connections.clear();
    }
    m_nodes.clear();
    m_topLevel.clear();
    m_byName.clear();
}

void Scene::reset() {
    clearAll();
    notify({SceneChange::kSceneReset, {}, Plug()});
    m_modified = false;
}

} // namespace runtime
