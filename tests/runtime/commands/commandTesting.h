// commandTesting: what the command tests share: a fresh scene with an empty undo queue and
// the default selection modes, running command text as the plug-in does, reading results, and
// checking with the whole scene's state (sceneState.h) that undo brings back exactly the state
// before a command.
#pragma once

#include "HGlobal.h"
#include "api/HApiAccess.h"
#include "scene/MeshData.h"
#include "scene/Scene.h"
#include "scene/Selection.h"
#include "scene/SelectionItems.h"
#include "scene/SkinClusterData.h"
#include "sceneFixture.h"
#include "sceneState.h"
#include "undo/UndoQueue.h"

#include <array>
#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace commandtest {

using fixture::differences;
using fixture::exact;
using fixture::sceneState;
using fixture::selectionTexts;
using fixture::Texts;
using fixture::valueText;

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

// The strip weights the weight-writing commands' tests start from.
inline const StripWeights kStripStart[6] = {{1.0, 0.0, 0.0}, {0.5, 0.5, 0.0}, {0.0, 1.0, 0.0},
                                            {0.6, 0.0, 0.4}, {0.2, 0.6, 0.2}, {0.0, 0.5, 0.5}};

// A fresh scene holding the strip with kStripStart.
class WeightedStripTest : public CommandTest {
protected:
    void SetUp() override {
        CommandTest::SetUp();
        makeWeightedStrip(kStripStart);
    }
};

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
