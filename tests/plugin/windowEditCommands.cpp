// The window's own edit command objects exist beside vorelCmd, but the host knows none of them:
// every edit runs through vorelCmd.
#include "OutputRecorder.h"
#include "vorelSession.h"

#include <gtest/gtest.h>

namespace {

class WindowEditCommands : public vorel::VorelWindowTest {};

} // namespace

TEST_F(WindowEditCommands, AreNotKnownToTheHost) {
    OutputRecorder output;
    for (const char* name : {"replaceButtonCmd", "roundButtonCmd", "applyButtonCmd",
                             "dragSliderCmd", "dragSliderColCmd", "setCellDataCmd", "smoothCmd"}) {
        EXPECT_FALSE(vorel::run(name));
        EXPECT_EQ(output.texts(HCommandMessage::kError).back(),
                  std::string("Cannot find procedure \"") + name + "\".");
    }
    // Opening the window again creates nothing new.
    ASSERT_TRUE(vorel::run("vorelCmd"));
    EXPECT_EQ(vorelWindows().size(), 1);
}
