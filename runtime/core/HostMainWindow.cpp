#include "core/HostMainWindow.h"

#include <QMainWindow>

namespace runtime {

namespace {

const bool registered = registerHostModule(
    kMainWindowRank, [](HostContext&) { return std::unique_ptr<HostModule>(new HostMainWindow); });

} // namespace

HostMainWindow::HostMainWindow() : m_window(new QMainWindow) {
    m_window->setObjectName("hostMainWindow");
    m_window->setWindowTitle(host().applicationName().asChar());
}

HostMainWindow::~HostMainWindow() {
    delete m_window.data();
}

QMainWindow* HostMainWindow::window() const {
    return m_window.data();
}

} // namespace runtime
