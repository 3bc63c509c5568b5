// OutputRecorder: collects every line written to the script output while it lives, with its
// kind, so that tests can check exact message texts.
#pragma once

#include "HCommandMessage.h"

#include <ostream>
#include <string>
#include <vector>

class OutputRecorder {
public:
    struct Line {
        std::string text;
        HCommandMessage::MessageType type;
        bool operator==(const Line& other) const {
            return text == other.text && type == other.type;
        }
        friend void PrintTo(const Line& line, std::ostream* out) {
            *out << "{\"" << line.text << "\", kind " << line.type << "}";
        }
    };

    OutputRecorder();
    ~OutputRecorder();
    OutputRecorder(const OutputRecorder&) = delete;
    OutputRecorder& operator=(const OutputRecorder&) = delete;

    const std::vector<Line>& lines() const { return m_lines; }
    // The texts of the lines of one kind, in order.
    std::vector<std::string> texts(HCommandMessage::MessageType type) const;
    void clear() { m_lines.clear(); }

private:
    static void collect(const HString& text, HCommandMessage::MessageType type, void* recorder);

    std::vector<Line> m_lines;
    HCallbackId m_callback;
};
