#include "files/SceneFiles.h"

#include "files/GltfReader.h"
#include "files/GltfWriter.h"
#include "files/ImportHelper.h"

#include <QFileInfo>

namespace runtime {

namespace {

std::string extensionOf(const std::string& path) {
    return QFileInfo(QString::fromStdString(path)).suffix().toLower().toStdString();
}

bool isGltf(const std::string& path) {
    const std::string extension = extensionOf(path);
    return extension == "gltf" || extension == "glb";
}

std::string unknownFormat() {
    return "its format is not known by its extension";
}

} // namespace

bool readsSceneFile(const std::string& path) {
    return isGltf(path) || importsExtension(extensionOf(path));
}

bool writesSceneFile(const std::string& path) {
    return isGltf(path);
}

FileResult readSceneFile(const std::string& path, SceneDescription& scene,
                         ProgressReporter& reporter, ImportHelper* importer) {
    if (isGltf(path))
        return readGltf(path, scene, reporter);
    if (importsExtension(extensionOf(path)))
        return importer ? importer->import(path, scene, reporter)
                        : importWithHelper(path, scene, reporter);
    return FileResult::failed(readFailure(path, unknownFormat()));
}

FileResult writeSceneFile(const SceneDescription& scene, const std::string& path,
                          ProgressReporter& reporter) {
    if (isGltf(path))
        return writeGltf(scene, path, reporter);
    if (importsExtension(extensionOf(path)))
        return FileResult::failed(writeFailure(path, "files of this format can only be read"));
    return FileResult::failed(writeFailure(path, unknownFormat()));
}

} // namespace runtime
