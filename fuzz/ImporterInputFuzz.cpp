// Feeds files to the importer program's side: the import library and the conversion of what it
// returns into a scene description and a reply. The first byte picks the format (the library
// goes by the extension), the rest is the file. Whatever the file, the importer must end with a
// scene that is consistent and goes through the reply unchanged, or with a message; a crash or a
// hang here is one the host survives only because the importer runs in a process of its own.
// Fuzz builds only: its seeds are Debian's import test models, not a kept corpus (see
// CONTRIBUTING.md).
#include "AssimpImport.h"
#include "FuzzHost.h"
#include "files/ImportStream.h"

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <unistd.h>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const char* const extensions[] = {"fbx", "dae",  "x",   "iqm",
                                             "smd", "ms3d", "b3d", "blend"};
    if (size < 1)
        return 0;
    const std::string path =
        "/tmp/importer-input-" + std::to_string(getpid()) + "." + extensions[data[0] % 8];
    if (std::FILE* file = std::fopen(path.c_str(), "wb")) {
        std::fwrite(data + 1, 1, size - 1, file);
        std::fclose(file);
    }
    runtime::SceneDescription scene;
    const runtime::FileResult result = runtime::importWithAssimp(path, scene);
    std::remove(path.c_str());
    if (!result.ok()) {
        FUZZ_EXPECT(!result.message.empty());
        return 0;
    }
    FUZZ_EXPECT(runtime::firstInconsistency(scene).empty());
    const std::string reply = runtime::importStreamHeader() + runtime::importSceneRecord(scene);
    runtime::ImportReply read;
    std::string problem;
    FUZZ_EXPECT(runtime::readImportStream(reply.data(), reply.size(), read, problem));
    return 0;
}
