#include "files/AtomicFile.h"

#include "gltfTestFiles.h"

#include <QDir>
#include <csignal>
#include <gtest/gtest.h>
#include <sys/resource.h>

using namespace runtime;

namespace {

// Asks to stop when the work reaches the stage of that name.
class StopAtStage : public ProgressReporter {
public:
    explicit StopAtStage(std::string stage) : m_stage(std::move(stage)) {}
    bool update(double, const std::string& stage) override { return stage != m_stage; }

private:
    std::string m_stage;
};

class AtomicFileWrite : public filetest::FolderTest {
protected:
    void SetUp() override {
        m_target = path("scene.glb");
        filetest::writeBytes(m_target, "the previous scene");
    }
    FileResult write(const std::string& bytes, ProgressReporter& reporter) {
        Progress progress(reporter);
        return writeFileAtomically(m_target, {{bytes.data(), bytes.size()}}, progress);
    }
    QStringList folderEntries() const {
        return QDir(m_folder.path()).entryList(QDir::Files | QDir::Hidden | QDir::NoDotAndDotDot);
    }

    std::string m_target;
};

} // namespace

TEST_F(AtomicFileWrite, ReplacesTheWholeFile) {
    FileResult result = write("new", ProgressReporter::silent());
    EXPECT_TRUE(result.ok()) << result.message;
    EXPECT_EQ(filetest::readText(m_target), "new");
    EXPECT_EQ(folderEntries(), QStringList{"scene.glb"});
}

TEST_F(AtomicFileWrite, InterruptionBetweenWriteAndRenameLeavesThePreviousFile) {
    StopAtStage stop("Replacing the file");
    FileResult result = write(std::string(10 << 20, 'x'), stop);
    EXPECT_EQ(result.outcome, FileResult::Outcome::kCancelled);
    EXPECT_EQ(result.message,
              "Writing \"" + m_target + "\" was cancelled; the file was left as it was.");
    EXPECT_EQ(filetest::readText(m_target), "the previous scene");
    EXPECT_EQ(folderEntries(), QStringList{"scene.glb"});
}

TEST_F(AtomicFileWrite, FailureWhileWritingLeavesThePreviousFile) {
    // A file size limit makes the write fail part-way, as a full disk would.
    struct rlimit previous;
    getrlimit(RLIMIT_FSIZE, &previous);
    struct rlimit small = previous;
    small.rlim_cur = 1 << 20;
    auto previousHandler = std::signal(SIGXFSZ, SIG_IGN);
    setrlimit(RLIMIT_FSIZE, &small);
    FileResult result = write(std::string(8 << 20, 'x'), ProgressReporter::silent());
    setrlimit(RLIMIT_FSIZE, &previous);
    std::signal(SIGXFSZ, previousHandler);

    EXPECT_EQ(result.outcome, FileResult::Outcome::kFailed);
    EXPECT_EQ(result.message.rfind("Cannot write \"" + m_target + "\": ", 0), 0u) << result.message;
    EXPECT_EQ(filetest::readText(m_target), "the previous scene");
    EXPECT_EQ(folderEntries(), QStringList{"scene.glb"});
}

TEST_F(AtomicFileWrite, MissingFolderFailsWithoutCreatingAnything) {
    m_target = path("missing/scene.glb");
    FileResult result = write("new", ProgressReporter::silent());
    EXPECT_EQ(result.outcome, FileResult::Outcome::kFailed);
    EXPECT_EQ(result.message.rfind("Cannot write \"" + m_target + "\": ", 0), 0u) << result.message;
    EXPECT_GT(result.message.size(), ("Cannot write \"" + m_target + "\": .").size());
    EXPECT_FALSE(QDir(QString::fromStdString(path("missing"))).exists());
}
