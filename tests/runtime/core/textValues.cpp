#include "HQtUtil.h"
#include "HStatus.h"
#include "HString.h"
#include "HStringArray.h"

#include <gtest/gtest.h>

TEST(NumberText, ShortestTextReadsBackAsTheSameDouble) {
    EXPECT_STREQ(HString().set(57.0).asChar(), "57");
    EXPECT_STREQ(HString().set(0.1).asChar(), "0.1");
    EXPECT_STREQ(HString().set(2.5).asChar(), "2.5");
    EXPECT_STREQ(HString().set(-3.0).asChar(), "-3");
    for (double value : {0.1 + 0.2, 1.0 / 3.0, 123456.789, 1e-9, 0.30000000000000004})
        EXPECT_EQ(HString().set(value).asDouble(), value) << HString().set(value).asChar();
}

TEST(NumberText, FixedNotationKeepsTheAskedDecimals) {
    EXPECT_STREQ(HString().set(0.25, 3).asChar(), "0.250");
    EXPECT_STREQ(HString().set(1.0, 0).asChar(), "1");
    EXPECT_STREQ(HString().set(-0.0005, 3).asChar(), "-0.001");
}

TEST(NumberText, ParsingAcceptsWholeNumbersOnly) {
    EXPECT_TRUE(HString(" 42 ").isInt());
    EXPECT_EQ(HString("-7").asInt(), -7);
    EXPECT_EQ(HString("+7").asInt(), 7);
    EXPECT_FALSE(HString("4.5").isInt());
    EXPECT_FALSE(HString("12abc").isInt());
    EXPECT_FALSE(HString("").isInt());
    EXPECT_FALSE(HString("99999999999").isInt());
    EXPECT_TRUE(HString("1e-3").isDouble());
    EXPECT_DOUBLE_EQ(HString(".5").asDouble(), 0.5);
    EXPECT_FALSE(HString("nan").isDouble());
    EXPECT_FALSE(HString("inf").isDouble());
    EXPECT_FALSE(HString("0.5x").isDouble());
    EXPECT_EQ(HString("abc").asDouble(), 0.0);
}

TEST(TextPieces, SubstringIsInclusiveAndClipped) {
    HString text("vtx[57]");
    EXPECT_STREQ(text.substring(4, text.length() - 2).asChar(), "57");
    EXPECT_STREQ(text.substring(-3, 2).asChar(), "vtx");
    EXPECT_STREQ(text.substring(5, 100).asChar(), "7]");
    EXPECT_TRUE(text.substring(4, 3).isEmpty());
    EXPECT_EQ(text.index('['), 3);
    EXPECT_EQ(text.rindex('x'), 2);
    EXPECT_EQ(text.index('#'), -1);
}

TEST(TextPieces, SplitDropsEmptyPieces) {
    HStringArray pieces;
    HString("|root||spine|").split('|', pieces);
    ASSERT_EQ(pieces.length(), 2u);
    EXPECT_STREQ(pieces[0].asChar(), "root");
    EXPECT_STREQ(pieces[1].asChar(), "spine");
}

TEST(TextPieces, QtConversionKeepsUnicode) {
    QString text = QString::fromUtf8("Gelenk_\xc3\xa4\xe2\x82\xac");
    HString converted = HQtUtil::toHString(text);
    EXPECT_EQ(converted.length(), 12u);
    EXPECT_EQ(HQtUtil::toQString(converted), text);
}

TEST(Status, FailureCarriesItsMessage) {
    HStatus ok;
    EXPECT_TRUE(static_cast<bool>(ok));
    EXPECT_FALSE(ok.error());
    HStatus failed(HS::kInvalidParameter, "No object matches name: x");
    EXPECT_FALSE(static_cast<bool>(failed));
    EXPECT_TRUE(failed == HS::kInvalidParameter);
    EXPECT_STREQ(failed.errorString().asChar(), "No object matches name: x");
    EXPECT_STREQ(HStatus(HS::kNotFound).errorString().asChar(), "Not found");
}
