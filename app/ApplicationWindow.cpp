#include "ApplicationWindow.h"

#include "MainMenus.h"
#include "Outliner.h"
#include "SceneFileActions.h"
#include "ScriptEditor.h"
#include "StatusReporter.h"
#include "ViewportArea.h"

#include <QCloseEvent>
#include <QCoreApplication>
#include <QDockWidget>
#include <QFileInfo>
#include <QMainWindow>
#include <QStatusBar>

namespace app {

const char* const ApplicationWindow::kApplicationName = "vorel-host";

ApplicationWindow::ApplicationWindow(QMainWindow& window, QSettings& settings)
    : QObject(&window), m_window(window), m_runner(this), m_recent(settings), m_progress(&window) {
    m_files = new SceneFileActions(m_runner, m_recent, &m_window);
    m_window.setCentralWidget(createViewportArea(m_runner));
    m_scriptEditor = new ScriptEditor(m_runner);
    m_scriptDock =
        addDock(m_scriptEditor, "Script Editor", "scriptEditorDock", Qt::BottomDockWidgetArea);
    m_outliner = new Outliner(m_runner);
    m_outlinerDock = addDock(m_outliner, "Outliner", "outlinerDock", Qt::LeftDockWidgetArea);
    m_status = std::make_unique<StatusReporter>(*m_window.statusBar());
    m_menus = new MainMenus(m_window, m_runner, *m_files, m_recent, {m_scriptDock, m_outlinerDock});

    connect(&m_runner, &CommandRunner::finished, this, [this] {
        refreshTitle();
        m_menus->refreshAvailability();
    });
    m_sceneListener = runtime::scene().addListener([this](const runtime::SceneChange&) {
        if (runtime::scene().isModified() != m_shownModified)
            showTitle();
    });
    m_window.installEventFilter(this);
    m_window.resize(1280, 800);
    m_window.resizeDocks({m_outlinerDock}, {260}, Qt::Horizontal);
    m_window.resizeDocks({m_scriptDock}, {240}, Qt::Vertical);
    refreshTitle();
}

ApplicationWindow::~ApplicationWindow() {
    m_window.removeEventFilter(this);
    runtime::scene().removeListener(m_sceneListener);
    delete m_menus;
    m_status.reset();
    delete m_scriptDock.data();
    delete m_outlinerDock.data();
    delete m_window.takeCentralWidget();
    delete m_files;
    m_window.statusBar()->clearMessage();
    m_window.setWindowTitle(kApplicationName);
}

QString ApplicationWindow::title(const QString& sceneName, bool modified) {
    QString name = sceneName.isEmpty() ? "untitled" : QFileInfo(sceneName).fileName();
    return name + (modified ? "*" : "") + " - " + kApplicationName;
}

void ApplicationWindow::refreshTitle() {
    m_sceneName = SceneFileActions::sceneName();
    showTitle();
}

void ApplicationWindow::showTitle() {
    m_shownModified = runtime::scene().isModified();
    m_window.setWindowTitle(title(m_sceneName, m_shownModified));
}

bool ApplicationWindow::eventFilter(QObject* watched, QEvent* event) {
    if (watched == &m_window && event->type() == QEvent::Close) {
        if (!m_files->mayDiscardScene()) {
            event->ignore();
            return true;
        }
        QCoreApplication::quit();
    }
    return QObject::eventFilter(watched, event);
}

QDockWidget* ApplicationWindow::addDock(QWidget* content, const QString& title,
                                        const char* objectName, Qt::DockWidgetArea area) {
    QDockWidget* dock = new QDockWidget(title, &m_window);
    dock->setObjectName(objectName);
    dock->setWidget(content);
    m_window.addDockWidget(area, dock);
    return dock;
}

} // namespace app
