// save-loop PATH: the program the crash-safe saving test kills. It starts the host, builds a
// skinned cylinder large enough that a save takes a while, names the scene PATH and then saves
// it again and again until it is killed. Before save N it sets hip.translateX to N; after save N
// has returned it prints "saved N" on its own line, so that the test knows which versions the
// file may hold when the kill comes.
#include "HGlobal.h"
#include "HLibrary.h"

#include <QApplication>
#include <cstdio>
#include <string>

namespace {

bool run(const std::string& text) {
    HStatus status = HGlobal::executeCommand(HString(text));
    if (!status)
        std::fprintf(stderr, "save-loop: %s failed: %s\n", text.c_str(),
                     status.errorString().asChar());
    return bool(status);
}

} // namespace

int main(int argc, char** argv) {
    if (argc != 2) {
        std::fprintf(stderr, "usage: save-loop PATH\n");
        return 2;
    }
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication application(argc, argv);
    if (!HLibrary::initialize("save-loop"))
        return 1;
    const std::string path = argv[1];
    if (!run("polyCylinder -n body -r 1 -h 4 -sx 60 -sy 60; select -cl; joint -n hip -p 0 -2 0; "
             "joint -n knee -p 0 0 0; joint -n ankle -p 0 2 0; "
             "skinCluster -n bodySkin -mi 3 hip knee ankle body; file -rename \"" +
             path + "\""))
        return 1;
    for (long version = 0;; ++version) {
        if (!run("setAttr hip.translateX " + std::to_string(version) + "; file -save"))
            return 1;
        std::printf("saved %ld\n", version);
        std::fflush(stdout);
    }
}
