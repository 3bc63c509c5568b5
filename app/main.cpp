// vorel-host: the 3D host application Vorel runs in. See HostApplication.h.
#include "HostApplication.h"

int main(int argc, char** argv) {
    return app::runHostApplication(argc, argv);
}
