#include "scene/ComponentText.h"
#include "scene/PlugPath.h"

#include <gtest/gtest.h>
#include <random>
#include <string>

using runtime::ComponentText;
using runtime::PlugPathText;

TEST(ComponentStrings, ReadObjectKindAndRange) {
    ComponentText c;
    ASSERT_TRUE(runtime::parseComponentText("body.vtx[3]", c));
    EXPECT_EQ(c.object, "body");
    EXPECT_EQ(c.kind, HFn::kMeshVertComponent);
    EXPECT_EQ(c.first, 3);
    EXPECT_EQ(c.last, 3);
    ASSERT_TRUE(runtime::parseComponentText("|body|bodyShape.vtx[2:5]", c));
    EXPECT_EQ(c.object, "|body|bodyShape");
    EXPECT_EQ(c.first, 2);
    EXPECT_EQ(c.last, 5);
    ASSERT_TRUE(runtime::parseComponentText("bodyShape.vtx[*]", c));
    EXPECT_TRUE(c.all);
    ASSERT_TRUE(runtime::parseComponentText("a.e[2147483647]", c));
    EXPECT_EQ(c.kind, HFn::kMeshEdgeComponent);
    EXPECT_EQ(c.last, 2147483647);
    ASSERT_TRUE(runtime::parseComponentText("a.f[0:0]", c));
    EXPECT_EQ(c.kind, HFn::kMeshPolygonComponent);
}

TEST(ComponentStrings, MalformedTextIsRefusedWithItsName) {
    const char* bad[] = {"",
                         "body",
                         "body.vtx",
                         "body.vtx[",
                         "body.vtx[]",
                         "body.vtx[-1]",
                         "body.vtx[+1]",
                         "body.vtx[5:2]",
                         ".vtx[1]",
                         "body.vtx[1]x",
                         "body.edge[1]",
                         "body..vtx[1]",
                         "body.vtx[1:]",
                         "body.vtx[2147483648]",
                         "bo dy.vtx[1]",
                         "body|.vtx[1]",
                         "body.vtx[1:2:3]",
                         "body.vtx[*:3]",
                         "body.vtx[1]]",
                         "a||b.vtx[1]"};
    for (const char* text : bad) {
        ComponentText c;
        c.object = "untouched";
        HStatus status = runtime::parseComponentText(text, c);
        EXPECT_EQ(status.statusCode(), HS::kInvalidParameter) << text;
        EXPECT_EQ(status.errorString().str(), std::string("Invalid component: ") + text);
        EXPECT_EQ(c.object, "untouched");
    }
    EXPECT_TRUE(runtime::looksLikeComponent("body.vtx[3]"));
    EXPECT_FALSE(runtime::looksLikeComponent("|body|bodyShape"));
    EXPECT_FALSE(runtime::looksLikeComponent("body.translateX"));
}

TEST(PlugPaths, ReadNodeAttributesAndIndices) {
    PlugPathText path;
    ASSERT_TRUE(runtime::parsePlugPath("|root|spine1.lockInfluenceWeights", path));
    EXPECT_EQ(path.object, "|root|spine1");
    ASSERT_EQ(path.steps.size(), 1u);
    EXPECT_EQ(path.steps[0].attribute, "lockInfluenceWeights");
    EXPECT_EQ(path.steps[0].index, -1);
    ASSERT_TRUE(runtime::parsePlugPath("sc.lockedCellIndices[12].lockedLocalJoints[0]", path));
    ASSERT_EQ(path.steps.size(), 2u);
    EXPECT_EQ(path.steps[0].index, 12);
    EXPECT_EQ(path.steps[1].attribute, "lockedLocalJoints");
    EXPECT_EQ(path.steps[1].index, 0);
    for (const char* text :
         {"node", ".attr", "node.", "node.attr[", "node.attr[x]", "node.attr[1]x", "node..attr",
          "node.attr[-1]", "no de.attr", "node.attr[99999999999]", "node.attr.", "node.a-b"})
        EXPECT_FALSE(runtime::parsePlugPath(text, path)) << text;
}

// Arbitrary text never crashes or hangs the two readers; whatever they accept is well formed.
TEST(SceneTextReaders, SurviveArbitraryText) {
    std::mt19937 random(2024);
    const std::string alphabet = "abvtxef.|[]:*0123456789-+ \t\n\x01\xff";
    for (int round = 0; round < 20000; ++round) {
        std::string text;
        size_t length = random() % 24;
        for (size_t i = 0; i < length; ++i)
            text += alphabet[random() % alphabet.size()];
        ComponentText c;
        if (runtime::parseComponentText(text, c)) {
            EXPECT_FALSE(c.object.empty()) << text;
            EXPECT_LE(c.first, c.last) << text;
        }
        PlugPathText p;
        if (runtime::parsePlugPath(text, p)) {
            EXPECT_FALSE(p.object.empty()) << text;
            EXPECT_FALSE(p.steps.empty()) << text;
        }
    }
}
