#include "HArgParser.h"
#include "HGlobal.h"
#include "HPxCommand.h"
#include "OutputRecorder.h"
#include "ScopedCommand.h"
#include "lang/BuiltInCommand.h"
#include "lang/Interpreter.h"

#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace {

using Lines = std::vector<std::string>;
using Line = OutputRecorder::Line;

// Every test command notes here what it was called with.
struct Calls {
    int doIts = 0;
    std::vector<Lines> arguments;
};
Calls g_calls;

Lines textsOf(const HArgList& args) {
    Lines texts;
    for (unsigned i = 0; i < args.length(); ++i)
        texts.push_back(args.asString(i).str());
    return texts;
}

// testArgs: no syntax; notes its arguments as given.
class ArgsCommand : public HPxCommand {
public:
    HStatus doIt(const HArgList& args) override {
        ++g_calls.doIts;
        g_calls.arguments.push_back(textsOf(args));
        return HS::kSuccess;
    }
};

// testFlags: a syntax without query or edit mode; gives the -value it got.
class FlagsCommand : public ArgsCommand {
public:
    static HSyntax createSyntax() {
        HSyntax syntax;
        syntax.addFlag("-v", "-value", HSyntax::kDouble);
        syntax.addFlag("-n", "-name", HSyntax::kString);
        return syntax;
    }
    HStatus doIt(const HArgList& args) override {
        ArgsCommand::doIt(args);
        HArgParser parser(syntax(), args);
        if (parser.isFlagSet("value"))
            setResult(parser.flagArgumentDouble("value", 0));
        return HS::kSuccess;
    }
};

// testResult KIND: a result of each kind the language knows.
class ResultCommand : public HPxCommand {
public:
    HStatus doIt(const HArgList& args) override {
        HString kind = args.asString(0);
        if (kind == "int")
            setResult(7);
        else if (kind == "bool")
            setResult(true);
        else if (kind == "double")
            setResult(2.5);
        else if (kind == "string")
            setResult("text");
        else if (kind == "dash")
            setResult("-x");
        else if (kind == "ints")
            setResult(HIntArray(3, 4));
        else if (kind == "doubles") {
            HDoubleArray values;
            values.append(57.0);
            values.append(0.1);
            setResult(values);
        } else if (kind == "strings") {
            HStringArray values;
            values.append("a b");
            values.append("c");
            setResult(values);
        }
        return HS::kSuccess;
    }
};

// testFail quiet|loud: fails, without or with a message of its own.
class FailCommand : public HPxCommand {
public:
    HStatus doIt(const HArgList& args) override {
        if (args.asString(0) == "loud")
            displayError("it broke");
        return HStatus(HS::kFailure, "broken");
    }
};

// testNest: runs "testResult int" itself and gives a result built from it.
class NestCommand : public HPxCommand {
public:
    HStatus doIt(const HArgList&) override {
        int inner = 0;
        HStatus status = HGlobal::executeCommand("testResult int", inner);
        setResult(HString("outer") + HString().set(static_cast<double>(inner)));
        return status;
    }
};

// testRecurse: runs itself, without end.
class RecurseCommand : public HPxCommand {
public:
    HStatus doIt(const HArgList&) override { return HGlobal::executeCommand("testRecurse"); }
};

class CommandExecution : public testing::Test {
protected:
    void SetUp() override { g_calls = Calls(); }

    ScopedCommand m_args{"testArgs", runtime::createCommand<ArgsCommand>};
    ScopedCommand m_flags{"testFlags", runtime::createCommand<FlagsCommand>,
                          &FlagsCommand::createSyntax};
    ScopedCommand m_result{"testResult", runtime::createCommand<ResultCommand>};
    ScopedCommand m_fail{"testFail", runtime::createCommand<FailCommand>};
    ScopedCommand m_nest{"testNest", runtime::createCommand<NestCommand>};
    ScopedCommand m_recurse{"testRecurse", runtime::createCommand<RecurseCommand>};
    OutputRecorder m_output;
};

} // namespace

TEST_F(CommandExecution, UnknownCommandsFailWithTheirName) {
    HStatus status = HGlobal::executeCommand("testArgs 1; noSuchThing 1; testArgs 2");
    EXPECT_EQ(status.statusCode(), HS::kNotFound);
    EXPECT_STREQ(status.errorString().asChar(), "Cannot find procedure \"noSuchThing\".");
    EXPECT_EQ(m_output.lines(), (std::vector<Line>{{"Cannot find procedure \"noSuchThing\".",
                                                    HCommandMessage::kError}}));
    EXPECT_EQ(g_calls.arguments, (std::vector<Lines>{{"1"}}));
}

