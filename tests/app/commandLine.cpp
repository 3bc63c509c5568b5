#include "CommandLine.h"

#include <QFile>
#include <QTemporaryDir>
#include <gtest/gtest.h>

namespace {

class CommandLineTest : public ::testing::Test {
protected:
    void SetUp() override {
        ASSERT_TRUE(directory.isValid());
        scene = existing("body.vscene");
        script = existing("setup.cmd");
    }
    QString existing(const QString& name) {
        QString path = directory.filePath(name);
        QFile file(path);
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        return path;
    }
    std::string problemWith(const QStringList& arguments) {
        app::LaunchOptions options;
        HStatus status = app::parseCommandLine(arguments, options);
        EXPECT_EQ(status.statusCode(), HS::kInvalidParameter);
        return status.errorString().asChar();
    }

    QTemporaryDir directory;
    QString scene, script;
};

TEST_F(CommandLineTest, ReadsEveryOptionAndKeepsTheStepsInOrder) {
    app::LaunchOptions options;
    ASSERT_TRUE(static_cast<bool>(app::parseCommandLine(
        {"-c", "print a", scene, "-s", script, "--no-plugin", "-c", "-x", "--batch"}, options)));
    EXPECT_EQ(options.file, scene);
    ASSERT_EQ(options.steps.size(), 3u);
    EXPECT_EQ(options.steps[0].kind, app::StartupStep::kCommands);
    EXPECT_EQ(options.steps[0].text, "print a");
    EXPECT_EQ(options.steps[1].kind, app::StartupStep::kScriptFile);
    EXPECT_EQ(options.steps[1].text, script);
    // A value that starts with a dash is still the value.
    EXPECT_EQ(options.steps[2].text, "-x");
    EXPECT_TRUE(options.batch);
    EXPECT_FALSE(options.loadPlugin);
    EXPECT_TRUE(options.screenshot.isEmpty());
    EXPECT_FALSE(options.help);

    ASSERT_TRUE(static_cast<bool>(app::parseCommandLine({"--screenshot", "out.PNG"}, options)));
    EXPECT_EQ(options.screenshot, "out.PNG");
    EXPECT_TRUE(options.loadPlugin);
    EXPECT_FALSE(options.batch);
    ASSERT_TRUE(static_cast<bool>(app::parseCommandLine({"--help"}, options)));
    EXPECT_TRUE(options.help);
}

TEST_F(CommandLineTest, SaysWhatIsWrong) {
    EXPECT_EQ(problemWith({"--frobnicate"}), "Unknown option: --frobnicate");
    EXPECT_EQ(problemWith({"-c"}), "-c needs a value");
    EXPECT_EQ(problemWith({"--screenshot"}), "--screenshot needs a value");
    EXPECT_EQ(problemWith({"--screenshot", "out.jpg"}),
              "--screenshot needs a file name ending in .png: out.jpg");
    QString missing = directory.filePath("missing.vscene");
    EXPECT_EQ(problemWith({missing}), "Scene file not found: " + missing.toStdString());
    EXPECT_EQ(problemWith({"-s", missing}), "Script file not found: " + missing.toStdString());
    EXPECT_EQ(problemWith({"-s", directory.path()}),
              "Script file cannot be read: " + directory.path().toStdString());
    EXPECT_EQ(problemWith({scene, script}), "Only one scene file can be opened: " +
                                                scene.toStdString() + ", " + script.toStdString());
    EXPECT_EQ(problemWith({"--batch", "--screenshot", "out.png"}),
              "--batch shows nothing, so it cannot take a --screenshot");
}

} // namespace
