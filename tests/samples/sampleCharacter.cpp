#include "document/SceneDocument.h"
#include "documentTesting.h"
#include "scene/MeshData.h"
#include "scene/Scene.h"
#include "scene/SkinClusterData.h"
#include "scene/SkinLinks.h"

#include <cmath>

using namespace documenttest;

namespace {

const std::string kFolder = VOREL_SAMPLES;

class SampleCharacter : public DocumentTest {};

// The committed file is exactly what the script builds, so that the README's command to make it
// again stays true.
TEST_F(SampleCharacter, TheSavedFileIsWhatItsScriptBuilds) {
    ASSERT_TRUE(run(readText(kFolder + "/character.cmd")));
    ASSERT_TRUE(run("select -cl"));
    const Texts built = fixture::sceneState();
    ASSERT_TRUE(run("file -f -o \"" + kFolder + "/character.vscene\""));
    const Texts opened = fixture::sceneState();
    EXPECT_TRUE(opened == built) << fixture::differences(opened, built);
}

// A figure worth opening in the weight editor: many joints, a few thousand vertices, every mesh
// skinned, and a few vertices over their cluster's limit or not summing to one.
TEST_F(SampleCharacter, IsASkinnedFigureWithSomeBrokenVertices) {
    ASSERT_TRUE(run("file -o \"" + kFolder + "/character.vscene\""));
    runtime::Scene& scene = runtime::scene();
    std::size_t joints = 0, vertices = 0;
    std::vector<std::string> overLimit, unnormalised;
    for (const runtime::NodePtr& node : scene.nodesParentsFirst()) {
        joints += node->typeName() == "joint";
        if (const runtime::MeshData* mesh = node->mesh()) {
            vertices += mesh->vertexCount();
            EXPECT_TRUE(runtime::skinClusterOfGeometry(*node)) << node->name();
        }
        const runtime::SkinClusterData* data = node->skinCluster();
        if (!data)
            continue;
        const unsigned limit =
            static_cast<unsigned>(std::stoi(stringResult("skinCluster -q -mi " + node->name())));
        for (unsigned v = 0; v < data->weights().vertexCount(); ++v) {
            const std::string vertex = node->name() + " " + std::to_string(v);
            double sum = 0.0;
            for (unsigned i = 0; i < data->weights().entryCount(v); ++i)
                sum += data->weights().weights(v)[i];
            if (data->weights().entryCount(v) > limit)
                overLimit.push_back(vertex);
            if (std::fabs(sum - 1.0) > 1e-9)
                unnormalised.push_back(vertex);
        }
    }
    EXPECT_GE(joints, 12u);
    EXPECT_GE(vertices, 2000u);
    EXPECT_EQ(overLimit, (std::vector<std::string>{"bodySkin 450", "bodySkin 451"}));
    EXPECT_EQ(unnormalised, (std::vector<std::string>{"bodySkin 480", "bodySkin 481"}));
}

} // namespace
