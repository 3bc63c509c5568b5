// skinWeights: weights files out and back in (by index, by position, with remapped
// influences and the weight editor's locks), limit, quantize and mirror on random clusters with
// random locks, their messages, and exact undo.
#include "OutputRecorder.h"
#include "commandTesting.h"
#include "document/SkinLockAttributes.h"
#include "scene/MeshData.h"
#include "scene/NodeValues.h"
#include "scene/SkinBinding.h"
#include "scene/SkinLinks.h"
#include "scene/WeightQuantizing.h"

#include <QTemporaryDir>
#include <fstream>
#include <numeric>
#include <random>

using commandtest::expectUndoAndRedoExact;
using commandtest::run;
using commandtest::sceneState;
using commandtest::Texts;

namespace {

runtime::SkinWeights& weightsOf(const std::string& cluster) {
    return runtime::scene().findNode(cluster)->skinCluster()->weights();
}

int intResult(const std::string& command) {
    int result = -1;
    EXPECT_TRUE(HGlobal::executeCommand(HString(command), result, false, true)) << command;
    return result;
}

class SkinWeights : public commandtest::CommandTest {
protected:
    std::string file(const char* name) const { return m_folder.filePath(name).toStdString(); }
    std::string quoted(const char* name) const { return "\"" + file(name) + "\""; }

    // A random skinned mesh with random joint locks and locked vertices.
    fixture::SkinnedMesh randomCluster(unsigned seed) {
        fixture::SkinnedMesh mesh = fixture::makeSkinnedMesh(
            {120, fixture::MeshShape::kCylinder, 8, 2 + seed % 5, seed, "body", "cluster1"});
        std::mt19937 random(seed);
        for (const runtime::NodePtr& joint : mesh.joints)
            EXPECT_TRUE(run("setAttr " + joint->name() + ".liw " +
                                std::to_string(random() % 4 == 0 ? 1 : 0),
                            false));
        for (int n = 0; n < 10; ++n)
            EXPECT_TRUE(run("setAttr cluster1.lockVertex[" + std::to_string(random() % 120) + "] 1",
                            false));
        return mesh;
    }

    QTemporaryDir m_folder;
};

void expectScene(const Texts& expected, const char* why = "") {
    const Texts now = sceneState();
    EXPECT_TRUE(now == expected) << why << commandtest::differences(now, expected);
}

// For every vertex of the cluster: unchanged, or changed by the edit and checked by `check`
// against its weights before. Locked vertices and locked influences must keep their weights.
template <typename Check>
unsigned expectEachVertex(const runtime::SkinWeights& before, const std::string& cluster,
                          const Check& check) {
    const runtime::Node& node = *runtime::scene().findNode(cluster);
    const runtime::SkinClusterData& data = *node.skinCluster();
    unsigned unchanged = 0;
    std::vector<double> old(data.influenceCount()), now(data.influenceCount());
    for (unsigned v = 0; v < before.vertexCount(); ++v) {
        before.readDense(v, old.data(), data.influenceCount());
        data.weights().readDense(v, now.data(), data.influenceCount());
        if (old == now) {
            ++unchanged;
            continue;
        }
        EXPECT_FALSE(runtime::boolValue(node, "lockVertex[" + std::to_string(v) + "]"));
        for (unsigned i = 0; i < data.influenceCount(); ++i) {
            if (runtime::storedBool(*data.influences()[i], "lockInfluenceWeights")) {
                EXPECT_EQ(now[i], old[i]) << "locked influence " << i << " of vertex " << v;
            }
        }
        check(v, data.weights());
    }
    return unchanged;
}

// The number of vertices a warning says were left unchanged (0 without one).
unsigned leftUnchanged(const OutputRecorder& output) {
    Texts warnings = output.texts(HCommandMessage::kWarning);
    return warnings.empty() ? 0u : static_cast<unsigned>(std::stoul(warnings[0].substr(13)));
}

} // namespace

