// refresh: asks whoever draws the scene to redraw now, and does nothing without a viewer.
#include "OutputRecorder.h"
#include "commandTesting.h"
#include "core/DisplayRefresh.h"

using commandtest::run;

using RefreshCommand = commandtest::CommandTest;

TEST_F(RefreshCommand, RedrawsEverySubscriberOnceAndIsNotRecorded) {
    runtime::DisplayRefresh& display = runtime::host().get<runtime::DisplayRefresh>();
    ASSERT_TRUE(run("refresh"));
    int first = 0, second = 0;
    unsigned long long a = display.subscribe([&] { ++first; });
    unsigned long long b = display.subscribe([&] { ++second; });
    ASSERT_TRUE(run("refresh; refresh -f;\nrefresh -force"));
    EXPECT_EQ(first, 3);
    EXPECT_EQ(second, 3);
    EXPECT_TRUE(display.unsubscribe(a));
    ASSERT_TRUE(run("refresh"));
    EXPECT_EQ(first, 3);
    EXPECT_EQ(second, 4);
    EXPECT_TRUE(display.unsubscribe(b));
    EXPECT_FALSE(display.unsubscribe(b));
    EXPECT_EQ(runtime::host().get<runtime::UndoQueue>().undoCount(), 0u);

    OutputRecorder output;
    EXPECT_FALSE(run("refresh now"));
    EXPECT_EQ(output.texts(HCommandMessage::kError),
              (commandtest::Texts{"refresh: It takes no objects."}));
}

TEST_F(RefreshCommand, HiliteAndToolChangesReachTheDisplayWithoutARedrawNow) {
    runtime::DisplayRefresh& display = runtime::host().get<runtime::DisplayRefresh>();
    int redraws = 0, changes = 0;
    unsigned long long redraw = display.subscribe([&] { ++redraws; });
    unsigned long long watch = display.watch([&] { ++changes; });
    ASSERT_TRUE(run("joint -n hip; select -cl"));
    HSelectionList hilite;
    hilite.add("hip");
    HGlobal::setHiliteList(hilite);
    EXPECT_EQ(changes, 1);
    ASSERT_TRUE(run("PntPaintSkinWeightsTool; pntSkinSelectInfluence pntAttrSkinPaintCtx hip;"
                    "pntAttrSkinPaintCtx -e -opacity 0.5 pntAttrSkinPaintCtx;"
                    "setToolTo selectSuperContext"));
    // The tool twice and the influence; the opacity shows nowhere.
    EXPECT_EQ(changes, 4);
    EXPECT_EQ(redraws, 0);
    EXPECT_TRUE(display.unwatch(watch));
    EXPECT_TRUE(display.unsubscribe(redraw));
}
