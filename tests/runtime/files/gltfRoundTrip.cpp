#include "files/GltfReader.h"
#include "files/GltfWriter.h"
#include "gltfTestFiles.h"

#include <cmath>
#include <gtest/gtest.h>

using namespace runtime;
using filetest::GltfFile;
using filetest::Json;

namespace {

void write(const SceneDescription& scene, const std::string& path) {
    FileResult result = writeGltf(scene, path);
    ASSERT_TRUE(result.ok()) << result.message;
    EXPECT_TRUE(result.warnings.empty()) << result.warnings.front();
}

// Every top-level section but those named is the same in both documents.
void expectSameSectionsExcept(const Json& before, const Json& after,
                              const std::vector<std::string>& changed) {
    for (const Json* document : {&before, &after})
        for (auto it = document->begin(); it != document->end(); ++it) {
            if (std::find(changed.begin(), changed.end(), it.key()) == changed.end()) {
                EXPECT_EQ(before.value(it.key(), Json()), after.value(it.key(), Json()))
                    << it.key();
            }
        }
}

double sum(const std::vector<double>& values, std::size_t first, std::size_t count) {
    double total = 0.0;
    for (std::size_t i = first; i < first + count; ++i)
        total += values[i];
    return total;
}

class GltfRoundTrip : public filetest::FolderTest {};

} // namespace

TEST_F(GltfRoundTrip, UnchangedSceneKeepsEverythingButTheBinaryLayout) {
    SKIP_WITHOUT_TEST_ASSETS();
    for (const char* sample : {"gltf/RiggedSimple.gltf", "gltf/SimpleSkin.gltf"}) {
        for (const char* extension : {".gltf", ".glb"}) {
            const std::string source = filetest::assetPath(sample);
            const std::string target = path(std::string("copy") + extension);
            SceneDescription scene = filetest::readScene(source);
            write(scene, target);
            expectSameSectionsExcept(GltfFile::load(source).json, GltfFile::load(target).json,
                                     {"buffers", "bufferViews"});
            SceneDescription again = filetest::readScene(target);
            EXPECT_TRUE(again.skins[0].weights == scene.skins[0].weights) << sample << extension;
            EXPECT_EQ(again.meshes[0].points, scene.meshes[0].points);
            EXPECT_EQ(again.meshes[0].polygonVertices, scene.meshes[0].polygonVertices);
        }
    }
}

TEST_F(GltfRoundTrip, EditedWeightsChangeOnlyTheirAccessors) {
    SKIP_WITHOUT_TEST_ASSETS();
    const std::string source = filetest::assetPath("gltf/RiggedSimple.gltf");
    SceneDescription scene = filetest::readScene(source);
    SparseSkinWeights& weights = scene.skins[0].weights;
    const SparseSkinWeights original = weights;
    weights = filetest::withVertexWeights(weights, 50, {{0, 0.2}, {1, 0.3}});
    weights = filetest::withVertexWeights(weights, 10, {{1, 1.0}});
    write(scene, path("edited.glb"));

    const Json before = GltfFile::load(source).json;
    const Json after = GltfFile::load(path("edited.glb")).json;
    expectSameSectionsExcept(before, after, {"accessors", "bufferViews", "buffers"});
    // The weight set keeps its accessor indices (1 and 4); every other accessor is untouched.
    ASSERT_EQ(after["accessors"].size(), before["accessors"].size());
    for (std::size_t a = 0; a < before["accessors"].size(); ++a) {
        if (a != 1 && a != 4) {
            EXPECT_EQ(after["accessors"][a], before["accessors"][a]) << "accessor " << a;
        }
    }

    const SparseSkinWeights reread = filetest::readScene(path("edited.glb")).skins[0].weights;
    EXPECT_NEAR(reread.weight(50, 0), 0.4, 1e-7);
    EXPECT_NEAR(reread.weight(50, 1), 0.6, 1e-7);
    EXPECT_EQ(reread.vertex(10).size(), 1u);
    EXPECT_EQ(reread.weight(10, 1), 1.0);
    for (int v = 0; v < original.vertexCount(); ++v) {
        if (v == 10 || v == 50)
            continue;
        for (int influence : {0, 1}) {
            EXPECT_NEAR(reread.weight(v, influence), original.weight(v, influence), 2e-7)
                << "vertex " << v;
        }
    }
}