TEST_F(SkinWeights, ExportChangeAndImportRestoresEveryWeightAndLock) {
    fixture::SkinnedMesh mesh = randomCluster(7);
    runtime::SkinLocks locks;
    locks.lockedJointNames = {"|bodyJoint2"};
    locks.lockedVertices = {4};
    locks.lockedCells = {{9, {"|bodyJoint3"}}};
    ASSERT_TRUE(runtime::writeSkinLocks(runtime::scene(), *mesh.cluster, locks));
    const Texts before = sceneState();
    EXPECT_EQ(intResult("skinWeights -export " + quoted("w.json")), 120);
    ASSERT_TRUE(run("setAttr bodyJoint1.liw 0; setAttr bodyJoint5.liw 1; setAttr "
                    "cluster1.lockedVertexIndices[4] 0; setAttr cluster1.lockedVertexIndices[11] 1;"
                    "setAttr -type \"stringArray\" cluster1.lockedJointNames 0;"
                    "skinWeights -quantize 7; skinWeights -limit 1"));
    const Texts changed = sceneState();
    ASSERT_NE(changed, before);
    EXPECT_EQ(intResult("skinWeights -import " + quoted("w.json") + " body"), 120);
    expectScene(before);
    ASSERT_TRUE(run("undo", false));
    expectScene(changed, "after undo: ");
    ASSERT_TRUE(run("redo", false));
    expectScene(before, "after redo: ");
    EXPECT_EQ(intResult("skinWeights -import " + quoted("w.json")), 120);
    expectScene(before, "importing what is there changes nothing");
}

TEST_F(SkinWeights, ImportByPositionGivesEveryPlaceItsWeightsOnAShuffledCopy) {
    fixture::SkinnedMesh original =
        fixture::makeSkinnedMesh({300, fixture::MeshShape::kGrid, 6, 4, 11, "body", "cluster1"});
    ASSERT_EQ(intResult("skinWeights -ex " + quoted("w.json")), 300);
    // The same points in another order, with faces to match, bound to the same joints under
    // other names.
    std::vector<int> order(300);
    std::iota(order.begin(), order.end(), 0);
    std::shuffle(order.begin(), order.end(), std::mt19937(5));
    std::vector<int> newIndex(300);
    runtime::MeshGeometry geometry;
    const runtime::MeshGeometry& source = original.shape->mesh()->geometry();
    for (int n = 0; n < 300; ++n) {
        geometry.points.push_back(source.points[static_cast<size_t>(order[n])]);
        newIndex[static_cast<size_t>(order[n])] = n;
    }
    geometry.polygonSizes = source.polygonSizes;
    for (int vertex : source.polygonVertices)
        geometry.polygonVertices.push_back(newIndex[static_cast<size_t>(vertex)]);
    runtime::Scene& scene = runtime::scene();
    runtime::NodePtr copy = scene.createNode("mesh", "copyShape");
    ASSERT_TRUE(scene.setMeshGeometry(*copy, geometry));
    ASSERT_TRUE(run("rename bodyJoint1 hip; rename bodyJoint2 spine", false));
    ASSERT_TRUE(runtime::createSkinCluster(scene, original.joints, *copy, runtime::SkinWeights(300),
                                           "copyCluster"));
    ASSERT_TRUE(run("skinWeights -import " + quoted("w.json") +
                    " -method position -remap bodyJoint1 hip -rm bodyJoint2 spine copyCluster"));
    const runtime::SkinWeights& imported = weightsOf("copyCluster");
    const runtime::SkinWeights& exported = weightsOf("cluster1");
    for (int n = 0; n < 300; ++n) {
        const unsigned from = static_cast<unsigned>(order[static_cast<size_t>(n)]);
        ASSERT_EQ(imported.entryCount(static_cast<unsigned>(n)), exported.entryCount(from));
        for (unsigned i = 0; i < exported.entryCount(from); ++i) {
            EXPECT_EQ(imported.influences(static_cast<unsigned>(n))[i],
                      exported.influences(from)[i]);
            EXPECT_EQ(imported.weights(static_cast<unsigned>(n))[i], exported.weights(from)[i]);
        }
    }
    expectUndoAndRedoExact("skinWeights -import " + quoted("w.json") +
                           " -m index -rm bodyJoint1 hip -rm bodyJoint2 spine copyCluster");
}

