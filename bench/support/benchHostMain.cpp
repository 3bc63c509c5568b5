#include "benchHostMain.h"

#include "HLibrary.h"

#include <QApplication>
#include <benchmark/benchmark.h>
#include <cstdio>

int runBenchmarksInHost(int argc, char** argv, const char* name, void (*prepare)()) {
    benchmark::Initialize(&argc, argv);
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication application(argc, argv);
    HStatus status = HLibrary::initialize(name);
    if (!status) {
        std::fprintf(stderr, "cannot start the host: %s\n", status.errorString().asChar());
        return 1;
    }
    if (prepare)
        prepare();
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    HLibrary::cleanup();
    return 0;
}
