// A stand-in for the importer program that fails the way a broken import library would, once it
// has its request (it reads its input to the end first, as the importer does), chosen by
// $FAILING_IMPORTER: "crash" aborts after some progress, "hang" reports progress and then
// never ends, "cut" sends half a reply and exits cleanly, "garbage" sends bytes that are no
// reply at all.
#include "files/ImportStream.h"

#include <cstdio>
#include <cstdlib>
#include <string>
#include <unistd.h>

namespace {

void send(const std::string& bytes) {
    std::fwrite(bytes.data(), 1, bytes.size(), stdout);
    std::fflush(stdout);
}

} // namespace

int main() {
    char buffer[4096];
    while (read(STDIN_FILENO, buffer, sizeof buffer) > 0) {
    }
    const char* chosen = std::getenv("FAILING_IMPORTER");
    const std::string how = chosen ? chosen : "crash";
    if (how == "garbage") {
        send("not an import reply");
        return 0;
    }
    send(runtime::importStreamHeader());
    send(runtime::importProgressRecord(0.25));
    if (how == "hang")
        for (;;)
            pause();
    if (how == "cut") {
        runtime::SceneDescription scene;
        scene.nodes.resize(3);
        const std::string reply = runtime::importSceneRecord(scene);
        send(reply.substr(0, reply.size() / 2));
        return 0;
    }
    std::abort();
}
