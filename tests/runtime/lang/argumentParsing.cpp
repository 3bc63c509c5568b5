#include "HArgList.h"
#include "HArgParser.h"
#include "HSyntax.h"
#include "lang/HCommandAccess.h"

#include <gtest/gtest.h>
#include <initializer_list>

namespace {

HArgList argumentsOf(std::initializer_list<const char*> words) {
    HArgList arguments;
    for (const char* word : words)
        arguments.addArg(HString(word));
    return arguments;
}

// The flags a smoothing edit of a skin cluster is written with.
HSyntax smoothingSyntax() {
    HSyntax syntax;
    syntax.addFlag("-sw", "-smoothWeights", HSyntax::kDouble);
    syntax.addFlag("-swi", "-smoothWeightsMaxIterations", HSyntax::kLong);
    syntax.addFlag("-omi", "-obeyMaxInfluences", HSyntax::kBoolean);
    syntax.addFlag("-n", "-name", HSyntax::kString);
    syntax.addFlag("-p", "-position", HSyntax::kDouble, HSyntax::kDouble, HSyntax::kDouble);
    syntax.addFlag("-tv", "-transformValue", HSyntax::kDouble);
    syntax.addFlag("-t", "-transform", HSyntax::kString);
    syntax.enableEdit();
    return syntax;
}

std::string parseError(const HSyntax& syntax, const HArgList& arguments) {
    HStatus status;
    HArgParser parser(syntax, arguments, &status);
    EXPECT_EQ(status.statusCode(), HS::kInvalidParameter);
    EXPECT_EQ(parser.numberOfFlagsUsed(), 0u);
    return status.errorString().str();
}

} // namespace

TEST(ArgumentList, ConvertsValuesAndReportsThoseThatDoNot) {
    HArgList list = argumentsOf({"5", "-0.5", "on", "no", "abc", "0"});
    HStatus status;
    EXPECT_EQ(list.asInt(0, &status), 5);
    EXPECT_TRUE(static_cast<bool>(status));
    EXPECT_DOUBLE_EQ(list.asDouble(1, &status), -0.5);
    EXPECT_TRUE(list.asBool(2, &status));
    EXPECT_FALSE(list.asBool(3, &status));
    EXPECT_FALSE(list.asBool(5, &status));
    EXPECT_TRUE(static_cast<bool>(status));

    EXPECT_EQ(list.asInt(1, &status), 0);
    EXPECT_EQ(status.statusCode(), HS::kInvalidParameter);
    EXPECT_STREQ(status.errorString().asChar(), "\"-0.5\" is not an integer.");
    EXPECT_FALSE(list.asBool(4, &status));
    EXPECT_STREQ(status.errorString().asChar(), "\"abc\" is not a truth value.");
    EXPECT_STREQ(list.asString(6, &status).asChar(), "");
    EXPECT_STREQ(status.errorString().asChar(), "Argument 6 is past the end of 6 arguments.");
}

TEST(SyntaxDeclaration, RefusesBadNamesAndRepeatedLongNames) {
    HSyntax syntax;
    EXPECT_EQ(syntax.addFlag("x", "-xray").statusCode(), HS::kInvalidParameter);
    EXPECT_EQ(syntax.addFlag("-x", nullptr).statusCode(), HS::kInvalidParameter);
    EXPECT_TRUE(static_cast<bool>(syntax.addFlag("-sm", "-skinPaintSmooth")));
    EXPECT_TRUE(static_cast<bool>(syntax.addFlag("-sm", "-smoothSkinWeights")));
    HStatus twice = syntax.addFlag("-s", "-smoothSkinWeights");
    EXPECT_EQ(twice.statusCode(), HS::kInvalidParameter);
    EXPECT_STREQ(twice.errorString().asChar(), "The flag -smoothSkinWeights is declared twice.");
    EXPECT_FALSE(syntax.canQuery());
    EXPECT_FALSE(syntax.canEdit());
}

TEST(FlagParsing, ReadsShortAndLongFlagsWithTheirValues) {
    HStatus status;
    HArgParser parser(smoothingSyntax(),
                      argumentsOf({"-e", "-sw", "0.1", "-smoothWeightsMaxIterations", "5", "-omi",
                                   "1", "-p", "1", "2.5", "-3", "cluster1"}),
                      &status);
    ASSERT_TRUE(static_cast<bool>(status)) << status.errorString().asChar();
    EXPECT_TRUE(parser.isEdit());
    EXPECT_FALSE(parser.isQuery());
    EXPECT_EQ(parser.numberOfFlagsUsed(), 5u);
    for (const char* name : {"sw", "-sw", "smoothWeights", "-smoothWeights", "swi", "-e", "edit"})
        EXPECT_TRUE(parser.isFlagSet(name)) << name;
    EXPECT_FALSE(parser.isFlagSet("-n"));
    EXPECT_FALSE(parser.isFlagSet("q"));
    EXPECT_DOUBLE_EQ(parser.flagArgumentDouble("sw", 0), 0.1);
    EXPECT_EQ(parser.flagArgumentInt("-swi", 0), 5);
    EXPECT_TRUE(parser.flagArgumentBool("obeyMaxInfluences", 0));
    EXPECT_DOUBLE_EQ(parser.flagArgumentDouble("p", 2), -3.0);
    ASSERT_EQ(parser.numberOfCommandArguments(), 1u);
    EXPECT_STREQ(parser.commandArgumentString(0).asChar(), "cluster1");
}

