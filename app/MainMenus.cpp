#include "MainMenus.h"

#include "CommandRunner.h"
#include "HQtUtil.h"
#include "RecentFiles.h"
#include "SceneFileActions.h"
#include "core/HostContext.h"
#include "undo/UndoQueue.h"

#include <QAction>
#include <QDockWidget>
#include <QFileInfo>
#include <QMainWindow>
#include <QMenuBar>

namespace app {

namespace {

void showDock(QDockWidget* dock) {
    dock->show();
    dock->raise();
    if (dock->widget())
        dock->widget()->setFocus();
}

} // namespace

MainMenus::MainMenus(QMainWindow& window, CommandRunner& runner, SceneFileActions& files,
                     RecentFiles& recent, Docks docks)
    : QObject(&window), m_window(window), m_runner(runner), m_files(files), m_recent(recent) {
    buildFileMenu();
    buildEditMenu();
    buildWindowsMenu(docks);
    refreshAvailability();
}

MainMenus::~MainMenus() {
    for (const QPointer<QMenu>& menu : m_menus)
        delete menu.data();
}

void MainMenus::refreshAvailability() {
    for (auto& [action, command] : m_needs)
        action->setEnabled(CommandRunner::exists(command));
    m_recentMenu->setEnabled(CommandRunner::exists("file") && !m_recent.paths().isEmpty());
}

QMenu* MainMenus::addMenu(const QString& title) {
    QMenu* menu = m_window.menuBar()->addMenu(title);
    connect(menu, &QMenu::aboutToShow, this, &MainMenus::refreshAvailability);
    m_menus.push_back(menu);
    return menu;
}

QAction* MainMenus::addAction(QMenu& menu, const QString& text, const char* objectName,
                              const char* neededCommand, std::function<void()> slot) {
    QAction* action = menu.addAction(text);
    action->setObjectName(objectName);
    connect(action, &QAction::triggered, this, std::move(slot));
    if (neededCommand)
        m_needs.emplace_back(action, neededCommand);
    return action;
}

void MainMenus::buildFileMenu() {
    QMenu* menu = addMenu("&File");
    addAction(*menu, "&New Scene", "newSceneAction", "file", [this] {
        m_files.newScene();
    })->setShortcut(QKeySequence::New);
    addAction(*menu, "&Open Scene...", "openSceneAction", "file", [this] {
        m_files.openScene();
    })->setShortcut(QKeySequence::Open);
    m_recentMenu = menu->addMenu("Open &Recent");
    m_recentMenu->setObjectName("recentFilesMenu");
    connect(m_recentMenu, &QMenu::aboutToShow, this, &MainMenus::fillRecentMenu);
    addAction(*menu, "&Import...", "importAction", "file", [this] { m_files.importFile(); });
    menu->addSeparator();
    addAction(*menu, "&Save Scene", "saveSceneAction", "file", [this] {
        m_files.save();
    })->setShortcut(QKeySequence::Save);
    addAction(*menu, "Save Scene &As...", "saveSceneAsAction", "file", [this] {
        m_files.saveAs();
    })->setShortcut(QKeySequence(Qt::CTRL + Qt::SHIFT + Qt::Key_S));
    addAction(*menu, "&Export All...", "exportAllAction", "file", [this] { m_files.exportAll(); });
    menu->addSeparator();
    addAction(*menu, "&Quit", "quitAction", nullptr, [this] {
        m_window.close();
    })->setShortcut(QKeySequence(Qt::CTRL + Qt::Key_Q));
}

void MainMenus::fillRecentMenu() {
    m_recentMenu->clear();
    int number = 0;
    for (const QString& path : m_recent.paths()) {
        QString label = QString("&%1 %2").arg(++number % 10).arg(QFileInfo(path).fileName());
        QAction* action = m_recentMenu->addAction(label);
        action->setToolTip(path);
        action->setData(path);
        connect(action, &QAction::triggered, this, [this, path] { m_files.openScene(path); });
    }
}

void MainMenus::buildEditMenu() {
    QMenu* menu = addMenu("&Edit");
    connect(menu, &QMenu::aboutToShow, this, &MainMenus::refreshUndoTexts);
    m_undo = addAction(*menu, "&Undo", "undoAction", "undo", [this] { m_runner.run("undo"); });
    m_undo->setShortcut(QKeySequence(Qt::CTRL + Qt::Key_Z));
    m_redo = addAction(*menu, "&Redo", "redoAction", "redo", [this] { m_runner.run("redo"); });
    m_redo->setShortcuts(
        {QKeySequence(Qt::CTRL + Qt::Key_Y), QKeySequence(Qt::CTRL + Qt::SHIFT + Qt::Key_Z)});
}

namespace {

// "Undo select -r joint1": what the entry would take back, cut short when long.
QString entryText(const char* verb, const HString& statement) {
    constexpr int kLongest = 40;
    QString text = HQtUtil::toQString(statement).simplified();
    if (text.size() > kLongest)
        text = text.left(kLongest - 3) + "...";
    return text.isEmpty() ? QString(verb) : QString(verb) + " " + text;
}

} // namespace

void MainMenus::refreshUndoTexts() {
    runtime::UndoQueue& queue = runtime::host().get<runtime::UndoQueue>();
    m_undo->setText(entryText("&Undo", queue.undoName()));
    m_redo->setText(entryText("&Redo", queue.redoName()));
}

void MainMenus::buildWindowsMenu(Docks docks) {
    QMenu* menu = addMenu("&Windows");
    addAction(*menu, "&Vorel", "vorelWindowAction", "vorelCmd",
              [this] { m_runner.run("vorelCmd"); });
    addAction(*menu, "&Script Editor", "scriptEditorAction", nullptr,
              [dock = docks.scriptEditor] { showDock(dock); });
    addAction(*menu, "&Outliner", "outlinerAction", nullptr,
              [dock = docks.outliner] { showDock(dock); });
}

} // namespace app
