// Kills a process that saves a scene over and over (save-loop) at random moments and checks
// that the file it saves to always opens whole, holding either the last version the process
// reported saved or the one it was saving, and that the next save over it succeeds. The runs
// cycle through the formats the host writes. VOREL_KILL_RUNS sets the number of runs,
// VOREL_RANDOM_SEED the first delay's seed.
#include "OutputRecorder.h"
#include "documentTesting.h"

#include <QDir>
#include <QProcess>
#include <QThread>
#include <csignal>
#include <random>

using namespace documenttest;

namespace {

int environmentNumber(const char* name, int fallback) {
    bool ok = false;
    const int value = qEnvironmentVariableIntValue(name, &ok);
    return ok ? value : fallback;
}

// The last "saved N" line of the helper's output; -1 when there is none.
long lastSavedVersion(const QByteArray& output) {
    long last = -1;
    for (const QByteArray& line : output.split('\n'))
        if (line.startsWith("saved "))
            last = line.mid(6).toLong();
    return last;
}

class CrashSafeSaving : public DocumentTest {
protected:
    // Starts the helper saving to `target`, lets it save for delayMs after its first save and
    // kills it; the last version it reported saved.
    long saveUntilKilled(const std::string& target, int delayMs) {
        QProcess helper;
        helper.setProcessChannelMode(QProcess::SeparateChannels);
        helper.start(VOREL_SAVE_LOOP_PROGRAM, {QString::fromStdString(target)});
        EXPECT_TRUE(helper.waitForStarted());
        QByteArray output;
        while (lastSavedVersion(output) < 0 && helper.waitForReadyRead(60000))
            output += helper.readAllStandardOutput();
        EXPECT_GE(lastSavedVersion(output), 0) << helper.readAllStandardError().toStdString();
        QThread::msleep(static_cast<unsigned long>(delayMs));
        ::kill(static_cast<pid_t>(helper.processId()), SIGKILL);
        helper.waitForFinished();
        output += helper.readAllStandardOutput();
        return lastSavedVersion(output);
    }
};

} // namespace

TEST_F(CrashSafeSaving, KilledSavesLeaveTheOldOrTheNewFileWhole) {
    const int runs = environmentNumber("VOREL_KILL_RUNS", 12);
    std::mt19937 random(static_cast<unsigned>(environmentNumber("VOREL_RANDOM_SEED", 1)));
    std::uniform_int_distribution<int> delayMs(0, 120);
    const char* const formats[] = {"vscene", "glb", "gltf"};
    int newer = 0;
    for (int r = 0; r < runs; ++r) {
        const std::string target = path(std::string("kill.") + formats[r % 3]);
        const int delay = delayMs(random);
        const long saved = saveUntilKilled(target, delay);
        SCOPED_TRACE("run " + std::to_string(r) + ", " + target + ", killed after " +
                     std::to_string(delay) + " ms, last reported save " + std::to_string(saved));
        ASSERT_GE(saved, 0);

        OutputRecorder output;
        ASSERT_TRUE(run("file -f -o \"" + target + "\""))
            << testing::PrintToString(output.texts(HCommandMessage::kError));
        const long held = std::lround(std::stod(stringResult("getAttr hip.translateX")));
        EXPECT_TRUE(held == saved || held == saved + 1) << "the file holds version " << held;
        newer += held == saved + 1;

        // Whatever the kill left beside the file, the next save must go through.
        ASSERT_TRUE(run("setAttr hip.translateX -1; file -save"))
            << testing::PrintToString(output.texts(HCommandMessage::kError));
        ASSERT_TRUE(run("file -f -o \"" + target + "\""));
        EXPECT_EQ(stringResult("getAttr hip.translateX"), "-1");
    }
    // Each save removed what the killed saves before it left beside its target.
    QStringList left = QDir(m_folder.path()).entryList(QDir::Files | QDir::Hidden);
    for (const char* format : formats)
        left.removeOne(QString("kill.") + format);
    EXPECT_TRUE(left.isEmpty()) << qPrintable(left.join(' '));
    std::printf("crash-safe saving: %d killed runs, %d held the version being saved, %d the one "
                "before\n",
                runs, newer, runs - newer);
}
