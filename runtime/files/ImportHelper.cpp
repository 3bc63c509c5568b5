#include "files/ImportHelper.h"

#include "files/ImportStream.h"

#include <QFileInfo>
#include <cerrno>
#include <chrono>
#include <csignal>
#include <cstdlib>
#include <dlfcn.h>
#include <fcntl.h>
#include <poll.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

extern char** environ;

namespace runtime {

namespace {

const char* const kExtensions[] = {"fbx", "dae", "x", "iqm", "smd", "ms3d", "b3d", "blend"};

constexpr double kDefaultSeconds = 120.0;
constexpr unsigned long long kDefaultMegabytes = 4096;
// How often a waiting import looks at the clock and lets the progress dialog take a Cancel.
constexpr int kPollMilliseconds = 50;

const char kStopped[] = "the importer stopped unexpectedly";
const char kTooLong[] = "the importer took too long";
const char kStage[] = "Importing the file";

bool isFile(const std::string& path) {
    return !path.empty() && access(path.c_str(), X_OK) == 0;
}

std::string importerPath() {
    if (const char* chosen = std::getenv("VOREL_IMPORTER"))
        return chosen;
    char self[4096];
    const ssize_t length = readlink("/proc/self/exe", self, sizeof self - 1);
    if (length > 0) {
        const std::string beside = QFileInfo(QString::fromUtf8(self, static_cast<int>(length)))
                                       .absolutePath()
                                       .toStdString() +
                                   "/vorel-import";
        if (isFile(beside))
            return beside;
    }
    // Processes that load the host's library into another program (the Python module).
    Dl_info library{};
    if (dladdr(reinterpret_cast<void*>(&importWithHelper), &library) && library.dli_fname) {
        const std::string bin =
            QFileInfo(QString::fromUtf8(library.dli_fname)).absolutePath().toStdString() +
            "/../bin/vorel-import";
        if (isFile(bin))
            return bin;
    }
    return "vorel-import";
}

double timeLimitSeconds() {
    const char* text = std::getenv("VOREL_IMPORT_TIME_LIMIT");
    const double seconds = text ? std::atof(text) : 0.0;
    return seconds > 0.0 ? seconds : kDefaultSeconds;
}

unsigned long long memoryLimitBytes() {
    const char* text = std::getenv("VOREL_IMPORT_MEMORY_LIMIT");
    const unsigned long long megabytes = text ? std::strtoull(text, nullptr, 10) : 0;
    return (megabytes > 0 ? megabytes : kDefaultMegabytes) << 20;
}

// One run of the importer, its output collected; the process is always reaped.
class ImporterRun {
public:
    enum class End { kExited, kStopped, kTooLong, kCancelled, kNotStarted };

    End run(const std::string& path, ProgressReporter& reporter) {
        int pipe[2];
        if (pipe2(pipe, O_CLOEXEC) != 0)
            return End::kNotStarted;
        posix_spawn_file_actions_t actions;
        posix_spawn_file_actions_init(&actions);
        posix_spawn_file_actions_adddup2(&actions, pipe[1], STDOUT_FILENO);
        const std::string program = importerPath();
        const std::string memory = std::to_string(memoryLimitBytes());
        char* arguments[] = {const_cast<char*>(program.c_str()), const_cast<char*>(path.c_str()),
                             const_cast<char*>(memory.c_str()), nullptr};
        pid_t child = 0;
        const int spawned =
            posix_spawnp(&child, program.c_str(), &actions, nullptr, arguments, environ);
        posix_spawn_file_actions_destroy(&actions);
        close(pipe[1]);
        if (spawned != 0) {
            close(pipe[0]);
            return End::kNotStarted;
        }
        const End end = collect(pipe[0], reporter);
        close(pipe[0]);
        if (end != End::kExited)
            kill(child, SIGKILL);
        int status = 0;
        while (waitpid(child, &status, 0) < 0 && errno == EINTR) {
        }
        if (end == End::kExited && !(WIFEXITED(status) && WEXITSTATUS(status) == 0))
            return End::kStopped;
        return end;
    }
    const std::string& output() const { return m_output; }

private:
    // Reads until the importer closes its output (it has ended), the time is up or the user
    // cancels.
    End collect(int input, ProgressReporter& reporter) {
        using Clock = std::chrono::steady_clock;
        const auto deadline = Clock::now() + std::chrono::duration_cast<Clock::duration>(
                                                 std::chrono::duration<double>(timeLimitSeconds()));
        std::size_t progressOffset = 0;
        double fraction = 0.0;
        char buffer[65536];
        for (;;) {
            pollfd ready{input, POLLIN, 0};
            const int polled = poll(&ready, 1, kPollMilliseconds);
            if (polled > 0) {
                const ssize_t got = read(input, buffer, sizeof buffer);
                if (got == 0)
                    return End::kExited;
                if (got > 0)
                    m_output.append(buffer, static_cast<std::size_t>(got));
                else if (errno != EINTR && errno != EAGAIN)
                    return End::kStopped;
            }
            // Asked on every round, not only when the importer reports: a hung importer reports
            // nothing, and Cancel must still stop it.
            readImportProgress(m_output, progressOffset, fraction);
            if (!reporter.update(fraction, kStage))
                return End::kCancelled;
            if (Clock::now() >= deadline)
                return End::kTooLong;
        }
    }

    std::string m_output;
};

} // namespace

bool importsExtension(const std::string& extension) {
    for (const char* known : kExtensions)
        if (extension == known)
            return true;
    return false;
}

FileResult importWithHelper(const std::string& path, SceneDescription& scene,
                            ProgressReporter& reporter) {
    const QFileInfo info(QString::fromStdString(path));
    if (!info.isFile())
        return FileResult::failed(readFailure(path, info.exists() ? "it is not a regular file"
                                                                  : "the file does not exist"));
    ImporterRun importer;
    switch (importer.run(path, reporter)) {
    case ImporterRun::End::kNotStarted:
        return FileResult::failed(
            readFailure(path, "the importer program \"" + importerPath() + "\" cannot be started"));
    case ImporterRun::End::kCancelled:
        return FileResult::cancelled(readCancelled(path));
    case ImporterRun::End::kTooLong:
        return FileResult::failed(readFailure(path, kTooLong));
    case ImporterRun::End::kStopped:
        return FileResult::failed(readFailure(path, kStopped));
    case ImporterRun::End::kExited:
        break;
    }
    ImportReply reply;
    std::string problem;
    if (!readImportStream(importer.output().data(), importer.output().size(), reply, problem))
        return FileResult::failed(readFailure(path, kStopped));
    if (!reply.read)
        return FileResult::failed(reply.message);
    scene = std::move(reply.scene);
    FileResult result = FileResult::done();
    result.warnings = std::move(reply.warnings);
    return result;
}

} // namespace runtime
