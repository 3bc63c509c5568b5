#include "OutputRecorder.h"

#include "HMessage.h"

OutputRecorder::OutputRecorder()
    : m_callback(HCommandMessage::addCommandOutputCallback(collect, this)) {}

OutputRecorder::~OutputRecorder() {
    HMessage::removeCallback(m_callback);
}

std::vector<std::string> OutputRecorder::texts(HCommandMessage::MessageType type) const {
    std::vector<std::string> texts;
    for (const Line& line : m_lines)
        if (line.type == type)
            texts.push_back(line.text);
    return texts;
}

void OutputRecorder::collect(const HString& text, HCommandMessage::MessageType type,
                             void* recorder) {
    static_cast<OutputRecorder*>(recorder)->m_lines.push_back({text.asChar(), type});
}
