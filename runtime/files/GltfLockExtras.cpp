#include "files/GltfLockExtras.h"

#include <algorithm>

namespace runtime {

namespace {

using Json = nlohmann::ordered_json;

// Reads entry[key], a list, item by item; an absent key is an empty list.
template <typename T, typename ReadItem>
bool readList(const Json& entry, const char* key, std::vector<T>& values, ReadItem readItem) {
    values.clear();
    if (!entry.contains(key))
        return true;
    const Json& list = entry[key];
    if (!list.is_array())
        return false;
    for (const Json& item : list) {
        T value{};
        if (!readItem(item, value))
            return false;
        values.push_back(std::move(value));
    }
    return true;
}

bool readName(const Json& item, std::string& name) {
    if (!item.is_string())
        return false;
    name = item.get<std::string>();
    return true;
}

bool readVertexIndex(const Json& item, int vertexCount, int& vertex) {
    if (!item.is_number_integer() || item.get<long long>() < 0 ||
        item.get<long long>() >= vertexCount)
        return false;
    vertex = item.get<int>();
    return true;
}

bool readLockedVertices(const Json& entry, int vertexCount, std::vector<int>& vertices) {
    auto readVertex = [vertexCount](const Json& item, int& vertex) {
        return readVertexIndex(item, vertexCount, vertex);
    };
    if (!readList(entry, "lockedVertexIndices", vertices, readVertex))
        return false;
    std::sort(vertices.begin(), vertices.end());
    vertices.erase(std::unique(vertices.begin(), vertices.end()), vertices.end());
    return true;
}

bool readLockedCells(const Json& entry, int vertexCount, std::vector<CellLocks>& cells) {
    auto readCell = [vertexCount](const Json& item, CellLocks& cell) {
        return item.is_object() && item.contains("vertex") &&
               readVertexIndex(item["vertex"], vertexCount, cell.vertex) &&
               readList(item, "lockedLocalJoints", cell.joints, readName);
    };
    if (!readList(entry, "lockedCellIndices", cells, readCell))
        return false;
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
        if (!readList(entry, "lockedJointNames", locks.lockedJointNames, readName) ||
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