TEST_F(SkinWeights, LimitHoldsItsInvariantsOnRandomClustersWithRandomLocks) {
    for (unsigned seed = 1; seed <= 6; ++seed) {
        SCOPED_TRACE("seed " + std::to_string(seed));
        ASSERT_TRUE(run("file -f -new", false));
        randomCluster(seed);
        const runtime::SkinWeights before = weightsOf("cluster1");
        const Texts state = sceneState();
        OutputRecorder output;
        const int changed = intResult("skinWeights -limit 2 -prune 0.1");
        const unsigned unchanged = expectEachVertex(
            before, "cluster1", [](unsigned v, const runtime::SkinWeights& weights) {
                EXPECT_LE(weights.entryCount(v), 2u) << "vertex " << v;
                double sum = 0.0;
                for (unsigned i = 0; i < weights.entryCount(v); ++i) {
                    EXPECT_GE(weights.weights(v)[i], 0.1);
                    sum += weights.weights(v)[i];
                }
                EXPECT_NEAR(sum, 1.0, 1e-12) << "vertex " << v;
            });
        EXPECT_EQ(static_cast<unsigned>(changed), 120 - unchanged);
        EXPECT_LE(leftUnchanged(output), unchanged);
        ASSERT_TRUE(run("undo", false));
        expectScene(state);
    }
}

TEST_F(SkinWeights, QuantizeHoldsItsInvariantsOnRandomClustersWithRandomLocks) {
    for (unsigned seed = 1; seed <= 6; ++seed) {
        SCOPED_TRACE("seed " + std::to_string(seed));
        ASSERT_TRUE(run("file -f -new", false));
        randomCluster(seed);
        const runtime::SkinWeights before = weightsOf("cluster1");
        const unsigned steps = seed % 2 ? 255 : 65535;
        OutputRecorder output;
        const int changed = intResult("skinWeights -qz " + std::to_string(steps) + " body");
        unsigned refusedOrKept = expectEachVertex(
            before, "cluster1", [&](unsigned v, const runtime::SkinWeights& weights) {
                long long total = 0;
                for (unsigned i = 0; i < weights.entryCount(v); ++i) {
                    const long long count = runtime::wholeSteps(weights.weights(v)[i], steps);
                    EXPECT_GT(count, 0) << "vertex " << v;
                    total += count;
                }
                EXPECT_EQ(total, steps) << "vertex " << v;
            });
        EXPECT_EQ(static_cast<unsigned>(changed), 120 - refusedOrKept);
        EXPECT_EQ(leftUnchanged(output), refusedOrKept) << "no random vertex is quantized already";
        const Texts quantized = sceneState();
        EXPECT_EQ(intResult("skinWeights -quantize " + std::to_string(steps)), 0);
        expectScene(quantized);
    }
}

