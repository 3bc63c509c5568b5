#include "OutputRecorder.h"
#include "document/SceneDocument.h"
#include "document/SkinLockAttributes.h"
#include "documentTesting.h"
#include "files/GltfReader.h"
#include "gltfTestFiles.h"
#include "scene/Scene.h"
#include "scene/SkinClusterData.h"

#include <cmath>

using namespace documenttest;
using filetest::GltfFile;
using filetest::Json;

namespace {

// The JSON of each accessor without where its data lies, which a writer lays out anew.
Json accessorsWithoutPlaces(const Json& document) {
    Json accessors = document["accessors"];
    for (Json& accessor : accessors) {
        accessor.erase("bufferView");
        accessor.erase("byteOffset");
    }
    return accessors;
}

class GltfThroughScene : public DocumentTest {
protected:
    void SetUp() override {
        DocumentTest::SetUp();
        SKIP_WITHOUT_TEST_ASSETS();
        m_source = filetest::assetPath("gltf/RiggedSimple.gltf");
        ASSERT_TRUE(run("file -o \"" + m_source + "\""));
    }
    // The names the host gave the influences of the opened file's skin cluster.
    Texts influences() { return split(stringResult("skinCluster -q -inf skinCluster1")); }
    static Texts split(const std::string& text) {
        Texts words;
        std::size_t start = 0;
        while (start < text.size()) {
            std::size_t end = text.find(' ', start);
            end = end == std::string::npos ? text.size() : end;
            words.push_back(text.substr(start, end - start));
            start = end + 1;
        }
        return words;
    }

