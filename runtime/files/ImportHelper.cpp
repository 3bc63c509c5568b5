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
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>
#include <utility>

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

// The current settings of an importer: what a spare must have been started with to be used.
ImporterProcess wantedImporter() {
    ImporterProcess wanted;
    wanted.program = importerPath();
    for (char** entry = environ; entry && *entry; ++entry)
        wanted.environment.emplace_back(*entry);
    return wanted;
}

void closeDescriptor(int& descriptor) {
    if (descriptor >= 0)
        close(descriptor);
    descriptor = -1;
}

// Stops the importer if it still runs and reaps it.
void endImporter(ImporterProcess& importer) {
    closeDescriptor(importer.request);
    closeDescriptor(importer.reply);
    if (importer.id <= 0)
        return;
    kill(importer.id, SIGKILL);
    while (waitpid(importer.id, nullptr, 0) < 0 && errno == EINTR) {
    }
    importer.id = -1;
}

// Starts the importer, waiting for its request; id stays -1 when it cannot be started. Its
// input is a socket so that sending to an importer that has died fails instead of raising
// SIGPIPE in the host.
ImporterProcess startImporter(const ImporterProcess& wanted) {
    ImporterProcess started = wanted;
    int input[2];
    int output[2];
    if (socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, input) != 0)
        return started;
    if (pipe2(output, O_CLOEXEC) != 0) {
        close(input[0]);
        close(input[1]);
        return started;
    }
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_adddup2(&actions, input[1], STDIN_FILENO);
    posix_spawn_file_actions_adddup2(&actions, output[1], STDOUT_FILENO);
    char* arguments[] = {const_cast<char*>(wanted.program.c_str()), nullptr};
    pid_t child = 0;
    const int spawned =
        posix_spawnp(&child, wanted.program.c_str(), &actions, nullptr, arguments, environ);
    posix_spawn_file_actions_destroy(&actions);
    close(input[1]);
    close(output[1]);
    started.request = input[0];
    started.reply = output[0];
    if (spawned == 0)
        started.id = child;
    else
        endImporter(started);
    return started;
}

// The request: the file and the memory limit, each ended by a zero byte; then the input closes.
bool sendRequest(ImporterProcess& importer, const std::string& path) {
    std::string request = path;
    request.push_back('\0');
    request += std::to_string(memoryLimitBytes());
    request.push_back('\0');
    std::size_t sent = 0;
    while (sent < request.size()) {
        const ssize_t done =
            send(importer.request, request.data() + sent, request.size() - sent, MSG_NOSIGNAL);
        if (done < 0 && errno == EINTR)
            continue;
        if (done <= 0)
            return false;
        sent += static_cast<std::size_t>(done);
    }
    closeDescriptor(importer.request);
    return true;
}

enum class End { kExited, kStopped, kTooLong, kCancelled, kNotStarted };

// Reads the importer's reply until it closes its output (it has ended), the time is up or the
// user cancels, then reaps it.
End collect(ImporterProcess& importer, std::string& output, ProgressReporter& reporter) {
    using Clock = std::chrono::steady_clock;
    const auto deadline = Clock::now() + std::chrono::duration_cast<Clock::duration>(
                                             std::chrono::duration<double>(timeLimitSeconds()));
    std::size_t progressOffset = 0;
    double fraction = 0.0;
    char buffer[65536];
    End end = End::kExited;
    for (;;) {
        pollfd ready{importer.reply, POLLIN, 0};
        if (poll(&ready, 1, kPollMilliseconds) > 0) {
            const ssize_t got = read(importer.reply, buffer, sizeof buffer);
            if (got == 0)
                break;
            if (got > 0)
                output.append(buffer, static_cast<std::size_t>(got));
            else if (errno != EINTR && errno != EAGAIN) {
                end = End::kStopped;
                break;
            }
        }
        // Asked on every round, not only when the importer reports: a hung importer reports
        // nothing, and Cancel must still stop it.
        readImportProgress(output, progressOffset, fraction);
        if (!reporter.update(fraction, kStage)) {
            end = End::kCancelled;
            break;
        }
        if (Clock::now() >= deadline) {
            end = End::kTooLong;
            break;
        }
    }
    closeDescriptor(importer.reply);
    if (end != End::kExited)
        kill(importer.id, SIGKILL);
    int status = 0;
    while (waitpid(importer.id, &status, 0) < 0 && errno == EINTR) {
    }
    importer.id = -1;
    if (end == End::kExited && !(WIFEXITED(status) && WEXITSTATUS(status) == 0))
        return End::kStopped;
    return end;
}

bool sameSettings(const ImporterProcess& a, const ImporterProcess& b) {
    return a.program == b.program && a.environment == b.environment;
}

} // namespace

bool importsExtension(const std::string& extension) {
    for (const char* known : kExtensions)
        if (extension == known)
            return true;
    return false;
}

ImportHelper::ImportHelper(Spare spare) : m_keeps(spare) {}

ImportHelper::~ImportHelper() {
    endImporter(m_spare);
}

FileResult ImportHelper::import(const std::string& path, SceneDescription& scene,
                                ProgressReporter& reporter) {
    const QFileInfo info(QString::fromStdString(path));
    if (!info.isFile())
        return FileResult::failed(readFailure(path, info.exists() ? "it is not a regular file"
                                                                  : "the file does not exist"));
    const ImporterProcess wanted = wantedImporter();
    if (m_spare.id > 0 && waitpid(m_spare.id, nullptr, WNOHANG) != 0)
        m_spare.id = -1; // it died while it waited, and is reaped now
    if (m_spare.id <= 0 || !sameSettings(m_spare, wanted))
        endImporter(m_spare);
    std::string output;
    End end = End::kNotStarted;
    // A spare that died while it waited has sent nothing; a fresh importer then reads the file.
    for (bool fromSpare = m_spare.id > 0;; fromSpare = false) {
        ImporterProcess importer =
            fromSpare ? std::exchange(m_spare, ImporterProcess()) : startImporter(wanted);
        if (importer.id <= 0)
            break;
        const bool sent = sendRequest(importer, path);
        if (m_keeps == Spare::kKept && m_spare.id <= 0)
            m_spare = startImporter(wanted);
        output.clear();
        end = sent ? collect(importer, output, reporter) : End::kStopped;
        endImporter(importer);
        if (!(fromSpare && output.empty() && end == End::kStopped))
            break;
    }
    switch (end) {
    case End::kNotStarted:
        return FileResult::failed(
            readFailure(path, "the importer program \"" + wanted.program + "\" cannot be started"));
    case End::kCancelled:
        return FileResult::cancelled(readCancelled(path));
    case End::kTooLong:
        return FileResult::failed(readFailure(path, kTooLong));
    case End::kStopped:
        return FileResult::failed(readFailure(path, kStopped));
    case End::kExited:
        break;
    }
    ImportReply reply;
    std::string problem;
    if (!readImportStream(output.data(), output.size(), reply, problem))
        return FileResult::failed(readFailure(path, kStopped));
    if (!reply.read)
        return FileResult::failed(reply.message);
    scene = std::move(reply.scene);
    FileResult result = FileResult::done();
    result.warnings = std::move(reply.warnings);
    return result;
}

FileResult importWithHelper(const std::string& path, SceneDescription& scene,
                            ProgressReporter& reporter) {
    ImportHelper helper(ImportHelper::Spare::kNone);
    return helper.import(path, scene, reporter);
}

} // namespace runtime
