#include "files/GltfLockExtras.h"

#include <algorithm>

namespace runtime {

namespace {

using Json = nlohmann::ordered_json;

bool readNames(const Json& entry, const char* key, std::vector<std::string>& names) {
    names.clear();
    if (!entry.contains(key))
        return true;
    const Json& list = entry[key];
    if (!list.is_array())
        return false;
    for (const Json& name : list) {
        if (!name.is_string())
            return false;
        names.push_back(name.get<std::string>());
    }
    return true;
}

bool readVertex(const Json& value, int vertexCount, int& vertex) {
    if (!value.is_number_integer())
        return false;
    long long v = value.get<long long>();
    if (v < 0 || v >= vertexCount)
        return false;
    vertex = static_cast<int>(v);
    return true;
}

bool readLockedVertices(const Json& entry, int vertexCount, std::vector<int>& vertices) {
    vertices.clear();
    if (!entry.contains("lockedVertexIndices"))
        return true;
    const Json& list = entry["lockedVertexIndices"];
    if (!list.is_array())
        return false;
    for (const Json& value : list) {
        int v = 0;
        if (!readVertex(value, vertexCount, v))
            return false;
        vertices.push_back(v);
    }
    std::sort(vertices.begin(), vertices.end());
    vertices.erase(std::unique(vertices.begin(), vertices.end()), vertices.end());
    return true;
}

bool readLockedCells(const Json& entry, int vertexCount, std::vector<CellLocks>& cells) {
    cells.clear();
    if (!entry.contains("lockedCellIndices"))
        return true;
    const Json& list = entry["lockedCellIndices"];
    if (!list.is_array())
        return false;
    for (const Json& item : list) {
        CellLocks cell;
        if (!item.is_object() || !item.contains("vertex") ||
            !readVertex(item["vertex"], vertexCount, cell.vertex) ||
            !readNames(item, "lockedLocalJoints", cell.joints))
            return false;
        cells.push_back(std::move(cell));
    }
    std::stable_sort(cells.begin(), cells.end(),
                     [](const CellLocks& a, const CellLocks& b) { return a.vertex < b.vertex; });
    // A vertex listed twice keeps all its names, in stored order.
    std::vector<CellLocks> merged;
    for (CellLocks& cell : cells) {
        if (!merged.empty() && merged.back().vertex == cell.vertex)
            merged.back().joints.insert(merged.back().joints.end(), cell.joints.begin(),
                                        cell.joints.end());
        else
            merged.push_back(std::move(cell));
    }
    cells = std::move(merged);
    return true;
}

} // namespace

Json skinLocksToJson(int node, const SkinLocks& locks) {
    Json entry = {{"node", node}};
    if (!locks.lockedJointNames.empty())
        entry["lockedJointNames"] = locks.lockedJointNames;
    if (!locks.lockedVertices.empty())
        entry["lockedVertexIndices"] = locks.lockedVertices;
    if (!locks.lockedCells.empty()) {
        Json cells = Json::array();
        for (const CellLocks& cell : locks.lockedCells)
            cells.push_back({{"vertex", cell.vertex}, {"lockedLocalJoints", cell.joints}});
        entry["lockedCellIndices"] = std::move(cells);
    }
    return entry;
}

bool skinLocksFromSkin(const Json& skin, int node, int vertexCount, SkinLocks& locks,
                       std::string& problem) {
    locks = SkinLocks{};
    if (!skin.contains("extras") || !skin["extras"].is_object() ||
        !skin["extras"].contains(kSkinLocksKey))
        return true;
    const Json& entries = skin["extras"][kSkinLocksKey];
    if (!entries.is_array()) {
        problem = std::string(kSkinLocksKey) + " is not a list";
        return false;
    }
    for (const Json& entry : entries) {
        if (!entry.is_object() || !entry.contains("node") || entry["node"] != node)
            continue;
        if (!readNames(entry, "lockedJointNames", locks.lockedJointNames) ||
            !readLockedVertices(entry, vertexCount, locks.lockedVertices) ||
            !readLockedCells(entry, vertexCount, locks.lockedCells)) {
            locks = SkinLocks{};
            problem = "its locks for node " + std::to_string(node) +
                      " are malformed or name vertices the mesh does not have";
            return false;
        }
        return true;
    }
    return true;
}

bool jointLockOfNode(const Json& node) {
    if (!node.contains("extras") || !node["extras"].is_object())
        return false;
    const Json& extras = node["extras"];
    return extras.contains(kJointLockKey) && extras[kJointLockKey] == true;
}

} // namespace runtime
