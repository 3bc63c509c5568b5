#include "importerFailures.h"

#include "files/ImportHelper.h"
#include "files/SceneFiles.h"
#include "gltfTestFiles.h"

#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <gtest/gtest.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

extern char** environ;

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
    EXPECT_EQ(result.message, "Cannot read \"" + model + "\": the importer stopped unexpectedly.");
    EXPECT_EQ(scene.nodes.size(), 1u);
}

TEST(ImporterSpare, ASpareStartedUnderOtherSettingsIsNotUsed) {
    const std::string model = filetest::importModelPath("X/Testwuson.X");
    ImportHelper helper;
    SceneDescription scene;
    ASSERT_TRUE(helper.import(model, scene).ok());
    ASSERT_GT(helper.spareProcess(), 0);
    {
        const filetest::FailingImporter importer("crash");
        SceneDescription kept = oneNode();
        EXPECT_EQ(helper.import(model, kept).message,
                  "Cannot read \"" + model + "\": the importer stopped unexpectedly.");
        EXPECT_EQ(kept.nodes.size(), 1u);
    }
    // The spare started under the failing importer is not used either, now that it is gone.
    SceneDescription again;
    ASSERT_TRUE(helper.import(model, again).ok());
    EXPECT_EQ(again.nodes.size(), scene.nodes.size());
}

TEST(ImporterSpare, ASpareThatDiedBeforeUseStillGivesAGoodImport) {
    const std::string model = filetest::importModelPath("FBX/huesitos.fbx");
    ImportHelper helper;
    SceneDescription first;
    ASSERT_TRUE(helper.import(model, first).ok());
    const pid_t spare = helper.spareProcess();
    ASSERT_GT(spare, 0);
    ASSERT_EQ(kill(spare, SIGKILL), 0);
    SceneDescription second;
    const FileResult result = helper.import(model, second);
    EXPECT_TRUE(result.ok()) << result.message;
    EXPECT_EQ(second.nodes.size(), first.nodes.size());
    EXPECT_EQ(second.skins.size(), first.skins.size());
    EXPECT_NE(helper.spareProcess(), spare);
}

TEST(ImporterSpare, TheSpareEndsWithItsOwner) {
    const std::string model = filetest::importModelPath("X/Testwuson.X");
    pid_t spare = -1;
    {
        ImportHelper helper;
        SceneDescription scene;
        ASSERT_TRUE(helper.import(model, scene).ok());
        spare = helper.spareProcess();
        ASSERT_GT(spare, 0);
    }
    // Reaped, not only stopped: no process, not even a zombie, has the id any more.
    EXPECT_EQ(kill(spare, 0), -1);
    EXPECT_EQ(errno, ESRCH);
}

TEST(ImporterSpare, AnImporterWhoseInputClosesWithoutARequestEnds) {
    char self[4096];
    const ssize_t length = readlink("/proc/self/exe", self, sizeof self - 1);
    ASSERT_GT(length, 0);
    std::string program(self, static_cast<std::size_t>(length));
    program = program.substr(0, program.rfind('/')) + "/vorel-import";
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
    posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
    char* arguments[] = {program.data(), nullptr};
    pid_t child = 0;
    ASSERT_EQ(posix_spawn(&child, program.c_str(), &actions, nullptr, arguments, environ), 0);
    posix_spawn_file_actions_destroy(&actions);
    int status = 0;
    ASSERT_EQ(waitpid(child, &status, 0), child);
    EXPECT_TRUE(WIFEXITED(status));
    EXPECT_EQ(WEXITSTATUS(status), 0);
}