TEST_F(GltfRoundTrip, WeightsAreWrittenLargestFirstInSetsOfFourSummingToOne) {
    const SceneDescription scene = filetest::jointChainOverQuad();
    FileResult result = writeGltf(scene, path("sets.glb"));
    ASSERT_TRUE(result.ok()) << result.message;
    EXPECT_EQ(
        result.warnings,
        std::vector<std::string>{
            "1 vertices of mesh \"quad\" had no weight; each was given to its nearest joint."});

    const GltfFile file = GltfFile::load(path("sets.glb"));
    const Json& attributes = file.json["meshes"][0]["primitives"][0]["attributes"];
    EXPECT_TRUE(attributes.contains("JOINTS_1"));
    EXPECT_FALSE(attributes.contains("JOINTS_2"));
    std::vector<double> joints, values;
    for (int set : {0, 1}) {
        const std::vector<double> j = file.numbers(attributes["JOINTS_" + std::to_string(set)]);
        const std::vector<double> w = file.numbers(attributes["WEIGHTS_" + std::to_string(set)]);
        EXPECT_EQ(file.json["accessors"][attributes["JOINTS_" + std::to_string(set)].get<int>()]
                           ["componentType"],
                  5121);
        // Vertex-major, both sets side by side: eight slots per vertex.
        for (int v = 0; v < 4; ++v) {
            joints.insert(joints.end(), j.begin() + 4 * v, j.begin() + 4 * v + 4);
            values.insert(values.end(), w.begin() + 4 * v, w.begin() + 4 * v + 4);
        }
    }
    auto slotsOf = [](const std::vector<double>& all, int v) {
        std::vector<double> mine;
        for (int set : {0, 1})
            mine.insert(mine.end(), all.begin() + (set * 4 + v) * 4,
                        all.begin() + (set * 4 + v) * 4 + 4);
        return mine;
    };
    EXPECT_EQ(slotsOf(joints, 0), (std::vector<double>{5, 1, 4, 3, 0, 2, 0, 0}));
    const std::vector<double> first = slotsOf(values, 0);
    const std::vector<double> given = {0.4, 0.3, 0.25, 0.2, 0.1, 0.05};
    for (int k = 0; k < 6; ++k)
        EXPECT_NEAR(first[k], given[k] / 1.3, 1e-7);
    EXPECT_EQ(first[6], 0.0);
    EXPECT_EQ(slotsOf(joints, 1)[0], 2);
    EXPECT_EQ(slotsOf(values, 1)[0], 1.0);
    // The unweighted vertex (1, 4.9) went to the joint at height 5.
    EXPECT_EQ(slotsOf(joints, 2)[0], 5);
    for (int v = 0; v < 4; ++v) {
        const std::vector<double> mine = slotsOf(values, v);
        EXPECT_TRUE(std::is_sorted(mine.rbegin(), mine.rend())) << "vertex " << v;
        EXPECT_LE(std::fabs(sum(mine, 0, 8) - 1.0), 3 * 0x1p-24) << "vertex " << v;
    }
}

