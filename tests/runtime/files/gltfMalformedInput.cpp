#include "files/GltfReader.h"
#include "files/GltfWriter.h"
#include "gltfTestFiles.h"

#include <QDir>
#include <gtest/gtest.h>

using namespace runtime;
using filetest::GltfFile;
using filetest::Json;

namespace {

// Every case starts from the valid skinned quad, breaks one thing and expects the reader to
// refuse with the message naming the file, leaving the scene it was given as it was.
class GltfMalformedInput : public filetest::FolderTest {
protected:
    std::string refusal(const std::string& name) {
        SceneDescription scene;
        scene.nodes.resize(2);
        scene.nodes[1].name = "untouched";
        FileResult result = readGltf(path(name), scene);
        EXPECT_EQ(result.outcome, FileResult::Outcome::kFailed);
        EXPECT_EQ(scene.nodes.size(), 2u);
        EXPECT_EQ(scene.nodes[1].name, "untouched");
        EXPECT_EQ(scene.source, nullptr);
        return result.message;
    }
    std::string refusalOf(const GltfFile& file, const std::string& name = "broken.gltf") {
        file.save(path(name));
        return refusal(name);
    }
    std::string expected(const std::string& name, const std::string& problem) const {
        return "Cannot read \"" + path(name) + "\": " + problem;
    }

    GltfFile m_quad = filetest::skinnedQuad();
};

} // namespace

TEST_F(GltfMalformedInput, TruncatedGlb) {
    m_quad.save(path("whole.glb"));
    const std::string whole = filetest::readText(path("whole.glb"));
    filetest::writeBytes(path("cut.glb"), whole.substr(0, whole.size() - 100));
    EXPECT_EQ(refusal("cut.glb"),
              expected("cut.glb", "the binary glTF file is truncated (its header declares " +
                                      std::to_string(whole.size()) + " bytes, the file has " +
                                      std::to_string(whole.size() - 100) + ")."));
    filetest::writeBytes(path("stub.glb"), whole.substr(0, 10));
    EXPECT_EQ(refusal("stub.glb"),
              expected("stub.glb",
                       "the binary glTF file is truncated (10 bytes, too short for its header)."));
}

TEST_F(GltfMalformedInput, BadJson) {
    filetest::writeBytes(path("bad.gltf"), "{\"asset\": {\"version\": \"2.0\"},\n \"nodes\": [}");
    EXPECT_EQ(refusal("bad.gltf"),
              expected("bad.gltf", "it is not valid JSON (parse error at line 2, column 12: syntax "
                                   "error while parsing value - unexpected '}'; expected '[', "
                                   "'{', or a literal)."));
    std::string deep(100000, '[');
    filetest::writeBytes(path("deep.gltf"), "{\"extras\": " + deep + "}");
    EXPECT_EQ(refusal("deep.gltf"),
              expected("deep.gltf", "its JSON is nested more than 128 levels deep."));
}

TEST_F(GltfMalformedInput, AccessorOutOfRange) {
    m_quad.json["accessors"][3]["count"] = 40;
    EXPECT_EQ(refusalOf(m_quad),
              expected("broken.gltf", "mesh 0 primitive 0: accessor 3 reads past the end of "
                                      "buffer view 3 (40 elements from offset 0, the view has 64 "
                                      "bytes)."));
}

TEST_F(GltfMalformedInput, IndexBeyondTheVertices) {
    m_quad.bin[m_quad.json["bufferViews"][1]["byteOffset"].get<int>() + 4] = 9;
    EXPECT_EQ(refusalOf(m_quad),
              expected("broken.gltf", "mesh 0 primitive 0: accessor 1 has index 9 at position 2, "
                                      "beyond the primitive's 4 vertices."));
}

TEST_F(GltfMalformedInput, JointBeyondTheSkin) {
    m_quad.bin[m_quad.json["bufferViews"][2]["byteOffset"].get<int>() + 4] = 7;
    EXPECT_EQ(refusalOf(m_quad),
              expected("broken.gltf", "mesh 0 primitive 0 vertex 1 has joint 7 with weight "
                                      "0.75, but the skin has 2 joints."));
}

