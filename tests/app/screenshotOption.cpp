#include "hostProcess.h"

#include <QFileInfo>
#include <QImage>
#include <QTemporaryDir>
#include <gtest/gtest.h>

namespace {

// The start-up of `make run` on a machine without a display.
TEST(ScreenshotOption, WritesAPictureOfTheSampleWithTheVorelWindowAndExits) {
    QTemporaryDir directory;
    QString picture = directory.filePath("window.png");
    appfixture::HostRun run = appfixture::runHost({"-s", VOREL_SAMPLES_DIR "/skinned-cylinder.cmd",
                                                   "-c", "vorelCmd", "--screenshot", picture});
    EXPECT_EQ(run.exitCode, 0);
    EXPECT_TRUE(run.err.isEmpty()) << run.err.join('\n').toStdString();
    QImage image(picture);
    ASSERT_FALSE(image.isNull());
    EXPECT_GE(image.width(), 800);
    EXPECT_GE(image.height(), 600);
}

TEST(ScreenshotOption, ReportsErrorsOfTheStartUpAndAnUnwritablePicture) {
    appfixture::HostRun run = appfixture::runHost(
        {"--no-plugin", "-c", "nothere", "--screenshot", "/nonexistent/folder/window.png"});
    EXPECT_EQ(run.exitCode, 1);
    EXPECT_EQ(run.err, (QStringList{"// Error: Cannot find procedure \"nothere\".",
                                    "vorel-host: Cannot write the picture "
                                    "/nonexistent/folder/window.png"}));
    EXPECT_TRUE(run.out.isEmpty());
}

} // namespace
