// hostProcess: runs the built vorel-host as a child process, as a user would from a terminal,
// and collects its exit code and its stdout and stderr lines.
#pragma once

#include <QString>
#include <QStringList>
#include <ostream>

// Lets test failures show texts as texts.
inline void PrintTo(const QString& text, std::ostream* out) {
    *out << '"' << text.toStdString() << '"';
}

namespace appfixture {

struct HostRun {
    int exitCode = -1;
    QStringList out;
    QStringList err;
};

HostRun runHost(const QStringList& arguments);

} // namespace appfixture
