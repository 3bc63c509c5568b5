#include "files/GltfReader.h"
#include "files/GltfWriter.h"
#include "gltfTestFiles.h"

#include <gtest/gtest.h>

using namespace runtime;
using filetest::GltfFile;
using filetest::Json;

namespace {

class LockPersistence : public filetest::FolderTest {
protected:
    void SetUp() override {
        m_quad = filetest::skinnedQuad();
        m_quad.save(path("quad.gltf"));
    }
    SceneDescription read(const std::string& name) {
        SceneDescription scene;
        FileResult result = readGltf(path(name), scene);
        EXPECT_TRUE(result.ok()) << result.message;
        m_warnings = result.warnings;
        return scene;
    }
    void write(const SceneDescription& scene, const std::string& name) {
        FileResult result = writeGltf(scene, path(name));
        ASSERT_TRUE(result.ok()) << result.message;
    }
    static SkinLocks someLocks() {
        SkinLocks locks;
        locks.lockedJointNames = {"|root", "|root|tip", "|root"};
        locks.lockedVertices = {1, 3};
        locks.lockedCells = {{2, {"|root|tip", "|root"}}};
        return locks;
    }

    GltfFile m_quad;
    std::vector<std::string> m_warnings;
};

} // namespace

TEST_F(LockPersistence, SurvivesWriteAndReadInTheDocumentedLayout) {
    SceneDescription scene = read("quad.gltf");
    scene.skins[0].locks = someLocks();
    scene.nodes[filetest::nodeNamed(scene, "root")].lockInfluenceWeights = true;
    write(scene, "locked.gltf");

    const Json json = GltfFile::load(path("locked.gltf")).json;
    const Json expected = Json::parse(R"([{"node": 0,
        "lockedJointNames": ["|root", "|root|tip", "|root"],
        "lockedVertexIndices": [1, 3],
        "lockedCellIndices": [{"vertex": 2, "lockedLocalJoints": ["|root|tip", "|root"]}]}])");
    EXPECT_EQ(json["skins"][0]["extras"]["skinClusterLocks"], expected);
    EXPECT_EQ(json["nodes"][1]["extras"], (Json{{"lockInfluenceWeights", true}}));
    EXPECT_FALSE(json["nodes"][2].contains("extras"));

    SceneDescription again = read("locked.gltf");
    EXPECT_EQ(again.skins[0].locks, someLocks());
    EXPECT_TRUE(again.nodes[filetest::nodeNamed(again, "root")].lockInfluenceWeights);
    EXPECT_FALSE(again.nodes[filetest::nodeNamed(again, "tip")].lockInfluenceWeights);
}

TEST_F(LockPersistence, UnlockingRestoresTheDocumentAsItWas) {
    SceneDescription scene = read("quad.gltf");
    scene.skins[0].locks = someLocks();
    scene.nodes[filetest::nodeNamed(scene, "tip")].lockInfluenceWeights = true;
    write(scene, "locked.gltf");
    SceneDescription locked = read("locked.gltf");
    locked.skins[0].locks = SkinLocks{};
    locked.nodes[filetest::nodeNamed(locked, "tip")].lockInfluenceWeights = false;
    write(locked, "unlocked.gltf");

    const Json json = GltfFile::load(path("unlocked.gltf")).json;
    EXPECT_EQ(json["skins"], m_quad.json["skins"]);
    EXPECT_EQ(json["nodes"], m_quad.json["nodes"]);
}

TEST_F(LockPersistence, OtherExtrasAreKept) {
    m_quad.json["skins"][0]["extras"] = {{"author", "rigging"}};
    m_quad.json["nodes"][1]["extras"] = {{"side", "left"}};
    m_quad.save(path("annotated.gltf"));
    SceneDescription scene = read("annotated.gltf");
    scene.skins[0].locks.lockedVertices = {0};
    scene.nodes[filetest::nodeNamed(scene, "root")].lockInfluenceWeights = true;
    write(scene, "locked.gltf");

    const Json json = GltfFile::load(path("locked.gltf")).json;
    EXPECT_EQ(json["skins"][0]["extras"]["author"], "rigging");
    EXPECT_EQ(json["skins"][0]["extras"]["skinClusterLocks"],
              Json::parse(R"([{"node": 0, "lockedVertexIndices": [0]}])"));
    EXPECT_EQ(json["nodes"][1]["extras"], (Json{{"side", "left"}, {"lockInfluenceWeights", true}}));
}

TEST_F(LockPersistence, MalformedLocksAreIgnoredWithAWarning) {
    m_quad.json["skins"][0]["extras"] = {
        {"skinClusterLocks", {{{"node", 0}, {"lockedVertexIndices", {2, 99}}}}}};
    m_quad.save(path("bad-locks.gltf"));
    SceneDescription scene = read("bad-locks.gltf");
    EXPECT_TRUE(scene.skins[0].locks.empty());
    EXPECT_EQ(m_warnings, std::vector<std::string>{
                              "The locks stored in skin 0 were ignored: its locks for node 0 are "
                              "malformed or name vertices the mesh does not have."});
}
