// Feeds importer replies to the host's reader. Any bytes must end in a reply or in a problem to
// report; a reply that was read must write and read back to the very same bytes.
#include "FuzzHost.h"
#include "files/ImportStream.h"

namespace {

std::string streamOf(const runtime::ImportReply& reply) {
    std::string bytes = runtime::importStreamHeader();
    for (const std::string& warning : reply.warnings)
        bytes += runtime::importWarningRecord(warning);
    bytes += reply.read ? runtime::importSceneRecord(reply.scene)
                        : runtime::importFailureRecord(reply.message);
    return bytes;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const char* bytes = reinterpret_cast<const char*>(data);
    runtime::ImportReply reply;
    std::string problem;
    if (!runtime::readImportStream(bytes, size, reply, problem)) {
        FUZZ_EXPECT(!problem.empty());
        return 0;
    }
    const std::string written = streamOf(reply);
    runtime::ImportReply again;
    FUZZ_EXPECT(runtime::readImportStream(written.data(), written.size(), again, problem));
    FUZZ_EXPECT(streamOf(again) == written);
    std::size_t offset = 0;
    double fraction = 0.0;
    runtime::readImportProgress(std::string(bytes, size), offset, fraction);
    FUZZ_EXPECT(offset <= size && fraction >= 0.0 && fraction <= 1.0);
    return 0;
}
