// hostProcess: runs the built vorel-host (or another program, such as one that runs vorel-host)
// as a child process, as a user would from a terminal, and collects its exit code and its
// stdout and stderr lines.
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
// Any program, in the given working folder (empty: this process's).
HostRun runProgram(const QString& program, const QStringList& arguments,
                   const QString& workingFolder = QString());

} // namespace appfixture
