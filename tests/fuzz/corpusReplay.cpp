// Replays the kept corpus of one fuzz target, and every input that once made it fail, through
// the target's own entry function. An input that still breaks the code crashes or aborts this
// program; the name of the input runs before it is printed, so the failing one is the last.
#include <QDir>
#include <QFile>
#include <cstdint>
#include <cstdio>
#include <gtest/gtest.h>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);
extern "C" __attribute__((weak)) int LLVMFuzzerInitialize(int* argc, char*** argv);

namespace {

// Runs every file of the folder; how many there were.
int replayFolder(const char* folder) {
    const QDir dir(QString::fromUtf8(folder));
    const QStringList names = dir.entryList(QDir::Files, QDir::Name);
    for (const QString& name : names) {
        QFile file(dir.filePath(name));
        EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << name.toStdString();
        const QByteArray bytes = file.readAll();
        std::fprintf(stderr, "replaying %s\n", name.toUtf8().constData());
        std::vector<std::uint8_t> input(bytes.begin(), bytes.end());
        LLVMFuzzerTestOneInput(input.data(), input.size());
    }
    return names.size();
}

TEST(VOREL_FUZZ_REPLAY, KeptInputsRunCleanly) {
    EXPECT_GT(replayFolder(VOREL_FUZZ_CORPUS), 0) << "the corpus is empty: " VOREL_FUZZ_CORPUS;
}

TEST(VOREL_FUZZ_REPLAY, InputsThatOnceFailedRunCleanly) {
    replayFolder(VOREL_FUZZ_CRASHES);
}

} // namespace

int main(int argc, char** argv) {
    testing::InitGoogleTest(&argc, argv);
    if (LLVMFuzzerInitialize)
        LLVMFuzzerInitialize(&argc, &argv);
    return RUN_ALL_TESTS();
}
