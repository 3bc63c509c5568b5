#include "files/JsonInput.h"

namespace runtime {

namespace {

using Json = nlohmann::ordered_json;

// nlohmann's messages start with "[json.exception.parse_error.101] "; users need what follows.
std::string withoutExceptionTag(const std::string& message) {
    if (!message.empty() && message.front() == '[') {
        std::size_t end = message.find("] ");
        if (end != std::string::npos)
            return message.substr(end + 2);
    }
    return message;
}

std::string notValidJson(const nlohmann::detail::exception& error) {
    return "it is not valid JSON (" + withoutExceptionTag(error.what()) + ")";
}

// Checks the text's syntax and depth without building anything. The depth cannot be checked
// by a parse callback: nlohmann's callback parser searches the whole enclosing list after
// every object, which makes a list of many objects take quadratic time.
class SyntaxCheck : public nlohmann::json_sax<Json> {
public:
    std::string problem;

    bool null() override { return true; }
    bool boolean(bool) override { return true; }
    bool number_integer(number_integer_t) override { return true; }
    bool number_unsigned(number_unsigned_t) override { return true; }
    bool number_float(number_float_t, const string_t&) override { return true; }
    bool string(string_t&) override { return true; }
    bool binary(binary_t&) override { return true; }
    bool start_object(std::size_t) override { return enter(); }
    bool key(string_t&) override { return true; }
    bool end_object() override { return leave(); }
    bool start_array(std::size_t) override { return enter(); }
    bool end_array() override { return leave(); }
    bool parse_error(std::size_t, const std::string&,
                     const nlohmann::detail::exception& error) override {
        problem = notValidJson(error);
        return false;
    }

private:
    bool enter() {
        if (++m_depth <= kMaxJsonDepth)
            return true;
        problem = "its JSON is nested more than " + std::to_string(kMaxJsonDepth) + " levels deep";
        return false;
    }
    bool leave() {
        --m_depth;
        return true;
    }

    int m_depth = 0;
};

} // namespace

bool parseJsonDocument(const char* text, std::size_t size, nlohmann::ordered_json& document,
                       std::string& problem) {
    SyntaxCheck check;
    if (!Json::sax_parse(text, text + size, &check)) {
        problem = check.problem;
        return false;
    }
    try {
        document = Json::parse(text, text + size);
    } catch (const Json::exception& error) {
        problem = notValidJson(error);
        return false;
    }
    return true;
}

} // namespace runtime
