// MainMenus: the main window's menu bar: File (New, Open, Open Recent, Import, Save, Save As,
// Export All, Quit), Edit (Undo, Redo) and Windows (Vorel, Script Editor, Outliner), with the
// shortcuts users of 3D packages expect.
//
// An entry that needs a command the host does not have (yet) is disabled: the file formats'
// `file`, the plug-in's `vorelCmd`. refreshAvailability() checks again (plug-ins load and
// unload at any time); the menus also check whenever they open. The menus are children of the
// window's menu bar; the object deletes them when it goes.
#pragma once

#include <QMenu>
#include <QObject>
#include <QPointer>
#include <functional>
#include <utility>
#include <vector>

class QAction;
class QDockWidget;
class QMainWindow;

namespace app {

class CommandRunner;
class RecentFiles;
class SceneFileActions;

class MainMenus : public QObject {
    Q_OBJECT

public:
    struct Docks {
        QDockWidget* scriptEditor;
        QDockWidget* outliner;
    };

    MainMenus(QMainWindow& window, CommandRunner& runner, SceneFileActions& files,
              RecentFiles& recent, Docks docks);
    ~MainMenus() override;

    void refreshAvailability();

private:
    QMenu* addMenu(const QString& title);
    QAction* addAction(QMenu& menu, const QString& text, const char* objectName,
                       const char* neededCommand, std::function<void()> slot);
    void buildFileMenu();
    void buildEditMenu();
    void buildWindowsMenu(Docks docks);
    void fillRecentMenu();
    void refreshUndoTexts();

    QMainWindow& m_window;
    CommandRunner& m_runner;
    SceneFileActions& m_files;
    RecentFiles& m_recent;
    std::vector<QPointer<QMenu>> m_menus;
    QMenu* m_recentMenu = nullptr;
    QAction* m_undo = nullptr;
    QAction* m_redo = nullptr;
    // Entries and the command each needs.
    std::vector<std::pair<QAction*, const char*>> m_needs;
};

} // namespace app
