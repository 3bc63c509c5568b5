#include "files/ImportHelper.h"
#include "files/GltfReader.h"
#include "files/GltfWriter.h"
#include "gltfTestFiles.h"

#include <QDir>
#include <gtest/gtest.h>

using namespace runtime;

namespace {

// Records every report; asks to stop at the first report of `stopAt`.
class RecordingReporter : public ProgressReporter {
public:
    explicit RecordingReporter(std::string stopAt = {}) : m_stopAt(std::move(stopAt)) {}
    bool update(double fraction, const std::string& stage) override {
        fractions.push_back(fraction);
        stages.push_back(stage);
        return stage != m_stopAt;
    }
    std::vector<double> fractions;
    std::vector<std::string> stages;

private:
    std::string m_stopAt;
};

class FileProgress : public filetest::FolderTest {};

} // namespace

TEST_F(FileProgress, ReadingAndWritingReportRisingFractionsUpToTheEnd) {
    SKIP_WITHOUT_TEST_ASSETS();
    RecordingReporter reading;
    SceneDescription scene;
    ASSERT_TRUE(readGltf(filetest::assetPath("gltf/RiggedSimple.gltf"), scene, reading).ok());
    RecordingReporter writing;
    ASSERT_TRUE(writeGltf(scene, path("out.glb"), writing).ok());
    for (const RecordingReporter* reporter : {&reading, &writing}) {
        ASSERT_FALSE(reporter->fractions.empty());
        EXPECT_TRUE(std::is_sorted(reporter->fractions.begin(), reporter->fractions.end()));
        EXPECT_EQ(reporter->fractions.front(), 0.0);
        EXPECT_EQ(reporter->fractions.back(), 1.0);
    }
    EXPECT_EQ(reading.stages.front(), "Reading the file");
    EXPECT_EQ(writing.stages.back(), "Replacing the file");
}

TEST_F(FileProgress, CancelledReadLeavesTheSceneAsItWas) {
    SKIP_WITHOUT_TEST_ASSETS();
    for (const char* stage : {"Reading the file", "Reading meshes", "Reading skin weights"}) {
        RecordingReporter stop(stage);
        SceneDescription scene;
        scene.nodes.resize(1);
        const std::string sample = filetest::assetPath("gltf/SimpleSkin.gltf");
        FileResult result = readGltf(sample, scene, stop);
        EXPECT_EQ(result.outcome, FileResult::Outcome::kCancelled) << stage;
        EXPECT_EQ(result.message, "Reading \"" + sample + "\" was cancelled.");
        EXPECT_EQ(scene.nodes.size(), 1u);
        EXPECT_EQ(stop.stages.back(), stage);
    }
}

TEST_F(FileProgress, CancelledWriteLeavesThePreviousFile) {
    SKIP_WITHOUT_TEST_ASSETS();
    SceneDescription scene;
    ASSERT_TRUE(readGltf(filetest::assetPath("gltf/SimpleSkin.gltf"), scene).ok());
    ASSERT_TRUE(writeGltf(scene, path("scene.gltf")).ok());
    const std::string previous = filetest::readText(path("scene.gltf"));
    scene.skins[0].weights = filetest::withVertexWeights(scene.skins[0].weights, 0, {{1, 1.0}});
    for (const char* stage : {"Encoding skin weights", "Writing the file", "Replacing the file"}) {
        RecordingReporter stop(stage);
        FileResult result = writeGltf(scene, path("scene.gltf"), stop);
        EXPECT_EQ(result.outcome, FileResult::Outcome::kCancelled) << stage;
        EXPECT_EQ(result.message, "Writing \"" + path("scene.gltf") +
                                      "\" was cancelled; the file was left as it was.");
        EXPECT_EQ(filetest::readText(path("scene.gltf")), previous) << stage;
    }
    EXPECT_EQ(QDir(m_folder.path()).entryList(QDir::Files | QDir::Hidden),
              QStringList{"scene.gltf"});
}

TEST_F(FileProgress, CancelledImportLeavesTheSceneAsItWas) {
    RecordingReporter stop("Importing the file");
    SceneDescription scene;
    const std::string model = filetest::importModelPath("FBX/huesitos.fbx");
    FileResult result = importWithHelper(model, scene, stop);
    EXPECT_EQ(result.outcome, FileResult::Outcome::kCancelled);
    EXPECT_EQ(result.message, "Reading \"" + model + "\" was cancelled.");
    EXPECT_TRUE(scene.nodes.empty());
}
