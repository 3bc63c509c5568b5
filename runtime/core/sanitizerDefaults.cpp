// Sanitized builds only: the leak checker's defaults for every program that links the host.
// Qt, its platform plug-ins and the system libraries below it keep some allocations until the
// process ends; those are theirs, not ours. Our own allocations show our frames and stay checked.
extern "C" const char* __lsan_default_suppressions() {
    return "leak:libQt5Core.so\n"
           "leak:libQt5Gui.so\n"
           "leak:libQt5Widgets.so\n"
           "leak:libqoffscreen.so\n"
           "leak:libqxcb.so\n"
           "leak:libQt5XcbQpa.so\n"
           "leak:libfontconfig.so\n"
           "leak:libdbus-1.so\n"
           "leak:libglib-2.0.so\n"
           "leak:libGLX_mesa.so\n"
           "leak:libGLdispatch.so\n"
           "leak:swrast_dri.so\n"
           "leak:libLLVM\n";
}

extern "C" const char* __ubsan_default_options() {
    return "print_stacktrace=1:halt_on_error=1";
}
