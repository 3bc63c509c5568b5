// The scripts the paint smoothing of the Vorel plug-in sends, character for character, run
// against stand-ins for the commands they name. Each stand-in has the flags the command
// takes and notes how its arguments were read, so the test shows the scripts parse as meant.
#include "HArgParser.h"
#include "HGlobal.h"
#include "HPxCommand.h"
#include "ScopedCommand.h"
#include "lang/BuiltInCommand.h"
#include "lang/HCommandAccess.h"

#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <vector>

namespace {

using Lines = std::vector<std::string>;

Lines g_invocations;

const char* const kStandInNames[] = {"selectType",
                                     "select",
                                     "PntPaintSkinWeightsTool",
                                     "pntAttrSkinToolScript",
                                     "pntAttrSkinJointMenu",
                                     "pntAttrPaintOperation",
                                     "pntAttrSkinPaintCtx",
                                     "pntSkinSelectInfluence",
                                     "currentCtx",
                                     "setToolTo",
                                     "setAttr"};

// "name [-q|-e] -flag=value,value ... : object object"
std::string describe(const char* name, const HSyntax& syntax, const HArgList& args) {
    HStatus status;
    HArgParser parser(syntax, args, &status);
    if (!status)
        return std::string(name) + " refused: " + status.errorString().str();
    std::string text = name;
    text += parser.isQuery() ? " -q" : "";
    text += parser.isEdit() ? " -e" : "";
    for (unsigned flag = 0; flag < HCommandAccess::flagCount(syntax); ++flag) {
        const HString& longName = HCommandAccess::flagLongName(syntax, flag);
        for (unsigned use = 0; use < parser.numberOfFlagUses(longName.asChar()); ++use) {
            HArgList values;
            parser.getFlagArgumentList(longName.asChar(), use, values);
            text += " " + longName.str();
            for (unsigned i = 0; i < values.length(); ++i)
                text += (i == 0 ? "=" : ",") + values.asString(i).str();
        }
    }
    HStringArray objects;
    parser.getObjects(objects);
    if (objects.length() > 0)
        text += " :";
    for (const HString& object : objects)
        text += " " + object.str();
    return text;
}

template <unsigned Index> class StandIn : public HPxCommand {
public:
    HStatus doIt(const HArgList& args) override {
        std::string name = kStandInNames[Index];
        g_invocations.push_back(describe(name.c_str(), syntax(), args));
        HArgParser parser(syntax(), args);
        if (name == "currentCtx")
            setResult("pntAttrSkinContext");
        else if (name == "selectType" && parser.isQuery())
            setResult(parser.isFlagSet("allComponents") ? 1 : 0);
        return HS::kSuccess;
    }
};

HSyntax selectTypeSyntax() {
    HSyntax syntax;
    syntax.addFlag("-ocm", "-objectComponent");
    syntax.addFlag("-alc", "-allComponents", HSyntax::kBoolean);
    syntax.addFlag("-v", "-vertex", HSyntax::kBoolean);
    syntax.enableQuery();
    return syntax;
}

HSyntax selectSyntax() {
    HSyntax syntax;
    syntax.addFlag("-r", "-replace");
    syntax.addFlag("-add", "-add");
    syntax.addFlag("-d", "-deselect");
    syntax.addFlag("-tgl", "-toggle");
    syntax.addFlag("-cl", "-clear");
    return syntax;
}

HSyntax paintContextSyntax() {
    HSyntax syntax;
    syntax.addFlag("-spm", "-skinPaintMode", HSyntax::kLong);
    syntax.addFlag("-op", "-opacity", HSyntax::kDouble);
    syntax.addFlag("-clr", "-clear");
    syntax.enableQuery();
    syntax.enableEdit();
    return syntax;
}

HSyntax noFlags() {
    return HSyntax();
}

class PaintToolScripts : public testing::Test {
protected:
    void SetUp() override {
        g_invocations.clear();
        const runtime::CommandCreator creators[] = {
            runtime::createCommand<StandIn<0>>, runtime::createCommand<StandIn<1>>,
            runtime::createCommand<StandIn<2>>, runtime::createCommand<StandIn<3>>,
            runtime::createCommand<StandIn<4>>, runtime::createCommand<StandIn<5>>,
            runtime::createCommand<StandIn<6>>, runtime::createCommand<StandIn<7>>,
            runtime::createCommand<StandIn<8>>, runtime::createCommand<StandIn<9>>,
            runtime::createCommand<StandIn<10>>};
        const runtime::SyntaxCreator syntaxes[] = {
            selectTypeSyntax,   selectSyntax, noFlags, noFlags, noFlags, noFlags,
            paintContextSyntax, noFlags,      noFlags, noFlags, noFlags};
        for (unsigned i = 0; i < std::size(kStandInNames); ++i)
            m_standIns.push_back(
                std::make_unique<ScopedCommand>(kStandInNames[i], creators[i], syntaxes[i]));
    }

