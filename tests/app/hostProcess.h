// hostProcess: runs the built vorel-host as a child process, as a user would from a terminal,
// and collects its exit code and its stdout and stderr lines.
#pragma once

#include "qtPrinting.h"

#include <QString>
#include <QStringList>

namespace appfixture {

struct HostRun {
    int exitCode = -1;
    QStringList out;
    QStringList err;
};

HostRun runHost(const QStringList& arguments);

} // namespace appfixture