TEST_F(CommandExecution, BadFlagsAndDisabledModesAreRefusedBeforeDoIt) {
    HStatus status = HGlobal::executeCommand("testFlags -v 1 -x");
    EXPECT_EQ(status.statusCode(), HS::kInvalidParameter);
    EXPECT_STREQ(status.errorString().asChar(), "testFlags: Invalid flag: -x");
    EXPECT_FALSE(HGlobal::executeCommand("testFlags -q -v"));
    EXPECT_FALSE(HGlobal::executeCommand("testFlags -e -v 2", false, true));
    EXPECT_FALSE(HGlobal::executeCommand("testFlags -v high"));
    EXPECT_EQ(
        m_output.texts(HCommandMessage::kError),
        (Lines{"testFlags: Invalid flag: -x", "testFlags: Invalid flag: -q",
               "testFlags: Invalid flag: -e", "testFlags: Flag -v needs a number, not \"high\"."}));
    EXPECT_EQ(g_calls.doIts, 0);
}

TEST_F(CommandExecution, QuotedSubstitutedAndCalledValuesAreNeverFlags) {
    ASSERT_TRUE(HGlobal::executeCommand("testFlags \"-x\" `testResult dash` -n \"-y\";"
                                        "testFlags(\"menu\", -x, 3);"));
    EXPECT_EQ(g_calls.arguments,
              (std::vector<Lines>{{"-x", "-x", "-n", "-y"}, {"menu", "-x", "3"}}));
}

TEST_F(CommandExecution, SyntaxErrorsRunNothing) {
    HStatus status = HGlobal::executeCommand("testArgs 1;\ntestArgs \"2");
    EXPECT_EQ(status.statusCode(), HS::kFailure);
    EXPECT_EQ(m_output.texts(HCommandMessage::kError),
              (Lines{"Syntax error in line 2: unterminated string."}));
    EXPECT_EQ(g_calls.doIts, 0);
}

TEST_F(CommandExecution, DisplayEchoesTheTextBeforeItRuns) {
    ASSERT_TRUE(HGlobal::executeCommand("print hello;\nprint \"a  b\" -1", true));
    EXPECT_FALSE(HGlobal::executeCommand("print )", true));
    EXPECT_EQ(m_output.lines(),
              (std::vector<Line>{
                  {"print hello;\nprint \"a  b\" -1", HCommandMessage::kHistory},
                  {"hello", HCommandMessage::kInfo},
                  {"a  b -1", HCommandMessage::kInfo},
                  {"print )", HCommandMessage::kHistory},
                  {"Syntax error in line 1: unexpected \")\".", HCommandMessage::kError}}));
}

TEST_F(CommandExecution, PrintJoinsItsArgumentsWithSpaces) {
    ASSERT_TRUE(HGlobal::executeCommand("print a \"b c\" -1 -x `testResult strings` `testResult "
                                        "double`; print"));
    EXPECT_EQ(m_output.texts(HCommandMessage::kInfo), (Lines{"a b c -1 -x a b c 2.5", ""}));
}

TEST_F(CommandExecution, ResultsReachEveryOverload) {
    int integer = 0;
    ASSERT_TRUE(HGlobal::executeCommand("testResult int", integer));
    EXPECT_EQ(integer, 7);
    ASSERT_TRUE(HGlobal::executeCommand("testResult bool", integer));
    EXPECT_EQ(integer, 1);
    double number = 0;
    ASSERT_TRUE(HGlobal::executeCommand("testResult double", number));
    EXPECT_EQ(number, 2.5);
    ASSERT_TRUE(HGlobal::executeCommand("testResult int", number));
    EXPECT_EQ(number, 7.0);
    ASSERT_TRUE(HGlobal::executeCommand("testFlags -value -0.25", number, true, true));
    EXPECT_EQ(number, -0.25);
    HString text;
    ASSERT_TRUE(HGlobal::executeCommand("testResult string", text));
    EXPECT_STREQ(text.asChar(), "text");
    HIntArray integers;
    ASSERT_TRUE(HGlobal::executeCommand("testResult ints", integers));
    ASSERT_EQ(integers.length(), 3u);
    EXPECT_EQ(integers[2], 4);
    HDoubleArray numbers;
    ASSERT_TRUE(HGlobal::executeCommand("testResult doubles", numbers));
    ASSERT_EQ(numbers.length(), 2u);
    EXPECT_EQ(numbers[1], 0.1);
    ASSERT_TRUE(HGlobal::executeCommand("testResult ints", numbers));
    ASSERT_EQ(numbers.length(), 3u);
    EXPECT_EQ(numbers[0], 4.0);
    HStringArray texts;
    ASSERT_TRUE(HGlobal::executeCommand("testResult strings", texts));
    ASSERT_EQ(texts.length(), 2u);
    EXPECT_STREQ(texts[0].asChar(), "a b");
    EXPECT_EQ(m_output.lines(),
              (std::vector<Line>{{"testFlags -value -0.25", HCommandMessage::kHistory}}));
}