    std::vector<std::unique_ptr<ScopedCommand>> m_standIns;
};

} // namespace

TEST_F(PaintToolScripts, ToolSetUpReachesEachCommandAsMeant) {
    HString influence = "spine1";
    HString script = "selectType -ocm -alc false;\n";
    script += "selectType -ocm -vertex true;\n";
    script += "select -r ";
    for (const char* vertex : {"vtx[3]", "vtx[7]"})
        script += HString("body.") + vertex + " ";
    script += ";\n";
    script += "PntPaintSkinWeightsTool;\n";
    script += "pntAttrSkinToolScript 4;\n";
    script += "pntAttrSkinJointMenu(\"pntJoinListPopupMenu\", \"pntAttrSkinPaintCtx\" );\n";
    script += "pntAttrPaintOperation pntAttrSkinPaintCtx Smooth;\n";
    script += "pntAttrSkinPaintCtx -e -skinPaintMode 1 pntAttrSkinContext;\n";
    script += "pntSkinSelectInfluence pntAttrSkinPaintCtx " + influence + ";\n";

    ASSERT_TRUE(HGlobal::executeCommand(script));
    EXPECT_EQ(g_invocations,
              (Lines{"selectType -objectComponent -allComponents=false",
                     "selectType -objectComponent -vertex=true",
                     "select -replace : body.vtx[3] body.vtx[7]", "PntPaintSkinWeightsTool",
                     "pntAttrSkinToolScript : 4",
                     "pntAttrSkinJointMenu : pntJoinListPopupMenu pntAttrSkinPaintCtx",
                     "pntAttrPaintOperation : pntAttrSkinPaintCtx Smooth",
                     "pntAttrSkinPaintCtx -e -skinPaintMode=1 : pntAttrSkinContext",
                     "pntSkinSelectInfluence : pntAttrSkinPaintCtx spine1"}));
}

TEST_F(PaintToolScripts, FloodSubstitutesTheCurrentContext) {
    HString script = "pntAttrSkinPaintCtx -e -opacity " + HString().set(0.25) + " `currentCtx`;\n";
    script += "pntAttrSkinPaintCtx -e -clear `currentCtx`;\n";

    ASSERT_TRUE(HGlobal::executeCommand(script));
    EXPECT_EQ(g_invocations, (Lines{"currentCtx",
                                    "pntAttrSkinPaintCtx -e -opacity=0.25 : "
                                    "pntAttrSkinContext",
                                    "currentCtx",
                                    "pntAttrSkinPaintCtx -e -clear : "
                                    "pntAttrSkinContext"}));
}

TEST_F(PaintToolScripts, StateIsReadAndPutBackAround) {
    HStatus status;
    EXPECT_STREQ(HGlobal::executeCommandStringResult("currentCtx", false, false, &status).asChar(),
                 "pntAttrSkinContext");
    int allComponents = -1, vertex = -1;
    ASSERT_TRUE(HGlobal::executeCommand("selectType -q -ocm -alc", allComponents));
    ASSERT_TRUE(HGlobal::executeCommand("selectType -q -ocm -vertex", vertex));
    EXPECT_EQ(allComponents, 1);
    EXPECT_EQ(vertex, 0);
    ASSERT_TRUE(HGlobal::executeCommand("setAttr spine1.lockInfluenceWeights 1"));
    ASSERT_TRUE(HGlobal::executeCommand("setToolTo selectSuperContext;\n"));
    HString restore = "selectType -ocm -alc " + HString().set(1.0) + ";\n" +
                      "selectType -ocm -vertex " + HString().set(0.0) + ";\n";
    ASSERT_TRUE(HGlobal::executeCommand(restore));
    EXPECT_EQ(
        g_invocations,
        (Lines{"currentCtx", "selectType -q -objectComponent -allComponents",
               "selectType -q -objectComponent -vertex", "setAttr : spine1.lockInfluenceWeights 1",
               "setToolTo : selectSuperContext", "selectType -objectComponent -allComponents=1",
               "selectType -objectComponent -vertex=0"}));
}
