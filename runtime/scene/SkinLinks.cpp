#include "scene/SkinLinks.h"

namespace runtime {

std::vector<Plug> linkedPlugs(const Node& node, const std::string& attributeName, bool asSource) {
    std::vector<Plug> found;
    for (const ConnectionPtr& connection : node.connections()) {
        const Plug& mine = asSource ? connection->source : connection->destination;
        const Plug& other = asSource ? connection->destination : connection->source;
        if (mine.node().get() == &node && mine.attribute()->longName() == attributeName &&
            other.node()->isAlive())
            found.push_back(other);
    }
    return found;
}

namespace {

NodePtr firstOfKind(const std::vector<Plug>& plugs, HFn::Type kind) {
    for (const Plug& plug : plugs)
        if (plug.node()->hasFn(kind))
            return plug.node();
    return nullptr;
}

} // namespace

NodePtr skinClusterGeometry(const Node& cluster) {
    return firstOfKind(linkedPlugs(cluster, "outputGeometry", true), HFn::kMesh);
}

NodePtr skinClusterOfGeometry(const Node& mesh) {
    return firstOfKind(linkedPlugs(mesh, "inMesh", false), HFn::kSkinClusterFilter);
}

NodePtr skinClusterSet(const Node& cluster) {
    return firstOfKind(linkedPlugs(cluster, "message", true), HFn::kSet);
}

NodePtr setGroupId(const Node& set) {
    return firstOfKind(linkedPlugs(set, "groupNodes", false), HFn::kGroupId);
}

} // namespace runtime
