// FuzzHost: what the fuzz targets share: a running host for the targets that feed it, a private
// folder for the inputs that readers only take as files, and the checks a target makes on the
// outcome.
//
// startFuzzHost() creates the QApplication (offscreen) and starts the host once per process; the
// host lives until the process ends, so every input meets the same host and finds a fresh scene
// only when its target asks for one. writeFuzzFile() replaces one file of the private folder,
// which the process removes when it ends. FUZZ_EXPECT aborts the process with the failed
// condition, so that libFuzzer keeps the input and the replay test fails on it.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

namespace fuzzing {

void startFuzzHost();

// The file `name` of the private folder, holding the bytes; its full path.
std::string writeFuzzFile(const std::string& name, const std::uint8_t* data, std::size_t size);

[[noreturn]] void failExpectation(const char* condition, const char* file, int line);

} // namespace fuzzing

#define FUZZ_EXPECT(condition)                                                                     \
    do {                                                                                           \
        if (!(condition))                                                                          \
            ::fuzzing::failExpectation(#condition, __FILE__, __LINE__);                            \
    } while (false)
