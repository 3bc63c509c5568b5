#include "ScriptRun.h"

#include "HMessage.h"
#include "core/HostContext.h"
#include "lang/Interpreter.h"

namespace pyhost {

namespace {

// Keeps the script output in a list while it lives.
class OutputCapture {
public:
    explicit OutputCapture(std::vector<ScriptMessage>& messages)
        : m_id(HCommandMessage::addCommandOutputCallback(&OutputCapture::keep, &messages)) {}
    ~OutputCapture() { HMessage::removeCallback(m_id); }
    OutputCapture(const OutputCapture&) = delete;
    OutputCapture& operator=(const OutputCapture&) = delete;

private:
    static void keep(const HString& text, HCommandMessage::MessageType type, void* messages) {
        static_cast<std::vector<ScriptMessage>*>(messages)->push_back({type, text.str()});
    }

    HCallbackId m_id;
};

} // namespace

std::string ScriptOutcome::errorText() const {
    std::string text;
    for (const ScriptMessage& message : messages)
        if (message.type == HCommandMessage::kError)
            text += (text.empty() ? "" : "\n") + message.text;
    return text.empty() ? status.errorString().str() : text;
}

ScriptOutcome runScript(const std::string& text) {
    ScriptOutcome outcome;
    runtime::RunOptions options;
    options.undo = true;
    OutputCapture capture(outcome.messages);
    outcome.status =
        runtime::host().get<runtime::Interpreter>().run(HString(text), options, &outcome.result);
    return outcome;
}

std::string quoted(const std::string& text) {
    std::string result = "\"";
    for (char c : text) {
        switch (c) {
        case '"':
            result += "\\\"";
            break;
        case '\\':
            result += "\\\\";
            break;
        case '\n':
            result += "\\n";
            break;
        case '\t':
            result += "\\t";
            break;
        default:
            result += c;
        }
    }
    return result + '"';
}

} // namespace pyhost
