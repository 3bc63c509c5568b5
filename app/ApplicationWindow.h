// ApplicationWindow: turns the host's hidden main window (HQtUtil::mainWindow) into the
// application's window: menus, the docked script editor and outliner, the status bar, the
// viewport area in the middle, progress dialogs, a title naming the scene ("body.vscene* -
// vorel-host", the star while it has unsaved changes), and the question about unsaved changes
// when the window is closed.
//
// The object decorates the window in its constructor and takes every decoration off again in
// its destructor (it must go before the host stops: its parts hold host callbacks), leaving
// the window as it found it. It does not show the window. The settings (recent files) are the
// caller's and outlive the object.
#pragma once

#include "CommandRunner.h"
#include "ProgressDialog.h"
#include "RecentFiles.h"
#include "scene/Scene.h"

#include <QObject>
#include <QPointer>
#include <memory>

class QDockWidget;
class QMainWindow;
class QSettings;

namespace app {

class MainMenus;
class Outliner;
class SceneFileActions;
class ScriptEditor;
class StatusReporter;

class ApplicationWindow : public QObject {
    Q_OBJECT

public:
    static const char* const kApplicationName;

    ApplicationWindow(QMainWindow& window, QSettings& settings);
    ~ApplicationWindow() override;

    QMainWindow& window() const { return m_window; }
    CommandRunner& runner() { return m_runner; }
    SceneFileActions& files() const { return *m_files; }
    ScriptEditor* scriptEditor() const { return m_scriptEditor; }
    Outliner* outliner() const { return m_outliner; }
    StatusReporter& status() const { return *m_status; }
    ProgressDialog& progress() { return m_progress; }

    static QString title(const QString& sceneName, bool modified);
    // Reads the scene's name again (after a command that may have changed it).
    void refreshTitle();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    QDockWidget* addDock(QWidget* content, const QString& title, const char* objectName,
                         Qt::DockWidgetArea area);
    void showTitle();

    QMainWindow& m_window;
    CommandRunner m_runner;
    RecentFiles m_recent;
    ProgressDialog m_progress;
    SceneFileActions* m_files;
    ScriptEditor* m_scriptEditor;
    Outliner* m_outliner;
    QPointer<QDockWidget> m_scriptDock;
    QPointer<QDockWidget> m_outlinerDock;
    std::unique_ptr<StatusReporter> m_status;
    MainMenus* m_menus;
    QString m_sceneName;
    bool m_shownModified = false;
    runtime::Scene::ListenerId m_sceneListener;
};

} // namespace app
