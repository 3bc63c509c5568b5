// ComponentText: reads component strings such as "body.vtx[3]", "body.vtx[2:5]",
// "bodyShape.vtx[*]", "|body|bodyShape.e[7]" and "body.f[0:9]".
//
// A pure function of the text: it never looks at the scene, never throws, and rejects
// anything malformed (empty object name, unknown kind, missing or unbalanced brackets, signs,
// numbers beyond 2^31 - 1, a range whose end comes before its start, trailing text) with
// kInvalidParameter and a message naming the text. looksLikeComponent() tells a component
// string from a plain name before parsing; componentKindText() gives the word of a kind for
// writing component strings.
#pragma once

#include "HFn.h"
#include "HStatus.h"

#include <string>

namespace runtime {

struct ComponentText {
    // The object part: a name or a path, as written.
    std::string object;
    // kMeshVertComponent ("vtx"), kMeshEdgeComponent ("e") or kMeshPolygonComponent ("f").
    HFn::Type kind = HFn::kInvalid;
    // "[*]": every element.
    bool all = false;
    // The inclusive range ("[3]" gives 3 to 3).
    int first = 0;
    int last = 0;
};

// Whether text has the shape NAME.KIND[...]: an object part, a dot, and a bracket.
bool looksLikeComponent(const std::string& text);
HStatus parseComponentText(const std::string& text, ComponentText& component);
// "vtx", "e" or "f"; "vtx" for any other kind.
const char* componentKindText(HFn::Type kind);

} // namespace runtime
