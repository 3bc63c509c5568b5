#include "importerFailures.h"

#include "files/ImportHelper.h"
#include "files/SceneFiles.h"
#include "gltfTestFiles.h"

#include <gtest/gtest.h>

using namespace runtime;

namespace {

// Cancels at the first word from the import.
class CancellingReporter : public ProgressReporter {
public:
    bool update(double, const std::string&) override { return false; }
};

SceneDescription oneNode() {
    SceneDescription scene;
    scene.nodes.resize(1);
    scene.nodes[0].name = "kept";
    return scene;
}

} // namespace

TEST(ImporterFailures, AnImporterThatDiesOrAnswersBadlyLeavesTheSceneAsItWas) {
    const std::string model = filetest::importModelPath("FBX/huesitos.fbx");
    for (const char* how : {"crash", "cut", "garbage"}) {
        SCOPED_TRACE(how);
        const filetest::FailingImporter importer(how);
        SceneDescription scene = oneNode();
        const FileResult result = readSceneFile(model, scene);
        EXPECT_EQ(result.outcome, FileResult::Outcome::kFailed);
        EXPECT_EQ(result.message,
                  "Cannot read \"" + model + "\": the importer stopped unexpectedly.");
        ASSERT_EQ(scene.nodes.size(), 1u);
        EXPECT_EQ(scene.nodes[0].name, "kept");
    }
}

TEST(ImporterFailures, AHungImporterIsStoppedAtTheTimeLimitOrByCancel) {
    const std::string model = filetest::importModelPath("X/Testwuson.X");
    const filetest::FailingImporter importer("hang");
    {
        const filetest::ScopedEnvironment limit("VOREL_IMPORT_TIME_LIMIT", "0.2");
        SceneDescription scene = oneNode();
        const FileResult result = readSceneFile(model, scene);
        EXPECT_EQ(result.message, "Cannot read \"" + model + "\": the importer took too long.");
        EXPECT_EQ(scene.nodes.size(), 1u);
    }
    CancellingReporter cancel;
    SceneDescription scene = oneNode();
    const FileResult result = importWithHelper(model, scene, cancel);
    EXPECT_EQ(result.outcome, FileResult::Outcome::kCancelled);
    EXPECT_EQ(result.message, "Reading \"" + model + "\" was cancelled.");
    EXPECT_EQ(scene.nodes.size(), 1u);
}

TEST(ImporterFailures, AMissingImporterIsNamed) {
    const filetest::ScopedEnvironment missing("VOREL_IMPORTER", "/nonexistent/vorel-import");
    const std::string model = filetest::importModelPath("X/Testwuson.X");
    SceneDescription scene = oneNode();
    EXPECT_EQ(readSceneFile(model, scene).message,
              "Cannot read \"" + model +
                  "\": the importer program \"/nonexistent/vorel-import\" cannot be started.");
}

TEST(ImporterFailures, TheMemoryLimitStopsAnImportThatNeedsMore) {
#if defined(__SANITIZE_ADDRESS__)
    GTEST_SKIP() << "the importer runs without a memory limit under address sanitizer";
#endif
    // 1 MB of address space is not enough to even start the importer.
    const filetest::ScopedEnvironment limit("VOREL_IMPORT_MEMORY_LIMIT", "1");
    const std::string model = filetest::importModelPath("X/Testwuson.X");
    SceneDescription scene = oneNode();
    const FileResult result = readSceneFile(model, scene);
    EXPECT_EQ(result.outcome, FileResult::Outcome::kFailed);
    EXPECT_EQ(scene.nodes.size(), 1u);
}