TEST_F(SkinWeights, MirrorTwiceGivesTheFirstResultBack) {
    ASSERT_TRUE(run("joint -n spine; select -cl; joint -n arm_L -p 1 0 0; joint -n hand_L -p 2 0 "
                    "0; select -cl; joint -n arm_R -p -1 0 0; joint -n hand_R -p -2 0 0; "
                    "select -cl; polyPlane -n body -w 4 -h 2 -sx 8 -sy 3;"
                    "skinCluster -n cluster1 -mi 5 spine arm_L hand_L arm_R hand_R body",
                    false));
    // Random weights, so that the two sides differ.
    runtime::SkinWeights& weights = weightsOf("cluster1");
    std::mt19937 random(9);
    std::vector<double> dense(5);
    for (unsigned v = 0; v < weights.vertexCount(); ++v) {
        for (double& weight : dense)
            weight = std::uniform_real_distribution<>(0.0, 1.0)(random);
        weights.assignDense(v, dense.data(), 5);
    }
    ASSERT_TRUE(run("setAttr body.tx 3", false)) << "mirroring goes by the bind pose";
    const std::vector<HPoint>& points = runtime::scene().findNode("bodyShape")->mesh()->points();
    const runtime::SkinWeights before = weights;
    expectUndoAndRedoExact("skinWeights -mirror x");
    const Texts mirrored = sceneState();
    const unsigned swap[] = {0, 3, 4, 1, 2};
    for (unsigned v = 0; v < points.size(); ++v) {
        unsigned image = 0;
        while (points[image].x != -points[v].x || points[image].z != points[v].z)
            ++image;
        for (unsigned i = 0; i < 5; ++i) {
            const double now = weights.weight(v, i);
            if (points[v].x > 0)
                EXPECT_EQ(now, before.weight(v, i));
            else if (points[v].x < 0)
                EXPECT_EQ(now, before.weight(image, swap[i])) << "vertex " << v;
            else
                EXPECT_EQ(now, (before.weight(v, i) + before.weight(v, swap[i])) * 0.5);
        }
    }
    EXPECT_EQ(intResult("skinWeights -mirror x"), 0);
    expectScene(mirrored);
    const runtime::SkinWeights once = weights;
    ASSERT_TRUE(run("skinWeights -mirror x -direction negative -sideNames _L _R body.vtx[0:17]"));
    for (unsigned v = 0; v < points.size(); ++v)
        for (unsigned i = 0; i < 5; ++i)
            EXPECT_EQ(weights.weight(v, i), once.weight(v, i))
                << "the sides are each other's mirror images already";
}

TEST_F(SkinWeights, WarnsOfVerticesItLeavesAndOfWeightsThatDoNotSumToOne) {
    commandtest::makeWeightedStrip({{1.0, 0.0, 0.0},
                                    {0.5, 0.5, 0.0},
                                    {0.0, 1.0, 0.0},
                                    {0.6, 0.0, 0.4},
                                    {0.2, 0.6, 0.2},
                                    {0.0, 0.5, 0.7}});
    OutputRecorder output;
    ASSERT_TRUE(run("setAttr a.liw 1; skinWeights -limit 1 body.vtx[3:4]"));
    ASSERT_TRUE(run("skinWeights -export " + quoted("w.json")));
    ASSERT_TRUE(run("skinWeights -import " + quoted("w.json") + " body.vtx[4:5]"));
    ASSERT_TRUE(run("setAttr cluster1.lockVertex[1] 1; skinWeights -quantize 3 body.vtx[1]"));
    ASSERT_TRUE(run("polyPlane -n arm_R -w 1 -h 1; setAttr arm_R.tx -3; skinCluster -n armSkin a "
                    "c arm_R; skinWeights -mirror x arm_R body.vtx[0]"));
    EXPECT_EQ(output.texts(HCommandMessage::kWarning),
              (Texts{"skinWeights: 2 vertices were left unchanged: limiting would change a locked "
                     "weight or leave no weight.",
                     "skinWeights: The weights of 1 vertex do not sum to 1.",
                     "skinWeights: 1 vertex was left unchanged: quantizing would change a locked "
                     "weight, or there is no weight to share the steps by.",
                     "skinWeights: armSkin has no vertex on the side to mirror from. Its weights "
                     "were left as they are.",
                     "skinWeights: 1 vertex was left unchanged: mirroring would change a locked "
                     "weight."}));
}