TEST_F(GltfMalformedInput, MissingBuffer) {
    m_quad.json["buffers"][0]["uri"] = "gone.bin";
    m_quad.json["buffers"][0]["byteLength"] = m_quad.bin.size();
    filetest::writeBytes(path("missing.gltf"), m_quad.json.dump());
    EXPECT_EQ(refusal("missing.gltf"),
              expected("missing.gltf", "buffer 0 refers to \"gone.bin\", which does not exist."));

    filetest::writeBytes(path("short.bin"), "1234");
    m_quad.json["buffers"][0]["uri"] = "short.bin";
    filetest::writeBytes(path("short.gltf"), m_quad.json.dump());
    EXPECT_EQ(refusal("short.gltf"),
              expected("short.gltf", "buffer 0 refers to \"short.bin\", which has 4 bytes, fewer "
                                     "than the " +
                                         std::to_string(m_quad.bin.size()) + " it declares."));
}

TEST_F(GltfMalformedInput, AbsurdCounts) {
    auto tooLarge = [&](const std::string& name, const std::string& count) {
        return expected(name, "mesh 0 primitive 0: accessor " + count +
                                  " elements: its counts would need more than 64 MB of memory, "
                                  "far more than a file of " +
                                  std::to_string(filetest::readText(path(name)).size()) +
                                  " bytes can hold.");
    };
    // No data behind it: an accessor of zeros, whose size only the budget limits.
    m_quad.json["accessors"][0].erase("bufferView");
    m_quad.json["accessors"][0]["count"] = 4000000000u;
    const std::string zeros = refusalOf(m_quad, "zeros.gltf");
    EXPECT_EQ(zeros, tooLarge("zeros.gltf", "0 has 4000000000"));

    GltfFile huge = filetest::skinnedQuad();
    huge.json["accessors"][1]["count"] = 1ull << 40;
    const std::string indices = refusalOf(huge, "huge.gltf");
    EXPECT_EQ(indices, tooLarge("huge.gltf", "1 has 1099511627776"));
}

TEST_F(GltfMalformedInput, InconsistentHierarchy) {
    GltfFile twoParents = m_quad;
    twoParents.json["nodes"][0]["children"] = {2};
    EXPECT_EQ(refusalOf(twoParents, "parents.gltf"),
              expected("parents.gltf", "node 2 has more than one parent."));

    GltfFile loop = m_quad;
    loop.json["nodes"][2]["children"] = {1};
    EXPECT_EQ(refusalOf(loop, "loop.gltf"),
              expected("loop.gltf", "its scene lists node 1, which does not exist, is not a root "
                                    "or is listed twice."));

    GltfFile strayJoint = m_quad;
    strayJoint.json["skins"][0]["joints"] = {1, 5};
    EXPECT_EQ(refusalOf(strayJoint, "joint.gltf"),
              expected("joint.gltf", "skin 0 has joint 5, which is not in the scene."));
}

TEST_F(GltfMalformedInput, NotAFileOrNoFile) {
    EXPECT_EQ(refusal("absent.gltf"), expected("absent.gltf", "the file does not exist."));
    ASSERT_TRUE(QDir(m_folder.path()).mkdir("folder.gltf"));
    EXPECT_EQ(refusal("folder.gltf"), expected("folder.gltf", "it is not a regular file."));
}

TEST_F(GltfMalformedInput, CompressedGeometryIsRefused) {
    m_quad.json["extensionsUsed"] = {"KHR_draco_mesh_compression"};
    m_quad.json["extensionsRequired"] = {"KHR_draco_mesh_compression"};
    EXPECT_EQ(refusalOf(m_quad),
              expected("broken.gltf", "it requires the extension KHR_draco_mesh_compression, "
                                      "whose compressed geometry cannot be read."));
}
