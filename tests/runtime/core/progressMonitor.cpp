#include "core/ProgressMonitor.h"

#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace {

// Records what the monitor shows; answers false from the update at cancelAt on.
class RecordingDisplay : public runtime::ProgressDisplay {
public:
    void begin(const HString& title) override { calls.push_back("begin " + title.str()); }
    bool update(double fraction, const HString& stage) override {
        calls.push_back(std::to_string(static_cast<int>(fraction * 1000)) + " " + stage.str());
        return ++updates < cancelAt;
    }
    void end() override { calls.push_back("end"); }

    std::vector<std::string> calls;
    int updates = 0;
    int cancelAt = 1000;
};

class ProgressMonitorTest : public ::testing::Test {
protected:
    void SetUp() override { monitor().setDisplay(&display); }
    void TearDown() override { monitor().setDisplay(nullptr); }
    static runtime::ProgressMonitor& monitor() {
        return runtime::host().get<runtime::ProgressMonitor>();
    }

    RecordingDisplay display;
};

using Calls = std::vector<std::string>;

TEST_F(ProgressMonitorTest, NestedOperationsShareOneDisplayAndSmallStepsAreDropped) {
    {
        runtime::ProgressOperation open("Opening body.glb");
        EXPECT_TRUE(monitor().busy());
        open.report(0.1, "Reading");
        open.report(0.102, "Reading"); // too small a step to show
        open.report(0.102, "Binding"); // a new stage always shows
        {
            runtime::ProgressOperation bind("Binding");
            bind.report(0.5, "Weights");
        }
        open.report(2.0, "Weights"); // past the end reads as done
    }
    EXPECT_FALSE(monitor().busy());
    EXPECT_EQ(display.calls, (Calls{"begin Opening body.glb", "100 Reading", "102 Binding",
                                    "500 Weights", "1000 Weights", "end"}));
}

TEST_F(ProgressMonitorTest, ACancelHoldsForEveryOperationUntilTheOutermostEnds) {
    display.cancelAt = 2;
    {
        runtime::ProgressOperation outer("Importing");
        EXPECT_TRUE(outer.report(0.1, "Reading"));
        runtime::ProgressOperation inner("Binding");
        EXPECT_FALSE(inner.report(0.2, "Reading"));
        EXPECT_TRUE(inner.cancelled());
        EXPECT_FALSE(outer.report(0.9, "Other"));
        EXPECT_EQ(display.updates, 2); // nothing more is shown once cancelled
    }
    runtime::ProgressOperation again("Importing");
    EXPECT_FALSE(again.cancelled());
}

TEST_F(ProgressMonitorTest, WithoutADisplayNothingIsShownOrCancelled) {
    monitor().setDisplay(nullptr);
    runtime::ProgressOperation work("Saving");
    EXPECT_TRUE(work.report(0.5, "Writing"));
    EXPECT_TRUE(display.calls.empty());
}

TEST_F(ProgressMonitorTest, RemovingTheDisplayMidwayEndsTheOperationOnIt) {
    runtime::ProgressOperation work("Saving");
    work.report(0.5, "Writing");
    monitor().setDisplay(nullptr);
    EXPECT_EQ(display.calls.back(), "end");
    size_t shown = display.calls.size();
    EXPECT_TRUE(work.report(0.9, "Renaming"));
    EXPECT_EQ(display.calls.size(), shown);
}

} // namespace
