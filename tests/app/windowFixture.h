// windowFixture: the application window of vorel-host, decorated over the test host's main
// window for one test and taken off again after it, on an empty scene and an empty undo
// queue, with its settings in a file of its own; and helpers that drive it like a user.
#pragma once

#include "ApplicationWindow.h"
#include "qtPrinting.h"
#include "sceneFixture.h"

#include <QMessageBox>
#include <QSettings>
#include <QStringList>
#include <QTemporaryDir>
#include <QTimer>
#include <memory>

class QPlainTextEdit;

namespace appfixture {

class WindowTest : public fixture::FreshScene {
protected:
    void SetUp() override;
    void TearDown() override;

    app::ApplicationWindow& window() const { return *m_window; }
    QSettings& settings() const { return *m_settings; }
    QString temporaryPath(const QString& name) const { return m_directory.filePath(name); }
    // Takes the decorations off before the test ends.
    void destroyWindow() { m_window.reset(); }

private:
    QTemporaryDir m_directory;
    std::unique_ptr<QSettings> m_settings;
    std::unique_ptr<app::ApplicationWindow> m_window;
};

// Presses `button` on the next modal message box once it is open, and records its text.
class QuestionAnswerer {
public:
    explicit QuestionAnswerer(QMessageBox::StandardButton button);
    ~QuestionAnswerer();
    // How many questions were answered.
    int asked() const { return m_asked; }
    const QString& text() const { return m_text; }

private:
    void poll();

    QMessageBox::StandardButton m_button;
    int m_asked = 0;
    QString m_text;
    QTimer m_timer;
};

// The lines of a text pane, in order.
QStringList linesOf(const QPlainTextEdit& pane);

} // namespace appfixture