TEST_F(SkinWeights, BadInputIsRefusedWithItsProblemAndChangesNothing) {
    commandtest::makeWeightedStrip({{1.0, 0.0, 0.0},
                                    {0.5, 0.5, 0.0},
                                    {0.0, 1.0, 0.0},
                                    {0.6, 0.0, 0.4},
                                    {0.2, 0.6, 0.2},
                                    {0.0, 0.5, 0.5}});
    ASSERT_TRUE(run("polyCube -n box; select -cl; skinWeights -ex " + quoted("w.json"), false));
    std::ofstream(file("other.json"))
        << R"({"format": "vorel-skin-weights", "version": 1, "skinClusters": [
{"mesh": "|other|otherShape", "vertexCount": 7, "influences": [{"name": "x"}, {"name": "a"},
 {"name": "y"}], "vertices": [[6, [0, 0, 0], [[0, 1]]]]}]})";
    std::ofstream(file("bad.json")) << R"({"format": "vorel-skin-weights", "version": 3})";
    const Texts before = sceneState();
    OutputRecorder output;
    const std::string commands[] = {
        "skinWeights",
        "skinWeights -limit 4 -quantize 255",
        "skinWeights -limit 0",
        "skinWeights -quantize -3",
        "skinWeights -limit 4 -prune -0.5",
        "skinWeights -mirror w",
        "skinWeights -mirror x -direction up",
        "skinWeights -mirror x -tolerance -1",
        "skinWeights -mirror x -sideNames L \"\"",
        "skinWeights -limit 4 -method index",
        "skinWeights -import " + quoted("w.json") + " -method nearest",
        "skinWeights -limit 2 nothere",
        "skinWeights -limit 2 box",
        "skinWeights -import " + quoted("missing.json"),
        "skinWeights -import " + quoted("bad.json"),
        "skinWeights -import " + quoted("other.json"),
        "skinWeights -import " + quoted("other.json") + " -remap x b -remap y c",
        "skinWeights -import " + quoted("other.json") + " -m position -rm x b -rm y c box body",
        "skinWeights -export \"\"",
    };
    for (const std::string& command : commands)
        EXPECT_FALSE(run(command)) << command;
    const std::string folder = m_folder.path().toStdString();
    EXPECT_EQ(output.texts(HCommandMessage::kError),
              (Texts{
                  "skinWeights: Give one of -export, -import, -limit, -quantize and -mirror.",
                  "skinWeights: Give one of -limit and -quantize, not both.",
                  "skinWeights: -limit needs 1 or more.",
                  "skinWeights: -quantize needs 1 or more.",
                  "skinWeights: -prune needs 0 or more.",
                  "skinWeights: -mirror takes x, y or z.",
                  "skinWeights: -direction takes positive or negative.",
                  "skinWeights: -tolerance needs 0 or more.",
                  "skinWeights: -sideNames needs two names that are not empty.",
                  "skinWeights: -method goes with -import.",
                  "skinWeights: -method takes index or position.",
                  "No object matches name: nothere",
                  "skinWeights: box is not a skin cluster or a skinned mesh.",
                  "skinWeights: Cannot read \"" + folder +
                      "/missing.json\": the file does not "
                      "exist.",
                  "skinWeights: Cannot read \"" + folder +
                      "/bad.json\": line 1, column 45: "
                      "version 3 is not known (this host "
                      "reads version 1).",
                  "skinWeights: cluster1 lacks influences of the file: x, y.",
                  "skinWeights: bodyShape has 6 vertices, but the file's mesh |other|otherShape "
                  "has 7.",
                  "skinWeights: box is not a skin cluster or a skinned mesh.",
                  "skinWeights: -export needs a file name.",
              }));
    expectScene(before);
    output.clear();
    EXPECT_FALSE(run("skinWeights -export " + quoted("no/such/folder/w.json")));
    const std::string cannot =
        "skinWeights: Cannot write \"" + folder + "/no/such/folder/w.json\": ";
    ASSERT_EQ(output.texts(HCommandMessage::kError).size(), 1u);
    EXPECT_EQ(output.texts(HCommandMessage::kError)[0].rfind(cannot, 0), 0u);
}