TEST_F(CommandExecution, ResultsOfAnotherTypeAreRefused) {
    int integer = 0;
    HStatus status = HGlobal::executeCommand("testResult double", integer);
    EXPECT_EQ(status.statusCode(), HS::kInvalidParameter);
    HString text;
    EXPECT_EQ(HGlobal::executeCommand("testResult none", text).statusCode(), HS::kInvalidParameter);
    HIntArray integers;
    EXPECT_FALSE(HGlobal::executeCommand("testResult doubles", integers));
    HStringArray texts;
    EXPECT_FALSE(HGlobal::executeCommand("testResult string", texts));
    EXPECT_EQ(m_output.texts(HCommandMessage::kError),
              (Lines{"The command gave a double where an int was asked for.",
                     "The command gave no result where a string was asked for.",
                     "The command gave a double array where an int array was asked for.",
                     "The command gave a string where a string array was asked for."}));
}

TEST_F(CommandExecution, StringResultsAreWrittenAsTheHostWritesNumbers) {
    auto result = [](const char* command) {
        HStatus status;
        HString text = HGlobal::executeCommandStringResult(command, false, false, &status);
        EXPECT_TRUE(static_cast<bool>(status)) << command;
        return text.str();
    };
    EXPECT_EQ(result("testResult int"), "7");
    EXPECT_EQ(result("testResult double"), "2.5");
    EXPECT_EQ(result("testResult string"), "text");
    EXPECT_EQ(result("testResult ints"), "4 4 4");
    EXPECT_EQ(result("testResult doubles"), "57 0.1");
    EXPECT_EQ(result("testResult strings"), "a b c");
    EXPECT_EQ(result("testResult none"), "");
    EXPECT_EQ(result("testResult string; testResult int"), "7");

    HStatus status;
    EXPECT_STREQ(
        HGlobal::executeCommandStringResult("testResult int; testFail", false, false, &status)
            .asChar(),
        "");
    EXPECT_EQ(status.statusCode(), HS::kFailure);
}

TEST_F(CommandExecution, BackquotesGiveOneArgumentPerElement) {
    ASSERT_TRUE(HGlobal::executeCommand(
        "testArgs `testResult strings` `testResult ints` `testResult none` x"));
    EXPECT_EQ(g_calls.arguments, (std::vector<Lines>{{"a b", "c", "4", "4", "4", "x"}}));
    EXPECT_FALSE(HGlobal::executeCommand("testArgs `noSuchThing`"));
    EXPECT_EQ(g_calls.doIts, 1);
}

TEST_F(CommandExecution, FailuresAreReportedOnce) {
    HStatus quiet = HGlobal::executeCommand("testFail quiet; testArgs");
    EXPECT_STREQ(quiet.errorString().asChar(), "broken");
    HStatus loud = HGlobal::executeCommand("testFail loud");
    EXPECT_EQ(loud.statusCode(), HS::kFailure);
    EXPECT_EQ(m_output.texts(HCommandMessage::kError), (Lines{"testFail: broken", "it broke"}));
    EXPECT_EQ(g_calls.doIts, 0);
}

TEST_F(CommandExecution, NestedInvocationsKeepTheirOwnResults) {
    HString text;
    ASSERT_TRUE(HGlobal::executeCommand("testNest", text));
    EXPECT_STREQ(text.asChar(), "outer7");
}

TEST_F(CommandExecution, EndlessNestingFailsInsteadOfOverflowing) {
    HStatus status = HGlobal::executeCommand("testRecurse");
    EXPECT_EQ(status.statusCode(), HS::kFailure);
    EXPECT_EQ(m_output.texts(HCommandMessage::kError),
              (Lines{"testRecurse: commands nest too deeply."}));
}

TEST_F(CommandExecution, TheScriptEditorSeesEachStatementsResult) {
    runtime::RunOptions options;
    options.showResults = true;
    runtime::CommandResult last;
    ASSERT_TRUE(runtime::host().get<runtime::Interpreter>().run(
        "testResult int; testResult none; testResult strings", options, &last));
    EXPECT_EQ(m_output.lines(), (std::vector<Line>{{"7", HCommandMessage::kResult},
                                                   {"a b c", HCommandMessage::kResult}}));
    EXPECT_EQ(last.kind(), runtime::CommandResult::kStringArray);
}
