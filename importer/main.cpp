// vorel-import: reads one file through the import library and writes what it found to standard
// output as an import stream (files/ImportStream.h), for the host, which reads every such file in
// a process of its own so that a file that crashes or hangs the library takes only this process
// with it. The host starts the program ahead of need (files/ImportHelper.h): it sets up, then
// waits for its request on standard input, the file's path and the memory limit in bytes, each
// ended by a zero byte. An input that closes without a whole request ends it quietly.
// Running out of memory ends it without a reply, which the host reports as an importer that
// stopped.
#include "AssimpImport.h"
#include "files/ImportStream.h"

#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <malloc.h>
#include <new>
#include <string>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <unistd.h>

namespace {

void send(const std::string& bytes) {
    std::fwrite(bytes.data(), 1, bytes.size(), stdout);
    std::fflush(stdout);
}

// Progress goes to the host as it comes; the host stops the program when the user cancels.
class StreamedProgress : public runtime::ProgressReporter {
public:
    bool update(double fraction, const std::string&) override {
        send(runtime::importProgressRecord(fraction));
        return true;
    }
};

// Address sanitizer reserves terabytes of address space for its shadow before main runs; under
// it the limit would refuse every allocation, so sanitized builds run without it.
#if defined(__SANITIZE_ADDRESS__)
constexpr bool kLimitsAddressSpace = false;
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
constexpr bool kLimitsAddressSpace = false;
#else
constexpr bool kLimitsAddressSpace = true;
#endif
#else
constexpr bool kLimitsAddressSpace = true;
#endif

void limitMemory(const std::string& bytes) {
    const unsigned long long limit = std::strtoull(bytes.c_str(), nullptr, 10);
    if (limit == 0 || !kLimitsAddressSpace)
        return;
    const rlimit space{limit, limit};
    setrlimit(RLIMIT_AS, &space);
}

// The path and the memory limit; false when the input closed before both arrived.
bool readRequest(std::string& path, std::string& memoryLimit) {
    std::string request;
    char buffer[4096];
    for (;;) {
        const ssize_t got = read(STDIN_FILENO, buffer, sizeof buffer);
        if (got > 0)
            request.append(buffer, static_cast<std::size_t>(got));
        else if (got == 0 || errno != EINTR)
            break;
    }
    const std::size_t pathEnd = request.find('\0');
    if (pathEnd == std::string::npos || request.empty() || request.back() != '\0' ||
        request.find('\0', pathEnd + 1) != request.size() - 1)
        return false;
    path = request.substr(0, pathEnd);
    memoryLimit = request.substr(pathEnd + 1, request.size() - pathEnd - 2);
    return true;
}

} // namespace

int main() {
    // A hung import, or a spare waiting for its request, must not outlive a host that was killed.
    const pid_t host = getppid();
    prctl(PR_SET_PDEATHSIG, SIGKILL);
    if (getppid() != host)
        return 1;
    // One malloc arena per thread reserves address space far beyond what is used, which would
    // make the memory limit bite long before the memory is really spent.
    mallopt(M_ARENA_MAX, 2);
    std::string path;
    std::string memoryLimit;
    if (!readRequest(path, memoryLimit))
        return 0;
    limitMemory(memoryLimit);
    try {
        send(runtime::importStreamHeader());
        StreamedProgress progress;
        runtime::SceneDescription scene;
        const runtime::FileResult result = runtime::importWithAssimp(path, scene, progress);
        for (const std::string& warning : result.warnings)
            send(runtime::importWarningRecord(warning));
        send(result.ok() ? runtime::importSceneRecord(scene)
                         : runtime::importFailureRecord(result.message));
    } catch (const std::bad_alloc&) {
        return 3;
    }
    return 0;
}
