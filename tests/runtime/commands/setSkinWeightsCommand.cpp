// setSkinWeights: staged arrays written as given or normalised around locks, vertex lists,
// locked vertices, every refusal (which changes nothing), and exact undo.
#include "OutputRecorder.h"
#include "commandTesting.h"
#include "commands/StagedWeightArrays.h"

#include <deque>
#include <limits>

using commandtest::expectStripWeights;
using commandtest::run;
using commandtest::Texts;

namespace {

const auto& kStart = commandtest::kStripStart;

class SetSkinWeights : public commandtest::WeightedStripTest {
protected:
    void TearDown() override {
        for (unsigned number : m_staged)
            arrays().release(number);
        WeightedStripTest::TearDown();
    }

    static runtime::StagedWeightArrays& arrays() {
        return runtime::host().get<runtime::StagedWeightArrays>();
    }

    // Stages rows of three columns (every vertex when vertices is empty); the test keeps them.
    std::string stage(const std::vector<double>& values, std::vector<int> vertices = {},
                      std::size_t columns = 3) {
        m_values.push_back(values);
        runtime::StagedWeightArray array;
        array.values = m_values.back().data();
        array.columns = columns;
        array.rows = values.size() / columns;
        array.everyVertex = vertices.empty();
        array.vertices = std::move(vertices);
        m_staged.push_back(arrays().stage(std::move(array)));
        return std::to_string(m_staged.back());
    }

private:
    std::deque<std::vector<double>> m_values;
    std::vector<unsigned> m_staged;
};

const std::vector<double> kRows = {0.1, 0.2, 0.3, 0.0, 0.0,  0.0,  0.3, 0.3, 0.4,
                                   0.0, 1.0, 0.0, 0.5, 0.25, 0.25, 0.2, 0.0, 0.2};

} // namespace

TEST_F(SetSkinWeights, RowsAreStoredAsGivenWithoutNormalizing) {
    ASSERT_TRUE(run("setSkinWeights -array " + stage(kRows) + " -normalize false cluster1"));
    for (unsigned v = 0; v < 6; ++v)
        expectStripWeights(v, {kRows[v * 3], kRows[v * 3 + 1], kRows[v * 3 + 2]});
}

TEST_F(SetSkinWeights, NormalizingScalesRowsAroundLockedInfluences) {
    ASSERT_TRUE(run("setSkinWeights -a " + stage(kRows) + " body"));
    expectStripWeights(0, {1.0 / 6, 2.0 / 6, 3.0 / 6});
    expectStripWeights(1, {1.0 / 3, 1.0 / 3, 1.0 / 3});
    expectStripWeights(5, {0.5, 0.0, 0.5});
    ASSERT_TRUE(run("undo; setAttr c.liw 1; setSkinWeights -a " + stage(kRows) + " cluster1"));
    // c keeps its weight; a and b share what it leaves in the proportions given.
    expectStripWeights(0, {1.0 / 3, 2.0 / 3, 0.0});
    expectStripWeights(1, {0.5, 0.5, 0.0});
    expectStripWeights(3, {0.0, 0.6, 0.4});
    expectStripWeights(4, {0.8 * 2 / 3, 0.8 / 3, 0.2});
}

TEST_F(SetSkinWeights, AVertexListChoosesTheRowsVertices) {
    ASSERT_TRUE(run("setSkinWeights -a " + stage({0.0, 0.0, 1.0, 0.25, 0.75, 0.0}, {4, 0}) +
                    " -nrm false cluster1"));
    expectStripWeights(4, {0.0, 0.0, 1.0});
    expectStripWeights(0, {0.25, 0.75, 0.0});
    for (unsigned v : {1u, 2u, 3u, 5u})
        expectStripWeights(v, kStart[v]);
}

TEST_F(SetSkinWeights, LockedVerticesAreLeftAloneWithAWarning) {
    ASSERT_TRUE(run("setAttr cluster1.lockVertex[2] 1; setAttr cluster1.lockVertex[5] 1"));
    OutputRecorder output;
    ASSERT_TRUE(run("setSkinWeights -a " + stage(kRows) + " -nrm false cluster1"));
    expectStripWeights(2, kStart[2]);
    expectStripWeights(5, kStart[5]);
    expectStripWeights(4, {0.5, 0.25, 0.25});
    EXPECT_EQ(output.texts(HCommandMessage::kWarning),
              Texts{"setSkinWeights: 2 locked vertices were left as they were."});
}

TEST_F(SetSkinWeights, RefusalsNameTheProblemAndChangeNothing) {
    std::vector<double> negative = kRows;
    negative[7] = -0.5;
    std::vector<double> above = kRows;
    above[4] = 1.5;
    std::vector<double> notANumber = kRows;
    notANumber[17] = std::numeric_limits<double>::quiet_NaN();
    std::vector<double> infinite = kRows;
    infinite[0] = std::numeric_limits<double>::infinity();
    Texts before = commandtest::sceneState();
    OutputRecorder output;
    const std::string commands[] = {
        "setSkinWeights cluster1",
        "setSkinWeights -a 999 cluster1",
        "setSkinWeights -a " + stage(kRows) + " nowhere",
        "setSkinWeights -a " + stage(kRows) + " a",
        "setSkinWeights -a " + stage(kRows, {}, 2) + " cluster1",
        "setSkinWeights -a " + stage({0.1, 0.2, 0.7}) + " cluster1",
        "setSkinWeights -a " + stage({0.1, 0.2, 0.7}, {6}) + " cluster1",
        "setSkinWeights -a " + stage({0.1, 0.2, 0.7, 0.1, 0.2, 0.7}, {1, 1}) + " cluster1",
        "setSkinWeights -a " + stage(negative) + " cluster1",
        "setSkinWeights -a " + stage(above) + " -nrm false cluster1",
        "setSkinWeights -a " + stage(notANumber) + " cluster1",
        "setSkinWeights -a " + stage(infinite) + " cluster1",
    };
    for (const std::string& command : commands)
        EXPECT_FALSE(run(command)) << command;
    EXPECT_EQ(
        output.texts(HCommandMessage::kError),
        (Texts{"setSkinWeights: Give the staged array with -array and the cluster.",
               "setSkinWeights: No array is staged as 999.", "No object matches name: nowhere",
               "setSkinWeights: a is not a skin cluster or a skinned mesh.",
               "setSkinWeights: The array has 2 columns; cluster1 has 3 influences.",
               "setSkinWeights: The array has 1 row for 6 vertices.",
               "setSkinWeights: Vertex 6 is not a vertex of the geometry.",
               "setSkinWeights: Vertex 1 is listed twice.",
               "setSkinWeights: Row 2, column 1 holds -0.5: weights lie from 0 to 1.",
               "setSkinWeights: Row 1, column 1 holds 1.5: weights lie from 0 to 1.",
               "setSkinWeights: Row 5, column 2 is not a number.",
               "setSkinWeights: Row 0, column 0 is not a number."}));
    EXPECT_EQ(commandtest::sceneState(), before);
    EXPECT_EQ(runtime::host().get<runtime::UndoQueue>().undoCount(), 0u);
}

TEST_F(SetSkinWeights, OneWriteIsOneUndoStepUndoneBitForBit) {
    std::vector<double> thirds(18, 1.0 / 3);
    commandtest::expectUndoAndRedoExact("setSkinWeights -a " + stage(thirds) + " cluster1");
    EXPECT_EQ(runtime::host().get<runtime::UndoQueue>().undoCount(), 1u);
    commandtest::expectUndoAndRedoExact("setSkinWeights -a " + stage(kRows, {}) +
                                        " -nrm false cluster1");
}
