#include "lang/CommandRegistry.h"

#include "HGlobal.h"
#include "HPxCommand.h"
#include "OutputRecorder.h"
#include "ScopedCommand.h"
#include "lang/BuiltInCommand.h"

#include <gtest/gtest.h>

namespace {

runtime::CommandRegistry& registry() {
    return runtime::host().get<runtime::CommandRegistry>();
}

class NothingCommand : public HPxCommand {
public:
    HStatus doIt(const HArgList&) override { return HS::kSuccess; }
};

// Notes whether its own plug-in counts as running while it runs.
bool g_runningInside = false;
class WatchCommand : public HPxCommand {
public:
    HStatus doIt(const HArgList&) override {
        g_runningInside = registry().isRunning("pluginA");
        return HS::kSuccess;
    }
};

class MissingCommand : public HPxCommand {
public:
    HStatus doIt(const HArgList& args) override {
        return runtime::noObjectMatches(args.asString(0));
    }
};

HPxCommand* createNothing() {
    return nullptr;
}

} // namespace

TEST(CommandRegistry, RefusesTakenOrEmptyNamesAndMissingCreators) {
    HStatus taken =
        registry().add("print", runtime::createCommand<NothingCommand>, nullptr, "pluginA");
    EXPECT_EQ(taken.statusCode(), HS::kInvalidParameter);
    EXPECT_STREQ(taken.errorString().asChar(), "A command named \"print\" already exists.");
    EXPECT_EQ(registry().find("print")->owner, runtime::kBuiltInOwner);
    EXPECT_EQ(
        registry().add("", runtime::createCommand<NothingCommand>, nullptr, "pluginA").statusCode(),
        HS::kInvalidParameter);
    EXPECT_EQ(registry().add("orphan", nullptr, nullptr, "pluginA").statusCode(),
              HS::kInvalidParameter);
    EXPECT_FALSE(registry().find("orphan"));
}

TEST(CommandRegistry, FindsAndRemovesAnOwnersCommandsTogether) {
    ASSERT_TRUE(static_cast<bool>(
        registry().add("zeta", runtime::createCommand<NothingCommand>, nullptr, "pluginA")));
    ASSERT_TRUE(static_cast<bool>(
        registry().add("alpha", runtime::createCommand<NothingCommand>, nullptr, "pluginA")));
    HStringArray names = registry().names("pluginA");
    ASSERT_EQ(names.length(), 2u);
    EXPECT_STREQ(names[0].asChar(), "alpha");
    EXPECT_STREQ(names[1].asChar(), "zeta");
    registry().removeAll("pluginA");
    EXPECT_FALSE(registry().find("alpha"));
    EXPECT_FALSE(registry().find("zeta"));
    EXPECT_TRUE(registry().find("print"));
}

TEST(CommandRegistry, AnOwnerCountsAsRunningOnlyWhileItsCommandRuns) {
    ScopedCommand watch("watch", runtime::createCommand<WatchCommand>, nullptr, "pluginA");
    EXPECT_FALSE(registry().isRunning("pluginA"));
    ASSERT_TRUE(HGlobal::executeCommand("watch"));
    EXPECT_TRUE(g_runningInside);
    EXPECT_FALSE(registry().isRunning("pluginA"));
}

TEST(CommandRegistry, CreatorsThatGiveNothingAndMissingObjectsAreReported) {
    ScopedCommand broken("broken", createNothing);
    ScopedCommand missing("missing", runtime::createCommand<MissingCommand>);
    OutputRecorder output;
    EXPECT_FALSE(HGlobal::executeCommand("broken"));
    HStatus status = HGlobal::executeCommand("missing body");
    EXPECT_EQ(status.statusCode(), HS::kInvalidParameter);
    EXPECT_EQ(output.texts(HCommandMessage::kError),
              (std::vector<std::string>{"broken: the command could not be created.",
                                        "No object matches name: body"}));
}
