#include "files/FileResult.h"

namespace runtime {

namespace {

std::string sentence(const std::string& text) {
    if (!text.empty() && text.back() != '.')
        return text + ".";
    return text;
}

} // namespace

std::string readFailure(const std::string& path, const std::string& problem) {
    return sentence("Cannot read \"" + path + "\": " + problem);
}

std::string writeFailure(const std::string& path, const std::string& problem) {
    return sentence("Cannot write \"" + path + "\": " + problem);
}

std::string readCancelled(const std::string& path) {
    return "Reading \"" + path + "\" was cancelled.";
}

std::string writeCancelled(const std::string& path) {
    return "Writing \"" + path + "\" was cancelled; the file was left as it was.";
}

} // namespace runtime
