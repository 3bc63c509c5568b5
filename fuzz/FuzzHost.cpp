#include "FuzzHost.h"

#include "HLibrary.h"

#include <QApplication>
#include <QFile>
#include <QTemporaryDir>
#include <cstdio>
#include <cstdlib>

namespace fuzzing {

namespace {

QTemporaryDir& scratchFolder() {
    static QTemporaryDir folder;
    return folder;
}

} // namespace

void startFuzzHost() {
    if (HLibrary::isInitialized())
        return;
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    // The application lives as long as the process: inputs run until the fuzzer stops it.
    static int argc = 1;
    static char name[] = "vorel-fuzz";
    static char* argv[] = {name, nullptr};
    static QApplication* application = new QApplication(argc, argv);
    (void)application;
    HStatus status = HLibrary::initialize("vorel-fuzz");
    if (!status) {
        std::fprintf(stderr, "cannot start the host: %s\n", status.errorString().asChar());
        std::abort();
    }
}

std::string writeFuzzFile(const std::string& name, const std::uint8_t* data, std::size_t size) {
    QTemporaryDir& folder = scratchFolder();
    if (!folder.isValid())
        failExpectation("the scratch folder exists", __FILE__, __LINE__);
    const QString path = folder.filePath(QString::fromStdString(name));
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate) ||
        file.write(reinterpret_cast<const char*>(data), static_cast<qint64>(size)) !=
            static_cast<qint64>(size))
        failExpectation("the input is written to the scratch folder", __FILE__, __LINE__);
    return path.toStdString();
}

void failExpectation(const char* condition, const char* file, int line) {
    std::fprintf(stderr, "%s:%d: expected %s\n", file, line, condition);
    std::abort();
}

} // namespace fuzzing
