// Feeds glTF files to the reader and builds what it reads into a staging scene, as opening a
// file does. Inputs that start as a binary container are read as .glb, all others as .gltf. Any
// bytes must end in a scene or in a message that names the file; nothing reaches the open scene.
// What was read must write back as .glb (keeping the rest of the document) and read again.
#include "FuzzHost.h"
#include "document/SceneBuilding.h"
#include "files/GltfReader.h"
#include "files/GltfWriter.h"
#include "scene/Scene.h"

#include <cstring>

namespace {

bool isBinaryContainer(const std::uint8_t* data, std::size_t size) {
    return size >= 4 && std::memcmp(data, "glTF", 4) == 0;
}

} // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***) {
    fuzzing::startFuzzHost();
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string path = fuzzing::writeFuzzFile(
        isBinaryContainer(data, size) ? "input.glb" : "input.gltf", data, size);
    runtime::Scene& scene = runtime::host().get<runtime::Scene>();
    const std::size_t nodesBefore = scene.nodeCount();
    runtime::SceneDescription description;
    runtime::FileResult result = runtime::readGltf(path, description);
    if (result.ok()) {
        std::unique_ptr<runtime::Scene> staging = scene.makeStaging();
        result =
            runtime::buildScene(description, *staging, path, runtime::ProgressReporter::silent());
    }
    if (!result.ok()) {
        FUZZ_EXPECT(result.message.find("\"" + path + "\"") != std::string::npos);
    } else {
        const std::string written = fuzzing::writeFuzzFile("written.glb", nullptr, 0);
        const runtime::FileResult writing = runtime::writeGltf(description, written);
        FUZZ_EXPECT(writing.ok());
        runtime::SceneDescription again;
        const runtime::FileResult reading = runtime::readGltf(written, again);
        FUZZ_EXPECT(reading.ok());
        FUZZ_EXPECT(again.nodes.size() == description.nodes.size());
    }
    FUZZ_EXPECT(scene.nodeCount() == nodesBefore);
    return 0;
}
