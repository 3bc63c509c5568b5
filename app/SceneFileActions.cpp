#include "SceneFileActions.h"

#include "CommandRunner.h"
#include "RecentFiles.h"
#include "UnsavedChangesQuestion.h"
#include "scene/Scene.h"

#include <QFileDialog>
#include <QFileInfo>

namespace app {

namespace {

const char* const kReadableFiles =
    "Scenes (*.vscene *.gltf *.glb *.fbx *.dae *.x *.iqm *.smd *.ms3d *.b3d *.blend);;"
    "All files (*)";
const char* const kWritableFiles = "Vorel scene (*.vscene);;glTF (*.gltf *.glb)";

} // namespace

SceneFileActions::SceneFileActions(CommandRunner& runner, RecentFiles& recent,
                                   QWidget* dialogParent)
    : QObject(dialogParent), m_runner(runner), m_recent(recent), m_dialogParent(dialogParent) {}

bool SceneFileActions::newScene() {
    return mayDiscardScene() && run("file " + forceFlag() + "-new");
}

bool SceneFileActions::openScene(const QString& given) {
    if (!mayDiscardScene())
        return false;
    QString path = given.isEmpty() ? choose(PathPurpose::kOpen) : given;
    if (path.isEmpty())
        return false;
    if (!run("file " + forceFlag() + "-open " + CommandRunner::quoted(path))) {
        if (!QFileInfo::exists(path))
            m_recent.remove(path);
        return false;
    }
    m_recent.add(path);
    return true;
}

bool SceneFileActions::importFile() {
    QString path = choose(PathPurpose::kImport);
    return !path.isEmpty() && run("file -import " + CommandRunner::quoted(path));
}

bool SceneFileActions::save() {
    if (sceneName().isEmpty())
        return saveAs();
    return run("file -save");
}

bool SceneFileActions::saveAs() {
    QString path = choose(PathPurpose::kSaveAs);
    if (path.isEmpty() || !run("file -rename " + CommandRunner::quoted(path) + "; file -save"))
        return false;
    m_recent.add(path);
    return true;
}

bool SceneFileActions::exportAll() {
    QString path = choose(PathPurpose::kExport);
    return !path.isEmpty() && run("file -exportAll " + CommandRunner::quoted(path));
}

bool SceneFileActions::mayDiscardScene() {
    if (!runtime::scene().isModified())
        return true;
    QString name = QFileInfo(sceneName()).fileName();
    switch (askAboutUnsavedChanges(m_dialogParent, name.isEmpty() ? "the untitled scene" : name)) {
    case UnsavedChangesAnswer::kSave:
        return save();
    case UnsavedChangesAnswer::kDiscard:
        return true;
    case UnsavedChangesAnswer::kCancel:
        break;
    }
    return false;
}

QString SceneFileActions::sceneName() {
    if (!CommandRunner::exists("file"))
        return QString();
    HStatus status;
    QString name = CommandRunner::query("file -q -sceneName", &status);
    return status ? name : QString();
}

bool SceneFileActions::run(const QString& command) {
    return static_cast<bool>(m_runner.run(command));
}

QString SceneFileActions::choose(PathPurpose purpose) const {
    if (m_choosePath)
        return m_choosePath(purpose);
    switch (purpose) {
    case PathPurpose::kOpen:
        return QFileDialog::getOpenFileName(m_dialogParent, "Open Scene", QString(),
                                            kReadableFiles);
    case PathPurpose::kImport:
        return QFileDialog::getOpenFileName(m_dialogParent, "Import", QString(), kReadableFiles);
    case PathPurpose::kSaveAs:
        return QFileDialog::getSaveFileName(m_dialogParent, "Save Scene As", QString(),
                                            kWritableFiles);
    case PathPurpose::kExport:
        return QFileDialog::getSaveFileName(m_dialogParent, "Export All", QString(),
                                            kWritableFiles);
    }
    return QString();
}

QString SceneFileActions::forceFlag() {
    return runtime::scene().isModified() ? "-force " : QString();
}

} // namespace app
