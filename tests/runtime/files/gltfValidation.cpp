#include "files/GltfWriter.h"
#include "gltfTestFiles.h"

#include <gtest/gtest.h>

using namespace runtime;

namespace {

class GltfValidator : public filetest::FolderTest {
protected:
    void write(const SceneDescription& scene, const std::string& name) {
        FileResult result = writeGltf(scene, path(name));
        ASSERT_TRUE(result.ok()) << result.message;
        m_written.push_back(path(name));
    }
    std::vector<std::string> m_written;
};

} // namespace

TEST_F(GltfValidator, FindsNoErrorInAnyKindOfWrittenFile) {
    SKIP_WITHOUT_TEST_ASSETS();
    // A sample read back and edited: unnormalised weights, more influences than four.
    SceneDescription rigged = filetest::readScene(filetest::assetPath("gltf/RiggedSimple.gltf"));
    rigged.skins[0].weights =
        filetest::withVertexWeights(rigged.skins[0].weights, 7, {{0, 0.3}, {1, 0.9}});
    rigged.nodes[rigged.skins[0].joints[0]].lockInfluenceWeights = true;
    rigged.skins[0].locks.lockedVertices = {1, 2};
    rigged.meshes[0].points[3][1] += 0.5; // the bounds of the positions must follow
    write(rigged, "rigged.gltf");
    write(rigged, "rigged.glb");

    // Instances of one mesh given different weights, which splits the mesh.
    filetest::GltfFile twins = filetest::skinnedQuad();
    twins.json["nodes"].push_back({{"name", "twin"}, {"mesh", 0}, {"skin", 0}});
    twins.json["scenes"][0]["nodes"].push_back(3);
    twins.save(path("twins-source.gltf"));
    SceneDescription pair = filetest::readScene(path("twins-source.gltf"));
    pair.skins[1].weights = filetest::withVertexWeights(pair.skins[1].weights, 0, {{1, 1.0}});
    write(pair, "twins.glb");

    // Fresh documents: two weight sets per vertex and a vertex without weights.
    write(filetest::jointChainOverQuad(), "chain.glb");
    write(filetest::jointChainOverQuad(), "chain.gltf");

    // An import whose weights do not sum to one.
    write(filetest::readScene(filetest::importModelPath("FBX/animation_with_skeleton.fbx")),
          "imported.glb");

    filetest::expectValidGltf(m_written);
}
