#include "document/SceneDocument.h"

#include "core/EventBus.h"
#include "document/NativeSceneReader.h"
#include "document/NativeSceneWriter.h"
#include "document/SceneBuilding.h"
#include "document/SceneDescribing.h"
#include "document/SkinLockAttributes.h"
#include "files/SceneFiles.h"
#include "scene/Scene.h"
#include "undo/UndoQueue.h"

#include <QFileInfo>
#include <map>

namespace runtime {

namespace {

const bool registered = registerHostModule(kDocumentRank, [](HostContext& context) {
    return std::unique_ptr<HostModule>(new SceneDocument(context.get<Scene>()));
});

bool isNative(const std::string& path) {
    return QFileInfo(QString::fromStdString(path)).suffix().toLower() == "vscene";
}

// The full path names of the DAG nodes, before they move into the scene.
std::map<const Node*, std::string> fullPaths(const std::vector<NodePtr>& nodes) {
    std::map<const Node*, std::string> paths;
    for (const NodePtr& node : nodes)
        if (node->isDag())
            paths[node.get()] = node->fullPathName();
    return paths;
}

// Locks name influences by full path; an imported node that had to be renamed takes its
// locks along.
HStatus followRenames(Scene& scene, const std::vector<NodePtr>& added,
                      const std::map<const Node*, std::string>& pathsBefore) {
    std::map<std::string, std::string> renamed;
    for (const auto& [node, path] : pathsBefore)
        if (node->fullPathName() != path)
            renamed[path] = node->fullPathName();
    HStatus status;
    for (const NodePtr& node : added)
        if (status && !renamed.empty() && node->hasFn(HFn::kSkinClusterFilter))
            status = renameLockedPaths(scene, *node, renamed);
    return status;
}

} // namespace

SceneDocument& sceneDocument() {
    return host().get<SceneDocument>();
}

SceneDocument::SceneDocument(Scene& scene) : m_scene(scene) {}

bool SceneDocument::reads(const std::string& path) {
    return isNative(path) || readsSceneFile(path);
}

bool SceneDocument::writes(const std::string& path) {
    return isNative(path) || writesSceneFile(path);
}

void SceneDocument::newScene() {
    m_scene.reset();
    m_name.clear();
    m_origins = SceneOrigins();
    sceneReplaced();
}

FileResult SceneDocument::open(const std::string& path, ProgressReporter& reporter) {
    std::unique_ptr<Scene> staging = m_scene.makeStaging();
    SceneOrigins origins;
    FileResult result = readInto(path, *staging, &origins, reporter);
    if (!result.ok())
        return result;
    m_scene.replaceWith(*staging);
    m_name = path;
    m_origins = std::move(origins);
    sceneReplaced();
    return result;
}

FileResult SceneDocument::import(const std::string& path, std::vector<NodePtr>& added,
                                 ProgressReporter& reporter) {
    std::unique_ptr<Scene> staging = m_scene.makeStaging();
    FileResult result = readInto(path, *staging, nullptr, reporter);
    if (!result.ok())
        return result;
    const bool wasEmpty = m_scene.nodeCount() == 0;
    const std::map<const Node*, std::string> pathsBefore = fullPaths(staging->nodes());
    added = m_scene.takeNodes(*staging);
    HStatus status = followRenames(m_scene, added, pathsBefore);
    if (!status)
        result.warnings.push_back(
            "Some locks of \"" + path +
            "\" may name joints by their old names: " + status.errorString().str());
    if (wasEmpty)
        host().get<EventBus>().fire(events::kSceneOpened);
    return result;
}

FileResult SceneDocument::save(ProgressReporter& reporter) {
    FileResult result = write(m_name, reporter);
    if (!result.ok())
        return result;
    m_scene.setModified(false);
    host().get<EventBus>().fire(events::kSceneSaved);
    return result;
}

FileResult SceneDocument::exportAll(const std::string& path, ProgressReporter& reporter) const {
    return write(path, reporter);
}

FileResult SceneDocument::readInto(const std::string& path, Scene& staging, SceneOrigins* origins,
                                   ProgressReporter& reporter) {
    if (isNative(path))
        return readNativeScene(path, staging, reporter);
    SceneDescription description;
    ProgressPart reading(reporter, 0.0, 0.8);
    FileResult result = readSceneFile(path, description, reading, &m_importer);
    if (!result.ok())
        return result;
    ProgressPart building(reporter, 0.8, 1.0);
    FileResult built = buildScene(description, staging, path, building, origins);
    built.warnings.insert(built.warnings.begin(), result.warnings.begin(), result.warnings.end());
    return built;
}

FileResult SceneDocument::write(const std::string& path, ProgressReporter& reporter) const {
    if (isNative(path))
        return writeNativeScene(m_scene, path, reporter);
    std::vector<std::string> warnings;
    SceneDescription description;
    if (writesSceneFile(path))
        description = describeScene(m_scene, &m_origins, warnings);
    FileResult result = writeSceneFile(description, path, reporter);
    if (result.ok())
        result.warnings.insert(result.warnings.begin(), warnings.begin(), warnings.end());
    return result;
}

void SceneDocument::sceneReplaced() {
    host().get<UndoQueue>().flush();
    host().get<EventBus>().fire(events::kSceneOpened);
}

} // namespace runtime
