// benchHostMain: the body of main() for benchmark programs that need a running host. It
// creates the QApplication (offscreen), starts the host, runs `prepare` (when given) and then
// the registered benchmarks, and stops the host. Returns the exit code: 1 when the host cannot
// start.
#pragma once

int runBenchmarksInHost(int argc, char** argv, const char* name, void (*prepare)() = nullptr);
