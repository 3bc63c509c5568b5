// vorel-import FILE [MEMORY_LIMIT_BYTES]: reads one file through the import library and writes
// what it found to standard output as an import stream (files/ImportStream.h), for the host,
// which starts this program for every import so that a file that crashes or hangs the library
// takes only this process with it.
#include "AssimpImport.h"
#include "files/ImportStream.h"

#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <malloc.h>
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

void limitMemory(const char* bytes) {
    // One malloc arena per thread reserves address space far beyond what is used, which would
    // make the limit bite long before the memory is really spent.
    mallopt(M_ARENA_MAX, 2);
    const unsigned long long limit = std::strtoull(bytes, nullptr, 10);
    if (limit == 0 || !kLimitsAddressSpace)
        return;
    const rlimit space{limit, limit};
    setrlimit(RLIMIT_AS, &space);
}

} // namespace

int main(int argc, char** argv) {
    if (argc < 2 || argc > 3) {
        std::fprintf(stderr, "usage: vorel-import FILE [MEMORY_LIMIT_BYTES]\n");
        return 2;
    }
    // A hung import must not outlive a host that was killed while it waited.
    const pid_t host = getppid();
    prctl(PR_SET_PDEATHSIG, SIGKILL);
    if (getppid() != host)
        return 1;
    if (argc == 3)
        limitMemory(argv[2]);
    send(runtime::importStreamHeader());
    StreamedProgress progress;
    runtime::SceneDescription scene;
    const runtime::FileResult result = runtime::importWithAssimp(argv[1], scene, progress);
    for (const std::string& warning : result.warnings)
        send(runtime::importWarningRecord(warning));
    send(result.ok() ? runtime::importSceneRecord(scene)
                     : runtime::importFailureRecord(result.message));
    return 0;
}
