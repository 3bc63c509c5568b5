// Feeds skin weights files to their reader. Any bytes must end in a file or in a problem to
// report; a file that was read must write and read back to the very same text, every number
// bit for bit.
#include "FuzzHost.h"
#include "files/WeightsFileReader.h"
#include "files/WeightsFileWriter.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    runtime::WeightsFile file;
    std::string problem;
    if (!runtime::parseWeightsFile(reinterpret_cast<const char*>(data), size, file, problem)) {
        FUZZ_EXPECT(!problem.empty());
        return 0;
    }
    const std::string text = runtime::weightsFileText(file);
    runtime::WeightsFile again;
    FUZZ_EXPECT(runtime::parseWeightsFile(text.data(), text.size(), again, problem));
    FUZZ_EXPECT(runtime::weightsFileText(again) == text);
    return 0;
}