    std::string m_source;
};

TEST_F(GltfThroughScene, SavingWhatWasOpenedKeepsTheDocument) {
    ASSERT_TRUE(run("file -ea \"" + path("out.gltf") + "\""));
    const GltfFile original = GltfFile::load(m_source);
    const GltfFile written = GltfFile::load(path("out.gltf"));
    for (auto it = original.json.begin(); it != original.json.end(); ++it) {
        if (it.key() != "buffers" && it.key() != "bufferViews" && it.key() != "accessors") {
            EXPECT_EQ(written.json[it.key()], it.value()) << it.key();
        }
    }
    ASSERT_EQ(accessorsWithoutPlaces(written.json), accessorsWithoutPlaces(original.json));
    for (int a = 0; a < static_cast<int>(original.json["accessors"].size()); ++a)
        EXPECT_EQ(written.numbers(a), original.numbers(a)) << "accessor " << a;
}

TEST_F(GltfThroughScene, AnEditChangesOnlyWhatWasEdited) {
    const Texts joints = influences();
    ASSERT_EQ(joints.size(), 2u);
    const std::string mesh = stringResult("ls -type mesh");
    ASSERT_TRUE(run("skinPercent -t " + joints[1] + " -tv 0.25 skinCluster1 " + mesh + ".vtx[7]; " +
                    "setAttr " + joints[0] + ".lockInfluenceWeights 1"));
    runtime::SkinLocks locks;
    locks.lockedVertices = {3};
    ASSERT_TRUE(runtime::writeSkinLocks(runtime::scene(),
                                        *runtime::scene().findNode("skinCluster1"), locks));
    ASSERT_TRUE(run("file -ea \"" + path("out.glb") + "\""));

    runtime::SceneDescription before, after;
    ASSERT_TRUE(runtime::readGltf(m_source, before).ok());
    ASSERT_TRUE(runtime::readGltf(path("out.glb"), after).ok());
    const runtime::SparseSkinWeights& read = before.skins[0].weights;
    const runtime::SparseSkinWeights& saved = after.skins[0].weights;
    ASSERT_EQ(saved.vertexCount(), read.vertexCount());
    for (int v = 0; v < read.vertexCount(); ++v)
        for (int k = 0; k < 2; ++k) {
            const double expected = v != 7 ? read.weight(v, k) : k == 1 ? 0.25 : 0.75;
            EXPECT_NEAR(saved.weight(v, k), expected, 1e-6) << v << " " << k;
        }
    EXPECT_EQ(after.skins[0].locks, locks);

    // Only the locked joint's node changed among the nodes, and nothing else but the data.
    const GltfFile original = GltfFile::load(m_source);
    const GltfFile written = GltfFile::load(path("out.glb"));
    int changedNodes = 0;
    for (std::size_t n = 0; n < original.json["nodes"].size(); ++n)
        if (written.json["nodes"][n] != original.json["nodes"][n]) {
            ++changedNodes;
            EXPECT_EQ(written.json["nodes"][n]["extras"], (Json{{"lockInfluenceWeights", true}}));
        }
    EXPECT_EQ(changedNodes, 1);
    for (const char* key : {"materials", "animations", "meshes", "scenes", "scene", "asset"})
        EXPECT_EQ(written.json[key], original.json[key]) << key;
}

TEST_F(GltfThroughScene, ASceneMadeInTheHostIsWrittenAsANewDocument) {
    ASSERT_TRUE(run("file -f -new"));
    makeLegScene();
    OutputRecorder output;
    ASSERT_TRUE(run("file -ea \"" + path("leg.gltf") + "\""));
    EXPECT_EQ(output.texts(HCommandMessage::kWarning),
              (Texts{"\"looseSet\" (objectSet) was left out: the format holds only transforms, "
                     "joints, meshes and skin clusters."}));
    ASSERT_TRUE(run("file -f -o \"" + path("leg.gltf") + "\""));
    EXPECT_EQ(stringResult("ls -l -type joint"), "|rig|hip |rig|hip|knee |rig|hip|knee|ankle");
    const runtime::SkinWeights& weights =
        runtime::scene().findNode("skinCluster1")->skinCluster()->weights();
    // Written normalised: 0.25, 0.5 and 1.5 become a ninth, two ninths and two thirds.
    EXPECT_NEAR(weights.weight(0, 0), 1.0 / 9, 1e-7);
    EXPECT_NEAR(weights.weight(0, 1), 2.0 / 9, 1e-7);
    EXPECT_NEAR(weights.weight(0, 2), 2.0 / 3, 1e-7);
    EXPECT_EQ(runtime::readSkinLocks(*runtime::scene().findNode("skinCluster1")).lockedVertices,
              (std::vector<int>{2, 9}));
}

// Files written from a scene made in the host, and from an opened glTF scene that was edited
// and had a scene of the host's imported into it (a document kept from the file, extended).
TEST_F(GltfThroughScene, WrittenFilesPassTheValidator) {
    ASSERT_TRUE(run("file -f -new"));
    makeLegScene();
    ASSERT_TRUE(run("file -ea \"" + path("leg.glb") + "\"; file -ea \"" + path("leg.vscene") +
                    "\"; file -f -o \"" + m_source + "\""));
    const Texts joints = influences();
    const std::string mesh = stringResult("ls -type mesh");
    ASSERT_TRUE(run("skinPercent -t " + joints[0] + " -tv 0.7 -nrm false skinCluster1 " + mesh +
                    ".vtx[2:5]; setAttr " + joints[1] + ".lockInfluenceWeights 1; file -i \"" +
                    path("leg.vscene") + "\""));
    ASSERT_TRUE(
        run("file -ea \"" + path("edited.glb") + "\"; file -ea \"" + path("edited.gltf") + "\""));

    runtime::SceneDescription extended;
    ASSERT_TRUE(runtime::readGltf(path("edited.glb"), extended).ok());
    EXPECT_EQ(extended.skins.size(), 2u);
    EXPECT_GE(filetest::nodeNamed(extended, "knee"), 0);
    filetest::expectValidGltf({path("leg.glb"), path("edited.glb"), path("edited.gltf")});
}

} // namespace
