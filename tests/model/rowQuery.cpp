// The row query language: what each term picks, how the words bind, and the sentence every
// text that is not a query gives, naming the word that stopped it.
#include "rowQuery.h"

#include <gtest/gtest.h>

namespace {

const QStringList kColumns{"hip", "knee", "sum", "foot.L"};

// A vertex row of shape 0 with these weights, one per column.
WeightRow vertexRow(std::initializer_list<double> weights) {
    WeightRow row{0.0};
    for (double weight : weights)
        row.append(weight);
    return row;
}

rowQuery::Query read(const QString& text) {
    rowQuery::Query query;
    QString error;
    EXPECT_TRUE(query.read(text, kColumns, error)) << error.toStdString();
    return query;
}

QString errorOf(const QString& text) {
    rowQuery::Query query;
    QString error;
    EXPECT_FALSE(query.read(text, kColumns, error)) << text.toStdString();
    return error;
}

bool matches(const QString& text, const WeightRow& row, bool locked = false) {
    return read(text).matches({row, locked, 3});
}

} // namespace

TEST(RowQuery, EachTermReadsTheRowAsTheTableHoldsIt) {
    const WeightRow row = vertexRow({0.25, 0.75, 0.0, weightRows::kMissingInfluence});
    EXPECT_TRUE(matches("hip == 0.25", row));
    EXPECT_TRUE(matches("knee > 0.5", row));
    EXPECT_FALSE(matches("knee < 0.75", row));
    EXPECT_TRUE(matches("knee <= 0.75", row));
    EXPECT_TRUE(matches("hip != 0.3", row));
    // A missing influence weighs nothing and does not count towards the sum.
    EXPECT_TRUE(matches("\"foot.L\" == 0", row));
    EXPECT_TRUE(matches("foot.L >= 0", row));
    EXPECT_TRUE(matches("sum == 1", row));
    EXPECT_TRUE(matches("influences == 2", row));
    EXPECT_FALSE(matches("unnormalised", row));
    EXPECT_TRUE(matches("unnormalised", vertexRow({0.25, 0.7, 0.0, 0.0})));
    EXPECT_TRUE(matches("locked", row, true));
    EXPECT_FALSE(matches("locked", row, false));
}

TEST(RowQuery, NotBindsTighterThanAndWhichBindsTighterThanOr) {
    const WeightRow row = vertexRow({0.5, 0.5, 0.0, 0.0});
    // Read as (hip > 0.6 and knee > 0.6) or sum == 1.
    EXPECT_TRUE(matches("hip > 0.6 and knee > 0.6 or sum == 1", row));
    EXPECT_FALSE(matches("hip > 0.6 and (knee > 0.6 or sum == 1)", row));
    EXPECT_FALSE(matches("not hip == 0.5 and knee == 0.5", row));
    EXPECT_TRUE(matches("not (hip == 0.5 and knee == 0.4)", row));
    EXPECT_TRUE(matches("not not locked", row, true));
}

TEST(RowQuery, AJointNamedLikeAWordIsWrittenInQuotes) {
    // "sum" is a column here: unquoted it is the row's sum, quoted the joint's weight.
    const WeightRow row = vertexRow({0.5, 0.25, 0.25, 0.0});
    EXPECT_TRUE(matches("sum == 1", row));
    EXPECT_TRUE(matches("\"sum\" == 0.25", row));
}

TEST(RowQuery, AnEmptyTextShowsEveryRow) {
    EXPECT_TRUE(read("").matchesEveryRow());
    EXPECT_TRUE(read("   ").matchesEveryRow());
    EXPECT_FALSE(read("locked").matchesEveryRow());
}

TEST(RowQuery, EveryTextThatIsNotAQueryNamesTheWordThatStoppedIt) {
    EXPECT_EQ(errorOf("elbow > 0.5"), "Unknown joint \"elbow\" in the row query.");
    EXPECT_EQ(errorOf("hip > 0.5 and \"ankle\" < 1"), "Unknown joint \"ankle\" in the row query.");
    EXPECT_EQ(errorOf("hip => 0.5"), "The row query cannot read \"=>\".");
    EXPECT_EQ(errorOf("hip > high"), "The row query cannot read \"high\".");
    EXPECT_EQ(errorOf("hip > 0.5 knee < 1"), "The row query cannot read \"knee\".");
    EXPECT_EQ(errorOf("hip > 0.5 and"), "The row query needs a term after \"and\".");
    EXPECT_EQ(errorOf("influences >"), "The row query needs a number after \">\".");
    EXPECT_EQ(errorOf("(locked"), "The row query needs \")\" after \"locked\".");
    EXPECT_EQ(errorOf("locked)"), "The row query cannot read \")\".");
    EXPECT_EQ(errorOf("hip > 0.5 and or locked"), "The row query cannot read \"or\".");
    EXPECT_EQ(errorOf("hip # 1"), "The row query cannot read \"#\".");
    EXPECT_EQ(errorOf("\"hip > 1"), "The row query has a quote that does not end: \"hip > 1");
    EXPECT_EQ(errorOf(QString("(").repeated(100) + "locked" + QString(")").repeated(100)),
              "The row query nests too deeply at \"(\".");
}

TEST(RowQuery, AFailedReadKeepsTheQueryItHad) {
    rowQuery::Query query = read("hip > 0.5");
    QString error;
    EXPECT_FALSE(query.read("hip >", kColumns, error));
    EXPECT_TRUE(query.matches({vertexRow({0.75, 0.25, 0.0, 0.0}), false, 3}));
    EXPECT_FALSE(query.matches({vertexRow({0.25, 0.75, 0.0, 0.0}), false, 3}));
}