TEST_F(GltfRoundTrip, FreshDocumentKeepsHierarchyTransformsAndGeometry) {
    SceneDescription scene;
    SceneNode root;
    root.name = "root";
    root.transform.translation = {1.0, 2.0, 3.0};
    root.transform.rotation = {0.0, 0.6, 0.0, 0.8};
    SceneNode child;
    child.name = "child";
    child.parent = 0;
    child.transform.form = NodeTransform::Form::kMatrix;
    child.transform.matrix[12] = 5.0;
    SceneNode shape;
    shape.name = "shape";
    shape.parent = 1;
    shape.mesh = 0;
    scene.nodes = {root, child, shape};
    SceneMesh mesh;
    mesh.name = "house";
    mesh.points = {{0, 0, 0}, {2, 0, 0}, {2, 2, 0}, {0, 2, 0}, {1, 3, 0}};
    mesh.polygonSizes = {4, 3};
    mesh.polygonVertices = {0, 1, 2, 3, 3, 2, 4};
    scene.meshes = {mesh};
    write(scene, path("fresh.gltf"));

    SceneDescription again = filetest::readScene(path("fresh.gltf"));
    ASSERT_EQ(again.nodes.size(), 3u);
    EXPECT_EQ(again.nodes[1].name, "child");
    EXPECT_EQ(again.nodes[2].parent, 1);
    EXPECT_EQ(again.nodes[0].transform, root.transform);
    EXPECT_EQ(again.nodes[1].transform, child.transform);
    EXPECT_EQ(again.meshes[0].name, "house");
    EXPECT_EQ(again.meshes[0].points, mesh.points);
    // Polygons become triangles fanned from their first vertex.
    EXPECT_EQ(again.meshes[0].polygonVertices, (std::vector<int>{0, 1, 2, 0, 2, 3, 3, 2, 4}));
    EXPECT_TRUE(again.skins.empty());
}

TEST_F(GltfRoundTrip, HostChangesTouchOnlyTheNodesTheyConcern) {
    SKIP_WITHOUT_TEST_ASSETS();
    const std::string source = filetest::assetPath("gltf/RiggedSimple.gltf");
    SceneDescription scene = filetest::readScene(source);
    const int joint = scene.skins[0].joints[1];
    scene.nodes[joint].name = "elbow";
    scene.nodes[joint].transform.translation[1] = 5.0;
    SceneNode added;
    added.name = "marker";
    added.parent = joint;
    scene.nodes.push_back(added);
    write(scene, path("renamed.gltf"));

    const Json before = GltfFile::load(source).json;
    const Json after = GltfFile::load(path("renamed.gltf")).json;
    expectSameSectionsExcept(before, after, {"nodes", "buffers", "bufferViews"});
    const int jointIndex = scene.nodes[joint].sourceIndex;
    ASSERT_EQ(after["nodes"].size(), before["nodes"].size() + 1);
    for (int n = 0; n < static_cast<int>(before["nodes"].size()); ++n) {
        if (n != jointIndex) {
            EXPECT_EQ(after["nodes"][n], before["nodes"][n]) << "node " << n;
        }
    }
    Json expected = before["nodes"][jointIndex];
    expected["translation"][1] = 5.0;
    expected["name"] = "elbow";
    expected["children"] = Json::array({before["nodes"].size()});
    EXPECT_EQ(after["nodes"][jointIndex], expected);
    EXPECT_EQ(after["nodes"].back(), (Json{{"name", "marker"}}));
}

TEST_F(GltfRoundTrip, RemovedNodesLeaveTheSceneButNotTheFile) {
    GltfFile quad = filetest::skinnedQuad();
    quad.json["nodes"].push_back({{"name", "prop"}, {"extras", {{"note", "kept"}}}});
    quad.json["scenes"][0]["nodes"].push_back(3);
    quad.save(path("prop.gltf"));
    SceneDescription scene = filetest::readScene(path("prop.gltf"));
    ASSERT_EQ(scene.nodes.back().name, "prop");
    scene.nodes.pop_back();
    write(scene, path("without.gltf"));

    const Json after = GltfFile::load(path("without.gltf")).json;
    EXPECT_EQ(after["nodes"][3], quad.json["nodes"][3]);
    EXPECT_EQ(after["scenes"][0]["nodes"], (Json{0, 1}));
    EXPECT_EQ(filetest::readScene(path("without.gltf")).nodes.size(), 3u);
}