TEST(FlagParsing, NegativeNumbersAndMarkedValuesAreNeverFlags) {
    HArgList arguments = argumentsOf({"-tv", "-0.5", "-1", "-.25"});
    HCommandAccess::addLiteral(arguments, "-n");
    HStatus status;
    HArgParser parser(smoothingSyntax(), arguments, &status);
    ASSERT_TRUE(static_cast<bool>(status)) << status.errorString().asChar();
    EXPECT_DOUBLE_EQ(parser.flagArgumentDouble("tv", 0), -0.5);
    HStringArray objects;
    parser.getObjects(objects);
    ASSERT_EQ(objects.length(), 3u);
    EXPECT_STREQ(objects[0].asChar(), "-1");
    EXPECT_STREQ(objects[1].asChar(), "-.25");
    EXPECT_STREQ(objects[2].asChar(), "-n");
    EXPECT_FALSE(parser.isFlagSet("n"));
}

TEST(FlagParsing, RefusesUnknownFlagsAndMissingOrWrongValues) {
    HSyntax syntax = smoothingSyntax();
    EXPECT_EQ(parseError(syntax, argumentsOf({"-sw", "0.1", "-x"})), "Invalid flag: -x");
    EXPECT_EQ(parseError(syntax, argumentsOf({"-swi"})), "Flag -swi needs 1 value.");
    EXPECT_EQ(parseError(syntax, argumentsOf({"-p", "1", "2"})), "Flag -p needs 3 values.");
    EXPECT_EQ(parseError(syntax, argumentsOf({"-swi", "2.5"})),
              "Flag -swi needs an integer, not \"2.5\".");
    EXPECT_EQ(parseError(syntax, argumentsOf({"-sw", "much"})),
              "Flag -sw needs a number, not \"much\".");
    EXPECT_EQ(parseError(syntax, argumentsOf({"-omi", "maybe"})),
              "Flag -omi needs a truth value, not \"maybe\".");
}

TEST(FlagParsing, QueryAndEditNeedTheSyntaxToEnableThem) {
    HSyntax plain;
    plain.addFlag("-nm", "-numMax");
    EXPECT_EQ(parseError(plain, argumentsOf({"-q"})), "Invalid flag: -q");
    EXPECT_EQ(parseError(plain, argumentsOf({"-nm", "-edit"})), "Invalid flag: -edit");
    EXPECT_EQ(parseError(smoothingSyntax(), argumentsOf({"-query", "-sw"})),
              "Invalid flag: -query");

    HSyntax both = smoothingSyntax();
    both.enableQuery();
    EXPECT_EQ(parseError(both, argumentsOf({"-q", "-e"})),
              "Query and edit mode cannot be used together.");
}

TEST(FlagParsing, InQueryModeOnlyNamingFlagsTakeValues) {
    HSyntax syntax = smoothingSyntax();
    syntax.enableQuery();
    HStatus status;
    HArgParser parser(syntax, argumentsOf({"-q", "-sw", "-t", "joint1", "cluster1"}), &status);
    ASSERT_TRUE(static_cast<bool>(status)) << status.errorString().asChar();
    EXPECT_TRUE(parser.isQuery());
    EXPECT_TRUE(parser.isFlagSet("sw"));
    EXPECT_STREQ(parser.flagArgumentString("t", 0).asChar(), "joint1");
    ASSERT_EQ(parser.numberOfCommandArguments(), 1u);
    EXPECT_STREQ(parser.commandArgumentString(0).asChar(), "cluster1");
}

TEST(FlagParsing, RepeatedFlagsKeepEveryUse) {
    HArgParser parser(smoothingSyntax(), argumentsOf({"-t", "a", "-transform", "b", "c"}));
    EXPECT_EQ(parser.numberOfFlagUses("t"), 2u);
    HArgList second;
    ASSERT_TRUE(static_cast<bool>(parser.getFlagArgumentList("-t", 1, second)));
    EXPECT_STREQ(second.asString(0).asChar(), "b");
    EXPECT_EQ(parser.getFlagArgumentList("t", 2, second).statusCode(), HS::kInvalidParameter);
    HStatus status;
    parser.flagArgumentInt("swi", 0, &status);
    EXPECT_EQ(status.statusCode(), HS::kInvalidParameter);
    EXPECT_STREQ(status.errorString().asChar(), "The flag swi was not given.");
}

TEST(FlagParsing, ASharedShortNameMeansTheFirstFlagAndLongNamesTellThemApart) {
    HSyntax syntax;
    syntax.addFlag("-sm", "-skinPaintSmooth");
    syntax.addFlag("-sm", "-smoothSkinWeights");
    HArgParser shortName(syntax, argumentsOf({"-sm"}));
    EXPECT_TRUE(shortName.isFlagSet("skinPaintSmooth"));
    EXPECT_FALSE(shortName.isFlagSet("smoothSkinWeights"));
    HArgParser longName(syntax, argumentsOf({"-smoothSkinWeights"}));
    EXPECT_FALSE(longName.isFlagSet("skinPaintSmooth"));
    EXPECT_TRUE(longName.isFlagSet("smoothSkinWeights"));
}

TEST(FlagParsing, DeclaredPositionalArgumentsAreTypeChecked) {
    HSyntax syntax;
    syntax.addArg(HSyntax::kUnsigned);
    syntax.addArg(HSyntax::kDouble);
    EXPECT_EQ(parseError(syntax, argumentsOf({"-2"})),
              "Argument 1 needs a non-negative integer, not \"-2\".");
    EXPECT_EQ(parseError(syntax, argumentsOf({"4", "x"})), "Argument 2 needs a number, not \"x\".");
    HArgParser parser(syntax, argumentsOf({"4", "0.5", "extra"}));
    EXPECT_EQ(parser.commandArgumentInt(0), 4);
    EXPECT_DOUBLE_EQ(parser.commandArgumentDouble(1), 0.5);
    EXPECT_EQ(parser.numberOfCommandArguments(), 3u);
}
