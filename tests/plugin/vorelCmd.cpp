// vorelCmd with flags run by hand: what it does when the window has prepared nothing, and how
// the host's undo treats a run that only opened the window.
#include "OutputRecorder.h"
#include "vorelSession.h"

#include <gtest/gtest.h>

namespace {

class VorelCommandFlags : public vorel::VorelWindowTest {};

} // namespace

TEST_F(VorelCommandFlags, SetDataWithNothingPreparedSucceedsSilently) {
    fixture::SkinnedMesh body = vorel::makeMesh(4, 3, 3);
    selectAndLoad("body");
    const std::vector<double> before = vorel::weightsOf(body, 0);
    OutputRecorder output;
    EXPECT_TRUE(vorel::run("vorelCmd -setData"));
    EXPECT_TRUE(output.lines().empty());
    EXPECT_EQ(vorel::weightsOf(body, 0), before);
}

TEST_F(VorelCommandFlags, SmoothingFlagsRunByHandAskForAReload) {
    OutputRecorder output;
    EXPECT_TRUE(vorel::run("vorelCmd -skinPaintSmooth"));
    EXPECT_TRUE(vorel::run("vorelCmd -smoothSkinWeights"));
    const std::string reload = "Data was not set up properly before executing this command. "
                               "Please reload data into vorel.";
    EXPECT_EQ(output.texts(HCommandMessage::kInfo), (std::vector<std::string>{reload, reload}));
}

TEST_F(VorelCommandFlags, FlagBeforeTheWindowExistsIsRefused) {
    ASSERT_TRUE(unloadPlugin());
    ASSERT_TRUE(loadPlugin());
    OutputRecorder output;
    EXPECT_FALSE(vorel::run("vorelCmd -setData"));
    EXPECT_EQ(output.texts(HCommandMessage::kError),
              std::vector<std::string>{
                  "The Vorel window is not open. Run vorelCmd without flags first."});
}