TEST_F(GltfRoundTrip, InstancesWithDifferentWeightsGetTheirOwnMesh) {
    GltfFile quad = filetest::skinnedQuad();
    quad.json["nodes"].push_back({{"name", "twin"}, {"mesh", 0}, {"skin", 0}});
    quad.json["scenes"][0]["nodes"].push_back(3);
    quad.save(path("twins.gltf"));
    SceneDescription scene = filetest::readScene(path("twins.gltf"));
    ASSERT_EQ(scene.skins.size(), 2u);
    SceneSkin& twin = scene.skins[scene.nodes[scene.skins[0].meshNode].name == "twin" ? 0 : 1];
    twin.weights = filetest::withVertexWeights(twin.weights, 0, {{1, 1.0}});
    write(scene, path("split.gltf"));

    const Json after = GltfFile::load(path("split.gltf")).json;
    ASSERT_EQ(after["meshes"].size(), 2u);
    EXPECT_EQ(after["nodes"][0]["mesh"], 0);
    EXPECT_EQ(after["nodes"][3]["mesh"], 1);
    EXPECT_EQ(after["meshes"][0], quad.json["meshes"][0]);
    EXPECT_EQ(after["accessors"][3], quad.json["accessors"][3]);
    SceneDescription again = filetest::readScene(path("split.gltf"));
    for (const SceneSkin& skin : again.skins) {
        const bool isTwin = again.nodes[skin.meshNode].name == "twin";
        EXPECT_EQ(skin.weights.weight(0, 1), isTwin ? 1.0 : 0.0);
        EXPECT_EQ(skin.weights.weight(1, 0), 0.75);
    }
}

TEST_F(GltfRoundTrip, ChangedPolygonsWriteTheMeshAnewWithAWarning) {
    SKIP_WITHOUT_TEST_ASSETS();
    SceneDescription scene = filetest::readScene(filetest::assetPath("gltf/SimpleSkin.gltf"));
    scene.meshes[0].polygonSizes.pop_back();
    scene.meshes[0].polygonVertices.resize(scene.meshes[0].polygonVertices.size() - 3);
    FileResult result = writeGltf(scene, path("cut.gltf"));
    ASSERT_TRUE(result.ok()) << result.message;
    EXPECT_EQ(result.warnings,
              std::vector<std::string>{"The polygons of mesh \"\" changed; it was written anew, "
                                       "without its materials."});
    SceneDescription again = filetest::readScene(path("cut.gltf"));
    EXPECT_EQ(again.meshes[0].polygonSizes.size(), 7u);
    EXPECT_TRUE(again.skins[0].weights.sameWeights(scene.skins[0].weights));
}

TEST_F(GltfRoundTrip, MovedPointsRewriteOnlyThePositions) {
    SKIP_WITHOUT_TEST_ASSETS();
    const std::string source = filetest::assetPath("gltf/SimpleSkin.gltf");
    SceneDescription scene = filetest::readScene(source);
    scene.meshes[0].points[9] = {0.5, 3.0, 0.25};
    write(scene, path("moved.glb"));

    const Json before = GltfFile::load(source).json;
    const GltfFile after = GltfFile::load(path("moved.glb"));
    expectSameSectionsExcept(before, after.json, {"accessors", "bufferViews", "buffers"});
    for (std::size_t a = 0; a < before["accessors"].size(); ++a) {
        if (a != 1) {
            EXPECT_EQ(after.json["accessors"][a], before["accessors"][a]) << "accessor " << a;
        }
    }
    // The bounds follow the moved point.
    EXPECT_EQ(after.json["accessors"][1]["max"], (Json{0.5, 3.0, 0.25}));
    EXPECT_EQ(filetest::readScene(path("moved.glb")).meshes[0].points, scene.meshes[0].points);
}
