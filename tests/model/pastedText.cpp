// Reading clipboard text into a block: the separator, quoted fields, line ends, and when the
// first line names columns and the first fields name rows.
#include "pastedText.h"

#include <gtest/gtest.h>

using pastedText::read;

TEST(PastedText, TabsWinOverCommasAndTheLastLineBreakAddsNoRow) {
    // Between tabs, a comma is a decimal comma.
    const pastedText::Block tabs = read("0.5\t0,25\n0.1\t0.2\n");
    EXPECT_TRUE(tabs.columnNames.isEmpty());
    EXPECT_TRUE(tabs.rowNames.isEmpty());
    ASSERT_EQ(tabs.values.size(), 2);
    EXPECT_EQ(tabs.values[0], (QStringList{"0.5", "0,25"}));
    const pastedText::Block commas = read("0.5,,0.25\r\n");
    ASSERT_EQ(commas.values.size(), 1);
    EXPECT_EQ(commas.values[0], (QStringList{"0.5", "", "0.25"}));
}

TEST(PastedText, AHeaderAndANameColumnAreFoundByTheirTexts) {
    const pastedText::Block block =
        read(",hip,\"knee, left\"\nbodyShape.vtx[3],0.5,0.5\nvtx[4],\"1\",\n");
    EXPECT_EQ(block.columnNames, (QStringList{"hip", "knee, left"}));
    EXPECT_EQ(block.rowNames, (QStringList{"bodyShape.vtx[3]", "vtx[4]"}));
    EXPECT_EQ(block.values[1], (QStringList{"1", ""}));
    // Names without a header, a header without names.
    EXPECT_EQ(read("vtx[0]\t0.5").rowNames, QStringList{"vtx[0]"});
    const pastedText::Block header = read("hip\tknee\n0.5\t0.5");
    EXPECT_EQ(header.columnNames, (QStringList{"hip", "knee"}));
    EXPECT_TRUE(header.rowNames.isEmpty());
    // A line that is not a name keeps every first field a value.
    EXPECT_TRUE(read("vtx[0]\t0.5\n0.2\t0.5").rowNames.isEmpty());
}

TEST(PastedText, RowNamesSplitIntoShapeAndVertex) {
    QString shape;
    int vertex = -1;
    EXPECT_TRUE(pastedText::splitRowName("|body|bodyShape.vtx[12]", shape, vertex));
    EXPECT_EQ(shape, "|body|bodyShape");
    EXPECT_EQ(vertex, 12);
    EXPECT_TRUE(pastedText::splitRowName("vtx[0]", shape, vertex));
    EXPECT_EQ(shape, "");
    for (const char* notAName : {"vtx[-1]", "vtx[a]", "bodyvtx[1]", ".vtx[1]", "vtx[1", "0.5"})
        EXPECT_FALSE(pastedText::splitRowName(notAName, shape, vertex)) << notAName;
}

TEST(PastedText, ADecimalCommaReadsAsAPoint) {
    double value = 0.0;
    EXPECT_TRUE(pastedText::readNumber("0,25", value));
    EXPECT_EQ(value, 0.25);
    EXPECT_TRUE(pastedText::readNumber("1e-3", value));
    EXPECT_EQ(value, 0.001);
    EXPECT_FALSE(pastedText::readNumber("0,2,5", value));
    EXPECT_FALSE(pastedText::readNumber("0.2,5", value));
    EXPECT_FALSE(pastedText::readNumber("", value));
}
