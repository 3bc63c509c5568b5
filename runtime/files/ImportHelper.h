// Importing FBX, COLLADA, DirectX X, IQM, SMD, MS3D, B3D and Blender files into a scene
// description, read by the importer program vorel-import in a process of its own. Read only.
//
// The import library is not fit for untrusted files: a malformed one may crash it, hang it or
// make it eat all memory. So the host reads every such file in an importer process and reads
// the scene from its output (files/ImportStream.h). An importer that crashes, is killed, or ends
// its output early fails the read with "the importer stopped unexpectedly"; one that runs past
// the time limit, counted from the moment it was given the file, is stopped and fails it with
// "the importer took too long"; Cancel in the progress dialog stops it too. Whatever happens,
// `scene` is only changed by a complete, consistent reply.
//
// Starting the importer (loading the import library and setting it up) costs about as much as
// reading a small file, so an ImportHelper keeps one importer started ahead of need: it waits
// for its request (the file and the memory limit) on its standard input, and each import takes
// it and at once starts the next one, which loads while the file is being read. The spare is
// only used when it was started with the same program and the same environment as the import
// asks for now; otherwise, or when it died while it waited, a fresh importer reads the file.
// The owner of the helper owns the spare: the scene document (document/SceneDocument.h) holds
// the host's one helper, so the spare lives as long as the host's modules do; destroying the
// helper stops and reaps it. A spare whose host dies without that ends by itself: it ends when
// its input closes, and the system kills it with the host.
//
// Where the importer is: $VOREL_IMPORTER when set, else beside the running program, else in the
// bin folder beside the folder of the host's library. Limits: $VOREL_IMPORT_TIME_LIMIT seconds
// (default 120) and $VOREL_IMPORT_MEMORY_LIMIT megabytes of address space (default 4096). All
// three are read at every import.
#pragma once

#include "files/FileResult.h"
#include "files/ProgressReporter.h"
#include "files/SceneDescription.h"

#include <string>
#include <sys/types.h>
#include <vector>

namespace runtime {

// Whether files with this extension (lower case, without the dot) are imported this way.
bool importsExtension(const std::string& extension);

// A started importer waiting for its request, and what it was started with.
struct ImporterProcess {
    pid_t id = -1;
    int request = -1; // our end of its standard input
    int reply = -1;   // our end of its standard output
    std::string program;
    std::vector<std::string> environment;
};

class ImportHelper {
public:
    enum class Spare { kKept, kNone };
    explicit ImportHelper(Spare spare = Spare::kKept);
    ~ImportHelper();
    ImportHelper(const ImportHelper&) = delete;
    ImportHelper& operator=(const ImportHelper&) = delete;

    FileResult import(const std::string& path, SceneDescription& scene,
                      ProgressReporter& reporter = ProgressReporter::silent());

    // The process id of the importer waiting for the next import; -1 when there is none.
    pid_t spareProcess() const { return m_spare.id; }

private:
    Spare m_keeps;
    ImporterProcess m_spare;
};

// One import with an importer started for it alone.
FileResult importWithHelper(const std::string& path, SceneDescription& scene,
                            ProgressReporter& reporter = ProgressReporter::silent());

} // namespace runtime
