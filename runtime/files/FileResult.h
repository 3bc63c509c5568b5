// FileResult: how reading or writing a scene file ended.
//
// Readers and writers never throw and never stop the process on a bad file: they return one of
// these. A failure or a cancellation carries one sentence for the user that names the file
// ("Cannot read "a.glb": accessor 3 reads past the end of buffer view 1."). Warnings say where
// the result differs from the file without making it unusable; the caller shows them.
#pragma once

#include <string>
#include <utility>
#include <vector>

namespace runtime {

struct FileResult {
    enum class Outcome { kDone, kFailed, kCancelled };

    Outcome outcome = Outcome::kDone;
    std::string message;
    std::vector<std::string> warnings;

    static FileResult done() { return {}; }
    static FileResult failed(std::string message) {
        return {Outcome::kFailed, std::move(message), {}};
    }
    static FileResult cancelled(std::string message) {
        return {Outcome::kCancelled, std::move(message), {}};
    }

    bool ok() const { return outcome == Outcome::kDone; }
};

// The sentences of the readers and writers, so that every format words them the same way.
std::string readFailure(const std::string& path, const std::string& problem);
std::string writeFailure(const std::string& path, const std::string& problem);
std::string readCancelled(const std::string& path);
std::string writeCancelled(const std::string& path);

} // namespace runtime
