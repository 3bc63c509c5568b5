#include "hostProcess.h"

#include <QFile>
#include <QTemporaryDir>
#include <gtest/gtest.h>

namespace {

using appfixture::runHost;

QString writeFile(const QTemporaryDir& directory, const QString& name, const QByteArray& text) {
    QString path = directory.filePath(name);
    QFile file(path);
    EXPECT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(text);
    return path;
}

TEST(BatchMode, ExitsZeroAndPrintsEchoesAndMessagesWhenEverythingSucceeds) {
    appfixture::HostRun run =
        runHost({"--batch", "--no-plugin", "-c", "print \"a  b\" 1; undo", "-c", "print c"});
    EXPECT_EQ(run.exitCode, 0);
    EXPECT_EQ(run.out,
              (QStringList{"print \"a  b\" 1", "a  b 1", "undo",
                           "// Warning: There are no more commands to undo.", "print c", "c"}));
    EXPECT_TRUE(run.err.isEmpty()) << run.err.join('\n').toStdString();
}

TEST(BatchMode, ResultsArePrintedOnlyThroughPrint) {
    appfixture::HostRun run =
        runHost({"--batch", "--no-plugin", "-c", "polyCube -n box; print `ls -sl`"});
    EXPECT_EQ(run.exitCode, 0);
    EXPECT_EQ(run.out, (QStringList{"polyCube -n box", "print `ls -sl`", "box"}));
}

TEST(BatchMode, TheSampleScriptBuildsASkinnedMeshAndSelectsIt) {
    appfixture::HostRun run =
        runHost({"--batch", "--no-plugin", "-s", VOREL_SAMPLES_DIR "/skinned-cylinder.cmd", "-c",
                 "print `ls -sl`; print `skinCluster -q -influence bodySkin`"});
    EXPECT_EQ(run.exitCode, 0) << run.err.join('\n').toStdString();
    EXPECT_EQ(run.out.mid(run.out.size() - 4),
              (QStringList{"print `ls -sl`", "body", "print `skinCluster -q -influence bodySkin`",
                           "hip knee ankle"}));
}

TEST(BatchMode, AFailingStatementStopsEverythingAndExitsOne) {
    appfixture::HostRun run = runHost(
        {"--batch", "--no-plugin", "-c", "print one; nothere 1; print two", "-c", "print three"});
    EXPECT_EQ(run.exitCode, 1);
    EXPECT_EQ(run.out, (QStringList{"print one", "one", "nothere 1"}));
    EXPECT_EQ(run.err, QStringList{"// Error: Cannot find procedure \"nothere\"."});
}

TEST(BatchMode, TextThatDoesNotParseRunsNothing) {
    appfixture::HostRun run = runHost({"--batch", "--no-plugin", "-c", "print a; print \"open"});
    EXPECT_EQ(run.exitCode, 1);
    EXPECT_EQ(run.out, QStringList{"print a; print \"open"});
    ASSERT_EQ(run.err.size(), 1);
    EXPECT_TRUE(run.err[0].startsWith("// Error: Syntax error in line 1"))
        << run.err[0].toStdString();
}

TEST(BatchMode, ScriptFilesRunInTheirTurnStatementByStatement) {
    QTemporaryDir directory;
    QString script = writeFile(directory, "steps.cmd",
                               "// two steps\nprint second;\nprint \"third\"  // done\n");
    appfixture::HostRun run =
        runHost({"--batch", "--no-plugin", "-c", "print first", "-s", script});
    EXPECT_EQ(run.exitCode, 0);
    EXPECT_EQ(run.out, (QStringList{"print first", "first", "print second", "second",
                                    "print \"third\"", "third"}));
}

TEST(BatchMode, LoadsThePluginBesideTheProgramBeforeTheCommands) {
    appfixture::HostRun run = runHost({"--batch", "-c", "print `pluginInfo -q -l`; vorelCmd"});
    EXPECT_EQ(run.exitCode, 0) << run.err.join('\n').toStdString();
    ASSERT_EQ(run.out.size(), 4);
    EXPECT_TRUE(run.out[0].startsWith("loadPlugin \"")) << run.out[0].toStdString();
    EXPECT_TRUE(run.out[0].endsWith("/plugins/vorel.so\"")) << run.out[0].toStdString();
    EXPECT_EQ(run.out.mid(1), (QStringList{"print `pluginInfo -q -l`", "vorel", "vorelCmd"}));
}

TEST(BatchMode, OpensTheFileFirstAndStopsWhenItCannot) {
    QTemporaryDir directory;
    QString scene = writeFile(directory, "body.vscene", "not a scene");
    appfixture::HostRun run = runHost({"--batch", scene, "-c", "print after"});
    EXPECT_EQ(run.exitCode, 1);
    EXPECT_EQ(run.out, QStringList{"file -open \"" + scene + "\""});
    ASSERT_EQ(run.err.size(), 1);
    EXPECT_TRUE(run.err[0].startsWith("// Error: ")) << run.err[0].toStdString();
}

TEST(CommandLineErrors, ExitTwoSayingWhatIsWrongFollowedByTheUsage) {
    QTemporaryDir directory;
    QString missing = directory.filePath("missing.vscene");
    const std::pair<QStringList, QString> cases[] = {
        {{"--frobnicate"}, "vorel-host: Unknown option: --frobnicate"},
        {{"--batch", "-s", missing}, "vorel-host: Script file not found: " + missing},
    };
    for (const auto& [arguments, message] : cases) {
        appfixture::HostRun run = runHost(arguments);
        EXPECT_EQ(run.exitCode, 2) << message.toStdString();
        ASSERT_GE(run.err.size(), 3);
        EXPECT_EQ(run.err[0], message);
        EXPECT_TRUE(run.err[2].startsWith("Usage: vorel-host [FILE]"));
        EXPECT_TRUE(run.out.isEmpty());
    }
}

TEST(CommandLineErrors, HelpPrintsTheUsageAndExitsZero) {
    appfixture::HostRun run = runHost({"--help"});
    EXPECT_EQ(run.exitCode, 0);
    ASSERT_FALSE(run.out.isEmpty());
    EXPECT_TRUE(run.out[0].startsWith("Usage: vorel-host [FILE]"));
    EXPECT_TRUE(run.err.isEmpty());
}

} // namespace
