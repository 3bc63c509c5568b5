// SceneFileActions: what the File menu does: new, open, import, save, save as, export, and the
// question about unsaved changes before a scene is replaced or the application quits.
//
// Every action runs the `file` command through the CommandRunner, so it is echoed and its
// errors reach the script output. Before a scene is discarded (new, open, quit) the user is
// asked (UnsavedChangesQuestion): Save saves first (asking for a name when the scene has none)
// and goes on only when that worked; Don't Save goes on with `-force`; Cancel stops. Paths come
// from file dialogs, or from a PathChooser that replaces them. Each action returns whether it
// went through; files opened or saved under a new name enter the recent files.
#pragma once

#include <QObject>
#include <QString>
#include <functional>

class QWidget;

namespace app {

class CommandRunner;
class RecentFiles;

enum class PathPurpose { kOpen, kImport, kSaveAs, kExport };
// Gives the chosen path, or an empty one when the user cancelled.
using PathChooser = std::function<QString(PathPurpose)>;

class SceneFileActions : public QObject {
    Q_OBJECT

public:
    SceneFileActions(CommandRunner& runner, RecentFiles& recent, QWidget* dialogParent);

    void setPathChooser(PathChooser chooser) { m_choosePath = std::move(chooser); }

    bool newScene();
    // An empty path asks for one.
    bool openScene(const QString& path = QString());
    bool importFile();
    bool save();
    bool saveAs();
    bool exportAll();
    // True when the open scene may be discarded: it has no unsaved changes, the user saved
    // them, or chose not to.
    bool mayDiscardScene();

    // The scene's file as `file -q -sceneName` gives it; empty for an untitled scene or while
    // the host has no `file` command.
    static QString sceneName();

private:
    bool run(const QString& command);
    QString choose(PathPurpose purpose) const;
    // "-force " when the scene still has changes the user chose to drop.
    static QString forceFlag();

    CommandRunner& m_runner;
    RecentFiles& m_recent;
    QWidget* m_dialogParent;
    PathChooser m_choosePath;
};

} // namespace app
