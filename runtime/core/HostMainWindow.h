// HostMainWindow: keeps the host's main window (HQtUtil::mainWindow) for the life of the host.
//
// The window is created hidden; the application decorates and shows it, batch mode and tests
// never show it. Plug-ins parent their windows to it and delete them when they unload, which
// happens before this module is destroyed (plug-ins rank higher).
#pragma once

#include "core/HostContext.h"

#include <QPointer>

class QMainWindow;

namespace runtime {

class HostMainWindow : public HostModule {
public:
    HostMainWindow();
    ~HostMainWindow() override;

    QMainWindow* window() const;

private:
    QPointer<QMainWindow> m_window;
};

} // namespace runtime
