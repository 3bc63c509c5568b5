#include "windowFixture.h"

#include "HQtUtil.h"
#include "core/HostContext.h"
#include "undo/UndoQueue.h"

#include <QApplication>
#include <QMainWindow>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTextBlock>

namespace appfixture {

void WindowTest::SetUp() {
    fixture::FreshScene::SetUp();
    runtime::host().get<runtime::UndoQueue>().flush();
    ASSERT_TRUE(m_directory.isValid());
    m_settings =
        std::make_unique<QSettings>(m_directory.filePath("settings.ini"), QSettings::IniFormat);
    m_window = std::make_unique<app::ApplicationWindow>(*HQtUtil::mainWindow(), *m_settings);
}

void WindowTest::TearDown() {
    m_window.reset();
    HQtUtil::mainWindow()->hide();
    runtime::scene().reset();
}

QuestionAnswerer::QuestionAnswerer(QMessageBox::StandardButton button) : m_button(button) {
    QObject::connect(&m_timer, &QTimer::timeout, [this] { poll(); });
    m_timer.start(10);
}

QuestionAnswerer::~QuestionAnswerer() = default;

void QuestionAnswerer::poll() {
    QMessageBox* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
    if (!box || !box->isVisible())
        return;
    ++m_asked;
    m_text = box->text() + "\n" + box->informativeText();
    box->button(m_button)->click();
}

QStringList linesOf(const QPlainTextEdit& pane) {
    QStringList lines;
    for (QTextBlock block = pane.document()->begin(); block.isValid(); block = block.next())
        lines.append(block.text());
    if (lines.size() == 1 && lines.first().isEmpty())
        lines.clear();
    return lines;
}

} // namespace appfixture
