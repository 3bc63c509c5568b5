// Runs the tests of one program inside a running host. Tests that need a fresh scene get it
// from their fixture; the host itself lives for the whole program.
#include "HLibrary.h"

#include <QApplication>
#include <cstdio>
#include <gtest/gtest.h>

int main(int argc, char** argv) {
    testing::InitGoogleTest(&argc, argv);
    // Tests never need a display unless they ask for one (the viewport tests set xcb).
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication application(argc, argv);
    HStatus status = HLibrary::initialize("vorel-tests");
    if (!status) {
        std::fprintf(stderr, "cannot start the host: %s\n", status.errorString().asChar());
        return 1;
    }
    int result = RUN_ALL_TESTS();
    HLibrary::cleanup();
    return result;
}
