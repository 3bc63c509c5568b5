#include "scene/ComponentText.h"

#include <climits>

namespace runtime {

namespace {

HStatus invalid(const std::string& text) {
    return HStatus(HS::kInvalidParameter, "Invalid component: " + text);
}

// Reads a non-negative decimal int at text[at...]; false when there is none or it overflows.
bool readIndex(const std::string& text, size_t& at, int& value) {
    size_t start = at;
    long long number = 0;
    while (at < text.size() && text[at] >= '0' && text[at] <= '9') {
        number = number * 10 + (text[at] - '0');
        if (number > INT_MAX)
            return false;
        ++at;
    }
    value = static_cast<int>(number);
    return at > start;
}

bool validObjectCharacter(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '_' ||
           c == '|';
}

} // namespace

bool looksLikeComponent(const std::string& text) {
    size_t dot = text.rfind('.');
    return dot != std::string::npos && dot > 0 && text.find('[', dot) != std::string::npos;
}

HStatus parseComponentText(const std::string& text, ComponentText& component) {
    size_t dot = text.rfind('.');
    size_t open = dot == std::string::npos ? std::string::npos : text.find('[', dot);
    if (dot == std::string::npos || dot == 0 || open == std::string::npos)
        return invalid(text);
    std::string object = text.substr(0, dot);
    for (char c : object)
        if (!validObjectCharacter(c))
            return invalid(text);
    if (object.back() == '|' || object.find("||") != std::string::npos)
        return invalid(text);

    std::string kindText = text.substr(dot + 1, open - dot - 1);
    HFn::Type kind = kindText == "vtx" ? HFn::kMeshVertComponent
                     : kindText == "e" ? HFn::kMeshEdgeComponent
                     : kindText == "f" ? HFn::kMeshPolygonComponent
                                       : HFn::kInvalid;
    if (kind == HFn::kInvalid)
        return invalid(text);

    ComponentText result;
    result.object = object;
    result.kind = kind;
    size_t at = open + 1;
    if (at < text.size() && text[at] == '*') {
        result.all = true;
        ++at;
    } else {
        if (!readIndex(text, at, result.first))
            return invalid(text);
        result.last = result.first;
        if (at < text.size() && text[at] == ':') {
            ++at;
            if (!readIndex(text, at, result.last) || result.last < result.first)
                return invalid(text);
        }
    }
    if (at + 1 != text.size() || text[at] != ']')
        return invalid(text);
    component = result;
    return HS::kSuccess;
}

const char* componentKindText(HFn::Type kind) {
    switch (kind) {
    case HFn::kMeshEdgeComponent:
        return "e";
    case HFn::kMeshPolygonComponent:
        return "f";
    default:
        return "vtx";
    }
}

} // namespace runtime
