// PlugPath: plugs named in text, "node.attr", "|root|spine.translateX",
// "skinCluster1.lockedCellIndices[12].lockedLocalJoints[0]", as the command language and the
// file formats write them.
//
// parsePlugPath() is a pure function of the text: it never looks at the scene, never throws,
// and rejects malformed text (empty parts, bad characters, signs or overflowing indices,
// unbalanced brackets) with kInvalidParameter. findPlug() then resolves the parts: the node by
// name or path (with the Scene's look-up messages), the first attribute by long or short name
// (a child attribute leaves its array ancestors open), each further attribute among the
// descendants of the previous one, and an index only where the attribute is an array.
#pragma once

#include "HStatus.h"
#include "scene/Plug.h"

#include <string>
#include <vector>

namespace runtime {

class Scene;

struct PlugPathText {
    struct Step {
        std::string attribute;
        // The logical index in brackets, or -1 when there is none.
        int index = -1;
    };
    std::string object;
    std::vector<Step> steps;
};

HStatus parsePlugPath(const std::string& text, PlugPathText& path);
Plug findPlug(const Scene& scene, const std::string& text, HStatus* status = nullptr);
Plug findPlug(const Scene& scene, const PlugPathText& path, HStatus* status = nullptr);

} // namespace runtime
