#include "scene/NodeValues.h"

#include "scene/Node.h"
#include "scene/Scene.h"

namespace runtime {

namespace {

template <typename T> T read(const Node& node, const std::string& attribute, T fallback) {
    Value value;
    Value converted;
    if (!node.plug(attribute).read(value) ||
        !convertValue(value, valueTypeOf(Value(T())), converted))
        return fallback;
    return std::get<T>(converted);
}

} // namespace

bool boolValue(const Node& node, const std::string& attribute, bool fallback) {
    return read<bool>(node, attribute, fallback);
}

int intValue(const Node& node, const std::string& attribute, int fallback) {
    return read<int>(node, attribute, fallback);
}

double doubleValue(const Node& node, const std::string& attribute, double fallback) {
    return read<double>(node, attribute, fallback);
}

bool storedBool(const Node& node, const std::string& attribute, bool fallback) {
    const AttributeDef* def = node.findAttribute(attribute);
    if (!def || def->parentInTree() || def->isArray())
        return fallback;
    const ValueTree* tree = node.storedValues(def);
    Value converted;
    const Value& value = tree && tree->hasValue() ? tree->value() : def->defaultValue();
    return convertValue(value, ValueType::kBool, converted) ? std::get<bool>(converted) : fallback;
}

HPoint tripleValue(const Node& node, const std::string& attribute) {
    Plug plug = node.plug(attribute);
    double xyz[3] = {0.0, 0.0, 0.0};
    for (size_t i = 0; i < 3; ++i) {
        Value value;
        Value number;
        if (plug.child(i).read(value) && convertValue(value, ValueType::kDouble, number))
            xyz[i] = std::get<double>(number);
    }
    return HPoint(xyz[0], xyz[1], xyz[2]);
}

HStatus setTripleValue(Scene& scene, Node& node, const std::string& attribute,
                       const HPoint& value) {
    Plug plug = node.plug(attribute);
    const double xyz[3] = {value.x, value.y, value.z};
    for (size_t i = 0; i < 3; ++i) {
        HStatus status = scene.setValue(plug.child(i), xyz[i]);
        if (!status)
            return status;
    }
    return HS::kSuccess;
}

} // namespace runtime
