#include "scene/PlugPath.h"

#include "api/StatusReport.h"
#include "scene/AttributeDef.h"
#include "scene/Node.h"
#include "scene/Scene.h"

#include <climits>

namespace runtime {

namespace {

HStatus invalid(const std::string& text) {
    return HStatus(HS::kInvalidParameter, "Invalid attribute name: " + text);
}

bool nameCharacter(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '_';
}

// Reads "name" or "name[index]" from text[at...] up to the next '.' or the end.
bool readStep(const std::string& text, size_t& at, PlugPathText::Step& step) {
    size_t start = at;
    while (at < text.size() && nameCharacter(text[at]))
        ++at;
    if (at == start)
        return false;
    step.attribute = text.substr(start, at - start);
    step.index = -1;
    if (at < text.size() && text[at] == '[') {
        long long number = 0;
        size_t digits = ++at;
        while (at < text.size() && text[at] >= '0' && text[at] <= '9') {
            number = number * 10 + (text[at] - '0');
            if (number > INT_MAX)
                return false;
            ++at;
        }
        if (at == digits || at >= text.size() || text[at] != ']')
            return false;
        ++at;
        step.index = static_cast<int>(number);
    }
    return at == text.size() || text[at] == '.';
}

// The plug of the attribute named `name` below plug's attribute, going through any
// compounds in between; null when there is none.
Plug descendant(const Plug& plug, const std::string& name) {
    const AttributeDef* target = nullptr;
    for (size_t c = 0; c < plug.attribute()->childCount() && !target; ++c)
        target = plug.attribute()->child(c)->findInTree(name);
    if (!target)
        return Plug();
    std::vector<const AttributeDef*> down;
    for (const AttributeDef* def = target; def != plug.attribute(); def = def->parentInTree())
        down.push_back(def);
    Plug result = plug;
    for (auto it = down.rbegin(); it != down.rend(); ++it)
        result = result.child(**it);
    return result;
}

} // namespace

HStatus parsePlugPath(const std::string& text, PlugPathText& path) {
    size_t dot = text.find('.');
    if (dot == std::string::npos || dot == 0)
        return invalid(text);
    PlugPathText result;
    result.object = text.substr(0, dot);
    for (char c : result.object)
        if (!nameCharacter(c) && c != '|')
            return invalid(text);
    size_t at = dot;
    while (at < text.size()) {
        ++at; // the '.'
        PlugPathText::Step step;
        if (!readStep(text, at, step))
            return invalid(text);
        result.steps.push_back(step);
    }
    path = result;
    return HS::kSuccess;
}

Plug findPlug(const Scene& scene, const std::string& text, HStatus* status) {
    PlugPathText path;
    HStatus parsed = parsePlugPath(text, path);
    if (!parsed) {
        if (status)
            *status = parsed;
        return Plug();
    }
    return findPlug(scene, path, status);
}

Plug findPlug(const Scene& scene, const PlugPathText& path, HStatus* status) {
    HStatus result;
    NodePtr node = scene.findNode(path.object, &result);
    Plug plug;
    for (size_t i = 0; result && i < path.steps.size(); ++i) {
        const PlugPathText::Step& step = path.steps[i];
        if (i == 0) {
            plug = node->plug(step.attribute);
        } else {
            plug = descendant(plug, step.attribute);
        }
        if (plug.isNull()) {
            result =
                invalidParameter("No attribute " + step.attribute + " on " + node->name() + ".");
        } else if (step.index >= 0) {
            plug = plug.element(static_cast<unsigned>(step.index));
            if (plug.isNull())
                result = invalidParameter("Attribute " + step.attribute + " is not an array.");
        }
    }
    if (status)
        *status = result;
    return result ? plug : Plug();
}

} // namespace runtime
