#include "files/JsonInput.h"

#include <stdexcept>

namespace runtime {

namespace {

struct TooDeep : std::runtime_error {
    TooDeep() : std::runtime_error("too deep") {}
};

// nlohmann's messages start with "[json.exception.parse_error.101] "; users need what follows.
std::string withoutExceptionTag(const std::string& message) {
    if (!message.empty() && message.front() == '[') {
        std::size_t end = message.find("] ");
        if (end != std::string::npos)
            return message.substr(end + 2);
    }
    return message;
}

} // namespace

bool parseJsonDocument(const char* text, std::size_t size, nlohmann::ordered_json& document,
                       std::string& problem) {
    using Json = nlohmann::ordered_json;
    auto limitDepth = [](int depth, Json::parse_event_t, Json&) {
        if (depth > kMaxJsonDepth)
            throw TooDeep();
        return true;
    };
    try {
        document = Json::parse(text, text + size, limitDepth);
    } catch (const TooDeep&) {
        problem = "its JSON is nested more than " + std::to_string(kMaxJsonDepth) + " levels deep";
        return false;
    } catch (const Json::exception& error) {
        problem = "it is not valid JSON (" + withoutExceptionTag(error.what()) + ")";
        return false;
    }
    return true;
}

} // namespace runtime
