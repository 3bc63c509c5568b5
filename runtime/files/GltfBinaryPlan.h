// GltfBinaryPlan: the binary side of a glTF document being written.
//
// The writer names each accessor it replaces or adds, and the one place in the document that
// refers to it (replace()). finish() then decides where each goes: an accessor that nothing
// else in the document still uses hands its index, and its buffer view, to the new data, so
// that the indices of every other accessor and buffer view stay as they were; the others are
// appended. It lays out every buffer view, old and new, one after the other in a single buffer
// and returns that buffer's bytes; the document's "buffers" become that one buffer (index 0),
// which the caller embeds or stores as the GLB BIN chunk.
//
// The plan borrows the document and the source buffers; both must outlive it. Call finish()
// once, after every other change to the document: it counts the references as they are then.
#pragma once

#include <cstddef>
#include <nlohmann/json.hpp>
#include <string>
#include <vector>

namespace runtime {

// glTF buffer view targets.
constexpr int kVertexDataTarget = 34962;
constexpr int kIndexDataTarget = 34963;

struct AccessorData {
    int componentType = 0;
    std::string type; // "SCALAR", "VEC3", "VEC4", "MAT4"
    std::size_t count = 0;
    std::vector<unsigned char> bytes; // tightly packed elements
    nlohmann::ordered_json min;       // left out when null
    nlohmann::ordered_json max;
    int target = 0; // the buffer view's target; 0 for none
};

class GltfBinaryPlan {
public:
    GltfBinaryPlan(nlohmann::ordered_json& document,
                   const std::vector<std::vector<unsigned char>>& sourceBuffers);

    // `site` is a JSON pointer ("/meshes/0/primitives/1/attributes/JOINTS_0") to the place that
    // will refer to the accessor; the accessor it refers to now, if any, is the one replaced.
    void replace(const std::string& site, AccessorData data);

    // Places every accessor, points each site at its accessor, lays out the buffer and returns
    // its bytes (empty when the document has no binary data).
    std::vector<unsigned char> finish();

private:
    struct Replacement {
        nlohmann::ordered_json::json_pointer site;
        AccessorData data;
        int accessor = -1;
        int view = -1;
    };

    std::vector<int> accessorReferences() const;
    std::vector<int> viewReferences(const std::vector<bool>& rewritten) const;
    void placeAccessors();
    void placeViews();
    std::vector<unsigned char> layOut();

    nlohmann::ordered_json& m_document;
    const std::vector<std::vector<unsigned char>>& m_sourceBuffers;
    std::vector<Replacement> m_replacements;
    std::vector<int> m_freedViews;
};

} // namespace runtime
