#include "files/MonitoredProgress.h"

#include "files/GltfReader.h"
#include "gltfTestFiles.h"

#include <gtest/gtest.h>

namespace {

// What the user would see: the title, the stages in order, the end; answers Cancel from the
// update cancelAt on.
class WatchingDisplay : public runtime::ProgressDisplay {
public:
    void begin(const HString& title) override { shown.push_back("begin " + title.str()); }
    bool update(double, const HString& stage) override {
        if (shown.back() != stage.str())
            shown.push_back(stage.str());
        return ++updates < cancelAt;
    }
    void end() override { shown.push_back("end"); }

    std::vector<std::string> shown;
    int updates = 0;
    int cancelAt = 1 << 30;
};

class MonitoredFileWork : public ::testing::Test {
protected:
    void SetUp() override {
        SKIP_WITHOUT_TEST_ASSETS();
        path = filetest::assetPath("gltf/SimpleSkin.gltf");
        monitor().setDisplay(&display);
    }
    void TearDown() override { monitor().setDisplay(nullptr); }
    static runtime::ProgressMonitor& monitor() {
        return runtime::host().get<runtime::ProgressMonitor>();
    }
    runtime::FileResult read(runtime::SceneDescription& scene) {
        runtime::MonitoredProgress progress("Opening SimpleSkin.gltf");
        return runtime::readGltf(path, scene, progress);
    }

    std::string path;
    WatchingDisplay display;
};

TEST_F(MonitoredFileWork, ReadingShowsItsStagesUnderTheTitle) {
    runtime::SceneDescription scene;
    ASSERT_TRUE(read(scene).ok());
    EXPECT_FALSE(monitor().busy());
    ASSERT_GE(display.shown.size(), 4u);
    EXPECT_EQ(display.shown.front(), "begin Opening SimpleSkin.gltf");
    EXPECT_EQ(display.shown[1], "Reading the file");
    EXPECT_EQ(display.shown.back(), "end");
}

TEST_F(MonitoredFileWork, CancelInTheDisplayCancelsTheRead) {
    display.cancelAt = 2;
    runtime::SceneDescription scene;
    runtime::FileResult result = read(scene);
    EXPECT_EQ(result.outcome, runtime::FileResult::Outcome::kCancelled);
    EXPECT_EQ(result.message, "Reading \"" + path + "\" was cancelled.");
    EXPECT_EQ(display.shown.back(), "end");

    // The next piece of work is not cancelled by the last one's Cancel.
    display.cancelAt = 1 << 30;
    EXPECT_TRUE(read(scene).ok());
}

} // namespace
