#include "core/ScriptOutput.h"

#include "HCommandMessage.h"
#include "HGlobal.h"
#include "HMessage.h"

#include <gtest/gtest.h>
#include <string>
#include <utility>
#include <vector>

namespace {

using Line = std::pair<std::string, HCommandMessage::MessageType>;

void collect(const HString& text, HCommandMessage::MessageType type, void* data) {
    static_cast<std::vector<Line>*>(data)->emplace_back(text.asChar(), type);
}

} // namespace

TEST(ScriptOutputCallbacks, ReceiveEachMessageWithItsKind) {
    std::vector<Line> lines;
    HCallbackId id = HCommandMessage::addCommandOutputCallback(collect, &lines);
    HGlobal::displayInfo("loaded");
    HGlobal::displayWarning("There are no more commands to undo.");
    HGlobal::displayError("No object matches name: body");
    HMessage::removeCallback(id);
    HGlobal::displayInfo("not seen");
    std::vector<Line> expected = {
        {"loaded", HCommandMessage::kInfo},
        {"There are no more commands to undo.", HCommandMessage::kWarning},
        {"No object matches name: body", HCommandMessage::kError}};
    EXPECT_EQ(lines, expected);
}

TEST(ScriptOutputLines, CarryTheirKindsPrefix) {
    using runtime::ScriptOutput;
    EXPECT_STREQ(ScriptOutput::formatLine("x", HCommandMessage::kError).asChar(), "// Error: x");
    EXPECT_STREQ(ScriptOutput::formatLine("x", HCommandMessage::kWarning).asChar(),
                 "// Warning: x");
    EXPECT_STREQ(ScriptOutput::formatLine("1 2", HCommandMessage::kResult).asChar(),
                 "// Result: 1 2");
    EXPECT_STREQ(ScriptOutput::formatLine("x", HCommandMessage::kInfo).asChar(), "x");
    EXPECT_STREQ(ScriptOutput::formatLine("select -r a;", HCommandMessage::kHistory).asChar(),
                 "select -r a;");
}
