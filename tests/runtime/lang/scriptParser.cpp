#include "lang/ScriptParser.h"

#include <gtest/gtest.h>
#include <random>
#include <string>
#include <vector>

using runtime::parseScript;
using runtime::ScriptArgument;
using runtime::ScriptStatement;

namespace {

// One line per statement: the command, then each argument; strings in single quotes,
// substitutions in backquotes, a call's arguments in parentheses.
std::string describe(const ScriptStatement& statement) {
    std::string text = statement.command.str();
    text += statement.procedureCall ? "(" : "";
    for (const ScriptArgument& argument : statement.arguments) {
        text += ' ';
        if (argument.kind == ScriptArgument::kString)
            text += "'" + argument.text.str() + "'";
        else if (argument.kind == ScriptArgument::kSubstitution)
            text += "`" + argument.text.str() + "`";
        else
            text += argument.text.str();
    }
    return text + (statement.procedureCall ? " )" : "");
}

std::vector<std::string> statementsOf(const char* text) {
    runtime::ParsedScript parsed = parseScript(text);
    EXPECT_TRUE(parsed.ok()) << parsed.error.asChar();
    std::vector<std::string> described;
    for (const ScriptStatement& statement : parsed.script.statements)
        described.push_back(describe(statement));
    return described;
}

std::string errorOf(const char* text) {
    runtime::ParsedScript parsed = parseScript(text);
    EXPECT_TRUE(parsed.script.statements.empty());
    return parsed.error.str();
}

using Lines = std::vector<std::string>;

} // namespace

TEST(ScriptParsing, GluedStatementsSplitAtEverySemicolon) {
    const char* text = "select -r body.vtx[3] body.vtx[7] ;skinCluster -e -sw 0.1 -swi 5 -omi 1 "
                       "cluster1;";
    EXPECT_EQ(statementsOf(text), (Lines{"select -r body.vtx[3] body.vtx[7]",
                                         "skinCluster -e -sw 0.1 -swi 5 -omi 1 cluster1"}));
    runtime::ParsedScript parsed = parseScript(text);
    ASSERT_EQ(parsed.script.statements.size(), 2u);
    EXPECT_EQ(parsed.script.statements[0].text, "select -r body.vtx[3] body.vtx[7]");
    EXPECT_EQ(parsed.script.statements[1].text, "skinCluster -e -sw 0.1 -swi 5 -omi 1 cluster1");
}

TEST(ScriptParsing, LineEndsSeparateStatementsAndCountLines) {
    runtime::ParsedScript parsed =
        parseScript("selectType -ocm -alc false;\nrefresh\n\n  print a;\n");
    ASSERT_TRUE(parsed.ok());
    ASSERT_EQ(parsed.script.statements.size(), 3u);
    EXPECT_EQ(describe(parsed.script.statements[0]), "selectType -ocm -alc false");
    EXPECT_EQ(parsed.script.statements[1].line, 2u);
    EXPECT_EQ(describe(parsed.script.statements[2]), "print a");
    EXPECT_EQ(parsed.script.statements[2].line, 4u);
}

TEST(ScriptParsing, WordsKeepPathsRangesAndSignedNumbers) {
    EXPECT_EQ(statementsOf("setAttr |root|spine1.lockInfluenceWeights 1;"
                           "select -add body.vtx[2:5] -0.5 -1 1e-3"),
              (Lines{"setAttr |root|spine1.lockInfluenceWeights 1",
                     "select -add body.vtx[2:5] -0.5 -1 1e-3"}));
}

TEST(ScriptParsing, QuotedStringsLoseTheirQuotesAndEscapes) {
    EXPECT_EQ(statementsOf(R"(print "a \"b\" c\\d\t|" "x;y // z" "" "-n")"),
              (Lines{"print 'a \"b\" c\\d\t|' 'x;y // z' '' '-n'"}));
    EXPECT_EQ(statementsOf(R"(print "line\nbreak")"), (Lines{"print 'line\nbreak'"}));
}

TEST(ScriptParsing, CommentsRunToTheLineEnd) {
    EXPECT_EQ(statementsOf("print 1 // print 2; print 3\nprint 4// 5\n// print 6\nprint 7"),
              (Lines{"print 1", "print 4", "print 7"}));
}

