// Loading and unloading the plug-in, vorelCmd's syntax and window, and what its flags do when
// run by hand with nothing prepared.
#include "HGlobal.h"
#include "HQtUtil.h"
#include "HSelectionList.h"
#include "OutputRecorder.h"
#include "core/HostContext.h"
#include "lang/CommandRegistry.h"
#include "vorelSession.h"

#include <QAbstractItemModel>
#include <QMainWindow>
#include <QPointer>
#include <gtest/gtest.h>

using vorel::run;

namespace {

using PluginLifetime = vorel::VorelSession;

HStringArray commandsOfVorel() {
    return runtime::host().get<runtime::CommandRegistry>().names("vorel");
}

} // namespace

// The window's own edit command objects are no host commands: every edit runs through vorelCmd.
TEST_F(PluginLifetime, LoadingRegistersOnlyVorelCmdAndOpensNoWindow) {
    ASSERT_TRUE(loadPlugin());
    HStringArray names = commandsOfVorel();
    ASSERT_EQ(names.length(), 1u);
    EXPECT_EQ(names[0], "vorelCmd");
    EXPECT_TRUE(vorelWindows().isEmpty());
    OutputRecorder output;
    EXPECT_FALSE(run("setCellDataCmd"));
    EXPECT_EQ(output.texts(HCommandMessage::kError),
              std::vector<std::string>{"Cannot find procedure \"setCellDataCmd\"."});

    // A flag needs the window the run without flags opens.
    output.clear();
    EXPECT_FALSE(run("vorelCmd -setData"));
    EXPECT_EQ(output.texts(HCommandMessage::kError),
              std::vector<std::string>{
                  "The Vorel window is not open. Run vorelCmd without flags first."});
    EXPECT_TRUE(vorelWindows().isEmpty());
    ASSERT_TRUE(unloadPlugin());
    EXPECT_EQ(commandsOfVorel().length(), 0u);
}

TEST_F(PluginLifetime, RunningWithoutFlagsOpensOneWindowUnderTheMainWindow) {
    ASSERT_TRUE(loadPlugin());
    openWindow();
    QMainWindow* first = window;
    EXPECT_EQ(first->parentWidget(), HQtUtil::mainWindow());
    EXPECT_TRUE(first->isVisible());
    EXPECT_EQ(first->windowTitle(), "Vorel");

    first->close();
    EXPECT_FALSE(first->isVisible());
    openWindow();
    EXPECT_EQ(window, first);
    EXPECT_TRUE(window->isVisible());
}

TEST_F(PluginLifetime, ReopenedWindowKeepsItsTable) {
    fixture::makeSkinnedMesh();
    ASSERT_TRUE(loadPlugin());
    openWindow();
    ASSERT_TRUE(run("select -r body"));
    ASSERT_TRUE(QMetaObject::invokeMethod(model, "refreshSkinClusterData"));
    const int rows = model->rowCount();
    ASSERT_GT(rows, 0);
    window->close();
    ASSERT_TRUE(run("select -cl"));
    openWindow();
    EXPECT_EQ(model->rowCount(), rows);
}

TEST_F(PluginLifetime, UnloadingDeletesTheWindowClearsItsHiliteAndStopsFollowingTheScene) {
    fixture::makeSkinnedMesh();
    ASSERT_TRUE(loadPlugin());
    openWindow();
    HSelectionList hilite;
    ASSERT_TRUE(hilite.add("body"));
    ASSERT_TRUE(HGlobal::setHiliteList(hilite));
    QPointer<QMainWindow> closedWindow = window;
    QPointer<QAbstractItemModel> closedModel = model;
    ASSERT_TRUE(unloadPlugin());
    EXPECT_TRUE(closedWindow.isNull());
    EXPECT_TRUE(closedModel.isNull());
    EXPECT_EQ(commandsOfVorel().length(), 0u);
    HSelectionList after;
    HGlobal::getHiliteList(after);
    EXPECT_TRUE(after.isEmpty());
    OutputRecorder output;
    EXPECT_FALSE(run("vorelCmd"));
    EXPECT_EQ(output.texts(HCommandMessage::kError),
              std::vector<std::string>{"Cannot find procedure \"vorelCmd\"."});

    // The model's scene callbacks went with it: a selection change reaches no deleted model.
    EXPECT_TRUE(run("select -r body"));

    ASSERT_TRUE(loadPlugin());
    openWindow();
    EXPECT_FALSE(window == nullptr);
    EXPECT_EQ(model->rowCount(), 0);
}

using VorelCommand = vorel::VorelWindowTest;

TEST_F(VorelCommand, AcceptsEveryEditFlagByItsLongAndShortName) {
    for (const char* flag : {"-numMax", "-round", "-replace", "-setData", "-dragSlider",
                             "-dragSliderColumn", "-skinPaintSmooth", "-smoothSkinWeights", "-nm",
                             "-r", "-re", "-sd", "-ds", "-dsc", "-sm"})
        EXPECT_TRUE(run(std::string("vorelCmd ") + flag)) << flag;
}

TEST_F(VorelCommand, RefusesQueryEditAndUnknownFlags) {
    OutputRecorder output;
    EXPECT_FALSE(run("vorelCmd -q"));
    EXPECT_FALSE(run("vorelCmd -e"));
    EXPECT_FALSE(run("vorelCmd -bogus"));
    EXPECT_EQ(output.texts(HCommandMessage::kError),
              (std::vector<std::string>{"vorelCmd: Invalid flag: -q", "vorelCmd: Invalid flag: -e",
                                        "vorelCmd: Invalid flag: -bogus"}));
}

TEST_F(VorelCommand, SetDataWithNothingPreparedSucceedsSilently) {
    fixture::SkinnedMesh body = vorel::makeMesh(4, 3, 3);
    selectAndLoad("body");
    const std::vector<double> before = vorel::weightsOf(body, 0);
    OutputRecorder output;
    EXPECT_TRUE(run("vorelCmd -setData"));
    EXPECT_TRUE(output.lines().empty());
    EXPECT_EQ(vorel::weightsOf(body, 0), before);
}

TEST_F(VorelCommand, SmoothingFlagsRunByHandAskForAReload) {
    OutputRecorder output;
    EXPECT_TRUE(run("vorelCmd -skinPaintSmooth"));
    EXPECT_TRUE(run("vorelCmd -smoothSkinWeights"));
    const std::string reload = "Data was not set up properly before executing this command. "
                               "Please reload data into vorel.";
    EXPECT_EQ(output.texts(HCommandMessage::kInfo), (std::vector<std::string>{reload, reload}));
}
