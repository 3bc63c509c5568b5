#include "sceneState.h"

#include "api/HApiAccess.h"
#include "scene/MeshData.h"
#include "scene/Scene.h"
#include "scene/Selection.h"
#include "scene/SelectionItems.h"
#include "scene/SkinClusterData.h"

#include <algorithm>
#include <cstdio>

namespace fixture {

namespace {

std::string matrixText(const runtime::Matrix& matrix) {
    std::string text;
    for (const auto& row : matrix.m)
        for (double value : row)
            text += " " + exact(value);
    return text;
}

std::string definitionText(const runtime::AttributeDef& def) {
    std::string text = def.longName() + "/" + def.shortName() + " kind " +
                       std::to_string(static_cast<int>(def.kind())) + " type " +
                       std::to_string(static_cast<int>(def.valueType())) + " default " +
                       valueText(def.defaultValue()) + (def.isArray() ? " array" : "");
    for (size_t i = 0; i < def.childCount(); ++i)
        text += " (" + definitionText(*def.child(i)) + ")";
    return text;
}

// Every place that holds a value or exists as an element, below one attribute.
void treeLines(const std::string& name, const runtime::AttributeDef& def,
               const runtime::ValueTree& tree, bool arrayLevel, Texts& lines) {
    if (def.isArray() && arrayLevel) {
        lines.push_back(name + " has " + std::to_string(tree.elementCount()) + " elements");
        for (size_t i = 0; i < tree.elementCount(); ++i)
            treeLines(name + "[" + std::to_string(tree.logicalIndexAt(i)) + "]", def,
                      tree.elementAt(i), false, lines);
        return;
    }
    if (def.kind() == runtime::AttributeKind::kCompound) {
        lines.push_back(name + " exists");
        for (size_t c = 0; c < def.childCount(); ++c)
            if (const runtime::ValueTree* child = tree.child(c))
                treeLines(name + "." + def.child(c)->longName(), *def.child(c), *child, true,
                          lines);
        return;
    }
    // An array element counts as an element with or without a value; any other place without a
    // value reads as its default and cannot be told from one that holds nothing.
    if (tree.hasValue())
        lines.push_back(name + " = " + valueText(tree.value()));
    else if (def.isArray())
        lines.push_back(name + " = (no value)");
}

void meshLines(const std::string& name, const runtime::MeshData& mesh, Texts& state) {
    std::string points = name + " points";
    for (const HPoint& p : mesh.points())
        points += " " + exact(p.x) + "," + exact(p.y) + "," + exact(p.z);
    state.push_back(points);
    std::string polygons = name + " polygons";
    for (int size : mesh.geometry().polygonSizes)
        polygons += " " + std::to_string(size);
    for (int vertex : mesh.geometry().polygonVertices)
        polygons += " " + std::to_string(vertex);
    state.push_back(polygons);
}

void skinLines(const std::string& name, const runtime::SkinClusterData& data, Texts& state) {
    for (unsigned k = 0; k < data.influenceCount(); ++k)
        state.push_back(name + " influence " + data.influences()[k]->fullPathName() + " bind" +
                        matrixText(data.bindPreMatrix(k)));
    state.push_back(name + " geometry matrix" + matrixText(data.geometryMatrix()));
    const runtime::SkinWeights& weights = data.weights();
    for (unsigned v = 0; v < weights.vertexCount(); ++v) {
        std::string line = name + " vtx " + std::to_string(v);
        for (unsigned i = 0; i < weights.entryCount(v); ++i)
            line +=
                " " + std::to_string(weights.influences(v)[i]) + ":" + exact(weights.weights(v)[i]);
        state.push_back(line);
    }
}

} // namespace

std::string exact(double value) {
    char text[64];
    std::snprintf(text, sizeof text, "%a", value);
    return text;
}

std::string valueText(const runtime::Value& value) {
    switch (runtime::valueTypeOf(value)) {
    case runtime::ValueType::kBool:
        return std::get<bool>(value) ? "true" : "false";
    case runtime::ValueType::kInt:
        return std::to_string(std::get<int>(value));
    case runtime::ValueType::kDouble:
        return exact(std::get<double>(value));
    case runtime::ValueType::kString:
        return "\"" + std::get<std::string>(value) + "\"";
    case runtime::ValueType::kStringArray: {
        std::string text = "[";
        for (const std::string& item : std::get<runtime::StringList>(value))
            text += "\"" + item + "\" ";
        return text + "]";
    }
    case runtime::ValueType::kNone:
        break;
    }
    return "none";
}

Texts selectionTexts() {
    return runtime::itemTexts(runtime::scene(), HApiAccess::items(runtime::selection().active()));
}

Texts sceneState() {
    runtime::Scene& scene = runtime::scene();
    Texts state;
    for (const runtime::NodePtr& node : scene.nodesParentsFirst()) {
        std::string name = node->fullPathName();
        std::string place =
            node->isDag() ? " at " + std::to_string(scene.childPosition(*node)) : "";
        state.push_back("node " + name + " " + node->typeName() + place);
        for (const runtime::AttributePtr& attribute : node->dynamicAttributes())
            state.push_back(name + " has " + definitionText(*attribute));
        for (const runtime::AttributeDef* attribute : node->attributes())
            if (const runtime::ValueTree* tree = node->storedValues(attribute))
                treeLines(name + "." + attribute->longName(), *attribute, *tree, true, state);
        if (const runtime::MeshData* mesh = node->mesh())
            meshLines(name, *mesh, state);
        if (const runtime::SkinClusterData* data = node->skinCluster())
            skinLines(name, *data, state);
    }
    // Sorted: a node's connections may come back in another order; each plug's are its own.
    Texts connections;
    for (const runtime::ConnectionPtr& connection : scene.connections())
        connections.push_back(connection->source.name() + " -> " + connection->destination.name());
    std::sort(connections.begin(), connections.end());
    state.insert(state.end(), connections.begin(), connections.end());
    for (const std::string& item : selectionTexts())
        state.push_back("selected " + item);
    return state;
}

std::string differences(const Texts& actual, const Texts& expected) {
    std::string text;
    for (const std::string& line : actual)
        if (std::find(expected.begin(), expected.end(), line) == expected.end())
            text += "\n  unexpected: " + line;
    for (const std::string& line : expected)
        if (std::find(actual.begin(), actual.end(), line) == actual.end())
            text += "\n  missing: " + line;
    if (!text.empty())
        return text;
    if (actual.size() != expected.size())
        return "\n  the same lines, repeated differently";
    size_t at = 0;
    while (at < actual.size() && actual[at] == expected[at])
        ++at;
    if (at == actual.size())
        return std::string();
    return "\n  the same lines in another order, from: " + actual[at] + " (expected " +
           expected[at] + ")";
}

} // namespace fixture
