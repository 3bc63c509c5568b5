// The rounding every load applies: each weight to the precision, the last weight of a vertex
// taking the remainder, and the scene left as it was.
#include "OutputRecorder.h"
#include "vorelSession.h"

#include <QAbstractItemModel>
#include <QColor>
#include <gtest/gtest.h>

namespace {

class LoadRounding : public vorel::VorelWindowTest {
protected:
    // A mesh with one vertex per row, bound to as many joints as a row has values.
    void load(const std::vector<std::vector<double>>& rows) {
        fixture::SkinnedMesh mesh = vorel::makeMesh(static_cast<unsigned>(rows.size()),
                                                    static_cast<unsigned>(rows[0].size()), 1);
        vorel::setWeights(mesh, rows);
        selectAndLoad("body");
        loaded = mesh;
    }
    fixture::SkinnedMesh loaded;
};

} // namespace

TEST_F(LoadRounding, RoundsUpFromPointFortyNineOfTheLastPlace) {
    load({{0.12349, 0.87651}, {0.1235, 0.8765}, {0.12345, 0.87655}, {0.1234, 0.8766}});
    // 123.49 - 0.49 lies a hair above 123 in double arithmetic, so it rounds up too.
    EXPECT_EQ(rowTexts(1), (QStringList{"0.124", "0.876"}));
    EXPECT_EQ(rowTexts(2), (QStringList{"0.124", "0.876"}));
    EXPECT_EQ(rowTexts(3), (QStringList{"0.123", "0.877"}));
    EXPECT_EQ(rowTexts(4), (QStringList{"0.123", "0.877"}));
}

TEST_F(LoadRounding, LastPositiveWeightTakesTheRemainderAndTheSceneKeepsItsWeights) {
    load({{0.3334, 0.3333, 0.3333, 0.0}, {0.0, 0.3334, 0.3333, 0.3333}});
    EXPECT_EQ(rowTexts(1), (QStringList{"0.333", "0.333", "0.334", "0.000"}));
    EXPECT_EQ(rowTexts(2), (QStringList{"0.000", "0.333", "0.333", "0.334"}));
    EXPECT_EQ(vorel::weightsOf(loaded, 0), (std::vector<double>{0.3334, 0.3333, 0.3333, 0.0}));
}

TEST_F(LoadRounding, VertexOffByMoreThanRoundingStaysAsItIs) {
    load({{0.4, 0.598}, {0.4, 0.5991}});
    EXPECT_EQ(rowTexts(1), (QStringList{"0.400", "0.598"}));
    EXPECT_EQ(cellData(1, 0, Qt::ForegroundRole).value<QColor>(), QColor(Qt::red));
    EXPECT_EQ(rowTexts(2), (QStringList{"0.400", "0.600"}));
    EXPECT_FALSE(cellData(2, 0, Qt::ForegroundRole).isValid());
}

TEST_F(LoadRounding, VertexWithoutWeightStopsTheRemainderPass) {
    OutputRecorder output;
    load({{0.0, 0.0}, {0.4, 0.5991}});
    EXPECT_EQ(output.texts(HCommandMessage::kError),
              std::vector<std::string>{"There is something wrong accessing weight data."});
    // Rounded, but not corrected: the pass stopped before this vertex.
    EXPECT_EQ(rowTexts(2), (QStringList{"0.400", "0.599"}));
}
