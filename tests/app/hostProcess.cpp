#include "hostProcess.h"

#include <QProcess>
#include <gtest/gtest.h>

namespace appfixture {

namespace {

QStringList linesOf(const QByteArray& bytes) {
    QStringList lines = QString::fromUtf8(bytes).split('\n');
    if (!lines.isEmpty() && lines.last().isEmpty())
        lines.removeLast();
    return lines;
}

} // namespace

HostRun runHost(const QStringList& arguments) {
    return runProgram(VOREL_HOST_PROGRAM, arguments);
}

HostRun runProgram(const QString& program, const QStringList& arguments,
                   const QString& workingFolder) {
    QProcess process;
    // In a sanitized build the leak checker would list its suppressions on stderr at exit.
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert("LSAN_OPTIONS", "print_suppressions=0");
    process.setProcessEnvironment(environment);
    process.setWorkingDirectory(workingFolder);
    process.start(program, arguments);
    HostRun run;
    // Generous: a sanitized build starts slowly on a busy machine.
    if (!process.waitForFinished(300000) || process.exitStatus() != QProcess::NormalExit) {
        ADD_FAILURE() << program.toStdString()
                      << " did not finish: " << process.errorString().toStdString();
        process.kill();
        process.waitForFinished();
        return run;
    }
    run.exitCode = process.exitCode();
    run.out = linesOf(process.readAllStandardOutput());
    run.err = linesOf(process.readAllStandardError());
    return run;
}

} // namespace appfixture