TEST(ScriptParsing, ProcedureCallsTakeCommaSeparatedValues) {
    EXPECT_EQ(statementsOf("pntAttrSkinJointMenu(\"pntJoinListPopupMenu\", "
                           "\"pntAttrSkinPaintCtx\" );\n"),
              (Lines{"pntAttrSkinJointMenu( 'pntJoinListPopupMenu' 'pntAttrSkinPaintCtx' )"}));
    EXPECT_EQ(statementsOf("f();g (1, -2,\n   word, `currentCtx`) // done\nh"),
              (Lines{"f( )", "g( 1 -2 word `currentCtx` )", "h"}));
}

TEST(ScriptParsing, BackquotesHoldACommandOfTheirOwn) {
    runtime::ParsedScript parsed =
        parseScript("pntAttrSkinPaintCtx -e -opacity 0.5 `currentCtx`;\nprint `print \"`;\"`");
    ASSERT_TRUE(parsed.ok()) << parsed.error.asChar();
    ASSERT_EQ(parsed.script.statements.size(), 2u);
    const ScriptArgument& context = parsed.script.statements[0].arguments[3];
    ASSERT_EQ(context.kind, ScriptArgument::kSubstitution);
    ASSERT_EQ(context.script->statements.size(), 1u);
    EXPECT_EQ(describe(context.script->statements[0]), "currentCtx");
    const ScriptArgument& quoted = parsed.script.statements[1].arguments[0];
    ASSERT_EQ(quoted.script->statements.size(), 1u);
    EXPECT_EQ(describe(quoted.script->statements[0]), "print '`;'");
}

TEST(ScriptParsing, EmptyTextsGiveNoStatements) {
    EXPECT_EQ(statementsOf(""), Lines{});
    EXPECT_EQ(statementsOf(";; \n\t// only a comment\n;"), Lines{});
}

TEST(ScriptParsing, BadTextNamesItsLineAndGivesNoStatements) {
    EXPECT_EQ(errorOf("print \"abc"), "Syntax error in line 1: unterminated string.");
    EXPECT_EQ(errorOf("print \"a\nb\""), "Syntax error in line 1: unterminated string.");
    EXPECT_EQ(errorOf("print 1;\nprint `currentCtx"),
              "Syntax error in line 2: unterminated backquote.");
    EXPECT_EQ(errorOf("print ``"), "Syntax error in line 1: empty backquotes.");
    EXPECT_EQ(errorOf("print `print \"a`"), "Syntax error in line 1: unterminated backquote.");
    EXPECT_EQ(errorOf("select a )"), "Syntax error in line 1: unexpected \")\".");
    EXPECT_EQ(errorOf("\n\n(x)"), "Syntax error in line 3: unexpected \"(\".");
    EXPECT_EQ(errorOf("f(a, b"), "Syntax error in line 1: the call of f is not closed.");
    EXPECT_EQ(errorOf("f(a b)"), "Syntax error in line 1: expected \",\" or \")\" in the call "
                                 "of f.");
    EXPECT_EQ(errorOf("f(a,)"), "Syntax error in line 1: missing argument in the call of f.");
    EXPECT_EQ(errorOf("f(a, (b))"), "Syntax error in line 1: unexpected \"(\".");
    EXPECT_EQ(errorOf("f(a) b"), "Syntax error in line 1: unexpected text after the call of f.");
    EXPECT_EQ(errorOf("\"select\" a"),
              "Syntax error in line 1: a statement must start with a command name.");
    EXPECT_EQ(errorOf("-r a"),
              "Syntax error in line 1: a statement must start with a command name, not \"-r\".");
    EXPECT_EQ(errorOf("body.vtx[3]"), "Syntax error in line 1: \"body.vtx[3]\" is not a command "
                                      "name.");
}

TEST(ScriptParsing, RandomTextEitherParsesOrFailsWithALine) {
    // Texts made of the characters that steer the parser, so that every branch is hit.
    const std::string alphabet = "ab-1.;\n \t\"\\`()/,|[]:";
    std::mt19937 random(7);
    for (int round = 0; round < 5000; ++round) {
        std::string text;
        int length = static_cast<int>(random() % 40);
        for (int i = 0; i < length; ++i)
            text += alphabet[random() % alphabet.size()];
        runtime::ParsedScript parsed = parseScript(text);
        if (!parsed.ok()) {
            EXPECT_EQ(parsed.error.str().rfind("Syntax error in line ", 0), 0u) << text;
            EXPECT_TRUE(parsed.script.statements.empty()) << text;
        }
    }
}
