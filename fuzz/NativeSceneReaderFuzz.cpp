// Feeds native scene files to their reader, which builds them into a staging scene as opening a
// file does. Any bytes must end in a scene or in a message that names the file; nothing reaches
// the open scene. A scene that was read must save and read back.
#include "FuzzHost.h"
#include "document/NativeSceneReader.h"
#include "document/NativeSceneWriter.h"
#include "scene/Scene.h"

extern "C" int LLVMFuzzerInitialize(int*, char***) {
    fuzzing::startFuzzHost();
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string path = fuzzing::writeFuzzFile("input.vscene", data, size);
    runtime::Scene& scene = runtime::host().get<runtime::Scene>();
    const std::size_t nodesBefore = scene.nodeCount();
    std::unique_ptr<runtime::Scene> staging = scene.makeStaging();
    const runtime::FileResult result = runtime::readNativeScene(path, *staging);
    if (!result.ok()) {
        FUZZ_EXPECT(result.message.find("\"" + path + "\"") != std::string::npos);
    } else {
        const std::string saved = fuzzing::writeFuzzFile("saved.vscene", nullptr, 0);
        FUZZ_EXPECT(runtime::writeNativeScene(*staging, saved).ok());
        std::unique_ptr<runtime::Scene> again = scene.makeStaging();
        FUZZ_EXPECT(runtime::readNativeScene(saved, *again).ok());
        FUZZ_EXPECT(again->nodeCount() == staging->nodeCount());
    }
    FUZZ_EXPECT(scene.nodeCount() == nodesBefore);
    return 0;
}
