// commandTesting: what the command tests share: a fresh scene with an empty undo queue and
// the default selection modes, running command text as the plug-in does, reading results,
// and a complete description of the scene, so that a test can tell whether undo brought back
// exactly the state before a command.
#pragma once

#include "HGlobal.h"
#include "api/HApiAccess.h"
#include "scene/MeshData.h"
#include "scene/Scene.h"
#include "scene/Selection.h"
#include "scene/SelectionItems.h"
#include "scene/SkinClusterData.h"
#include "sceneFixture.h"
#include "undo/UndoQueue.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace commandtest {

using Texts = std::vector<std::string>;

class CommandTest : public fixture::FreshScene {
protected:
    void SetUp() override {
        FreshScene::SetUp();
        runtime::host().get<runtime::UndoQueue>().flush();
        runtime::selection().setAllComponents(false);
        runtime::selection().setVertices(true);
    }
};

// Runs text with undo on (as the plug-in's edits run) and display off.
inline HStatus run(const std::string& text, bool undo = true) {
    return HGlobal::executeCommand(HString(text), false, undo);
}

inline std::string stringResult(const std::string& text) {
    return HGlobal::executeCommandStringResult(HString(text)).str();
}

using StripWeights = std::array<double, 3>;

// Joints a (-1, 0, 0), b (origin) and c (1, 0, 0) and a strip "body" of six vertices
// (polyPlane -w 2 -h 1 -sx 2 -sy 1, numbered 0 1 2 / 3 4 5, joined by two quads) bound to them
// as cluster1, each vertex with the weights given. The undo queue is left empty.
inline void makeWeightedStrip(const StripWeights (&weights)[6]) {
    ASSERT_TRUE(run("joint -n a -p -1 0 0; select -cl; joint -n b; select -cl; "
                    "joint -n c -p 1 0 0; select -cl; "
                    "polyPlane -n body -w 2 -h 1 -sx 2 -sy 1; "
                    "skinCluster -n cluster1 a b c body; select -cl"));
    runtime::SkinWeights& stored = runtime::scene().findNode("cluster1")->skinCluster()->weights();
    for (unsigned v = 0; v < 6; ++v)
        stored.assignDense(v, weights[v].data(), 3);
    runtime::host().get<runtime::UndoQueue>().flush();
}

inline StripWeights stripWeights(unsigned vertex) {
    StripWeights result{};
    runtime::scene()
        .findNode("cluster1")
        ->skinCluster()
        ->weights()
        .readDense(vertex, result.data(), 3);
    return result;
}

inline void expectStripWeights(unsigned vertex, const StripWeights& expected) {
    StripWeights actual = stripWeights(vertex);
    for (unsigned k = 0; k < 3; ++k)
        EXPECT_NEAR(actual[k], expected[k], 1e-12) << "vertex " << vertex << " influence " << k;
}

inline Texts texts(const HStringArray& array) {
    Texts result;
    for (const HString& text : array)
        result.push_back(text.str());
    return result;
}

inline void expectPoint(const HPoint& actual, double x, double y, double z) {
    EXPECT_NEAR(actual.x, x, 1e-12);
    EXPECT_NEAR(actual.y, y, 1e-12);
    EXPECT_NEAR(actual.z, z, 1e-12);
}

inline Texts selectionTexts() {
    return runtime::itemTexts(runtime::scene(), HApiAccess::items(runtime::selection().active()));
}

inline std::string exact(double value) {
    char text[64];
    std::snprintf(text, sizeof text, "%a", value);
    return text;
}

inline std::string valueText(const runtime::Value& value) {
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

// Everything a command can change: nodes with their place, names, dynamic attributes, stored
// values (existing elements included), connections, mesh sizes, weights bit for bit, and the
// active selection.
inline Texts sceneState() {
    runtime::Scene& scene = runtime::scene();
    Texts state;
    for (const runtime::NodePtr& node : scene.nodesParentsFirst()) {
        std::string name = node->fullPathName();
        std::string place =
            node->isDag() ? " at " + std::to_string(scene.childPosition(*node)) : "";
        state.push_back("node " + name + " " + node->typeName() + place);
        for (const runtime::AttributePtr& attribute : node->dynamicAttributes())
            state.push_back(name + " has " + attribute->longName());
        node->forEachStoredValue([&](const runtime::Plug& plug, const runtime::Value& value) {
            state.push_back(plug.name() + " = " + valueText(value));
        });
        if (const runtime::MeshData* mesh = node->mesh())
            state.push_back(name + " vertices " + std::to_string(mesh->vertexCount()));
        if (const runtime::SkinClusterData* data = node->skinCluster()) {
            for (const runtime::NodePtr& influence : data->influences())
                state.push_back(name + " influence " + influence->fullPathName());
            const runtime::SkinWeights& weights = data->weights();
            for (unsigned v = 0; v < weights.vertexCount(); ++v) {
                std::string line = name + " vtx " + std::to_string(v);
                for (unsigned i = 0; i < weights.entryCount(v); ++i)
                    line += " " + std::to_string(weights.influences(v)[i]) + ":" +
                            exact(weights.weights(v)[i]);
                state.push_back(line);
            }
        }
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

// The lines only one of the states has, for failure messages.
inline std::string differences(const Texts& actual, const Texts& expected) {
    std::string text;
    for (const std::string& line : actual)
        if (std::find(expected.begin(), expected.end(), line) == expected.end())
            text += "\n  unexpected: " + line;
    for (const std::string& line : expected)
        if (std::find(actual.begin(), actual.end(), line) == actual.end())
            text += "\n  missing: " + line;
    if (!text.empty())
        return text;
    size_t at = 0;
    while (at < actual.size() && actual[at] == expected[at])
        ++at;
    return "\n  the same lines in another order, from: " + actual[at] + " (expected " +
           expected[at] + ")";
}

// Runs the command with undo on, then checks that undo gives back the state before it and
// redo the state after it, twice over.
inline void expectUndoAndRedoExact(const std::string& command) {
    Texts before = sceneState();
    ASSERT_TRUE(run(command)) << command;
    Texts after = sceneState();
    ASSERT_NE(before, after) << command << " changed nothing";
    for (int round = 0; round < 2; ++round) {
        ASSERT_TRUE(run("undo", false));
        Texts undone = sceneState();
        EXPECT_TRUE(undone == before) << "after undo of " << command << differences(undone, before);
        ASSERT_TRUE(run("redo", false));
        Texts redone = sceneState();
        EXPECT_TRUE(redone == after) << "after redo of " << command << differences(redone, after);
    }
}

} // namespace commandtest
