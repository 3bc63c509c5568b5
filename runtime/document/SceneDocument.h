// SceneDocument: the open scene as a file: the name it is saved under, and opening, importing,
// saving and exporting it in every format the host knows (what the `file` command and the
// application's File menu run).
//
//   .vscene                                       read and written whole (NativeSceneReader.h,
//                                                 NativeSceneWriter.h)
//   .gltf .glb                                    read and written through a scene description
//   .fbx .dae .x .iqm .smd .ms3d .b3d .blend      read only (files/SceneFiles.h)
//
// Every file is first built into a staging scene, and only a file read whole and built without
// a problem reaches the open scene: a file that fails, or whose reading is cancelled, leaves the
// scene, the selection, the undo queue and the name exactly as they were. Opening and a new
// scene replace the scene, empty the selection without "SelectionChanged", flush the undo queue
// and then fire "SceneOpened"; importing adds the file's nodes (renamed where their names are
// taken) and fires "SceneOpened" when the scene was empty. Saving writes atomically, clears the
// modified mark and fires "SceneSaved"; exporting writes the scene elsewhere and changes
// nothing. A scene opened from glTF keeps the document it came from until another is opened,
// so that saving it as glTF changes only what was edited. The document owns the host's import
// helper, and with it the importer kept started for the next import (files/ImportHelper.h).
#pragma once

#include "core/HostContext.h"
#include "document/SceneOrigins.h"
#include "files/FileResult.h"
#include "files/ImportHelper.h"
#include "files/ProgressReporter.h"
#include "scene/Node.h"

#include <string>
#include <vector>

namespace runtime {

class Scene;

class SceneDocument : public HostModule {
public:
    explicit SceneDocument(Scene& scene);

    // The path the scene is saved under; empty for a scene that was never named.
    const std::string& name() const { return m_name; }
    void rename(const std::string& path) { m_name = path; }

    static bool reads(const std::string& path);
    static bool writes(const std::string& path);

    void newScene();
    FileResult open(const std::string& path,
                    ProgressReporter& reporter = ProgressReporter::silent());
    // `added` receives the nodes the file brought, parents first.
    FileResult import(const std::string& path, std::vector<NodePtr>& added,
                      ProgressReporter& reporter = ProgressReporter::silent());
    // Saves under name(), which must not be empty.
    FileResult save(ProgressReporter& reporter = ProgressReporter::silent());
    FileResult exportAll(const std::string& path,
                         ProgressReporter& reporter = ProgressReporter::silent()) const;

private:
    // Reads the file into staging; with origins, records where the nodes came from.
    FileResult readInto(const std::string& path, Scene& staging, SceneOrigins* origins,
                        ProgressReporter& reporter);
    FileResult write(const std::string& path, ProgressReporter& reporter) const;
    void sceneReplaced();

    Scene& m_scene;
    std::string m_name;
    SceneOrigins m_origins;
    ImportHelper m_importer;
};

SceneDocument& sceneDocument();

} // namespace runtime
