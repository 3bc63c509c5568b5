// Skin weights files: every double back bit for bit, JSON as pipeline tools write it, and the
// first problem of a bad file named with its place.
#include "files/WeightsFileReader.h"
#include "files/WeightsFileWriter.h"

#include <QTemporaryDir>
#include <cmath>
#include <fstream>
#include <gtest/gtest.h>
#include <limits>

namespace {

using runtime::WeightsFile;
using runtime::WeightsFileCluster;

// A cluster of three influences and three listed vertices of five, with awkward numbers.
WeightsFile sampleFile() {
    WeightsFileCluster cluster;
    cluster.name = "skin \"one\"";
    cluster.mesh = "|body|bodyShape";
    cluster.vertexCount = 5;
    cluster.influences = {{"hip", "|root|hip", false},
                          {"knee_L", "|root|hip|knee_L", true},
                          {"pied\xC3\xA9", "", false}};
    cluster.hasLocks = true;
    cluster.locks.lockedJointNames = {"|root|hip|knee_L"};
    cluster.locks.lockedVertices = {0, 4};
    cluster.locks.lockedCells = {{1, {"|root|hip", "|root|hip|knee_L"}}};
    cluster.vertices = {0, 1, 4};
    cluster.positions = {{0.1, -1.0 / 3.0, 1e300}, {-0.0, 5e-324, 123456789.125}, {1, 2, 3}};
    cluster.weights.setVertexCount(3);
    const runtime::SkinWeights::Influence influences[] = {0, 1, 2};
    const double first[] = {1.0 / 3.0, 2.0 / 3.0, std::numeric_limits<double>::denorm_min()};
    cluster.weights.assign(0, influences, first, 3);
    const double second[] = {0.1, 0.0, 0.9000000000000001};
    cluster.weights.assign(1, influences, second, 3);
    WeightsFile file;
    file.clusters.push_back(std::move(cluster));
    file.clusters.push_back(WeightsFileCluster());
    file.clusters.back().mesh = "|other";
    return file;
}

void expectSame(const WeightsFile& actual, const WeightsFile& expected) {
    ASSERT_EQ(actual.clusters.size(), expected.clusters.size());
    for (size_t c = 0; c < expected.clusters.size(); ++c) {
        const WeightsFileCluster& a = actual.clusters[c];
        const WeightsFileCluster& e = expected.clusters[c];
        EXPECT_EQ(a.name, e.name);
        EXPECT_EQ(a.mesh, e.mesh);
        EXPECT_EQ(a.vertexCount, e.vertexCount);
        ASSERT_EQ(a.influences.size(), e.influences.size());
        for (size_t i = 0; i < e.influences.size(); ++i) {
            EXPECT_EQ(a.influences[i].name, e.influences[i].name);
            EXPECT_EQ(a.influences[i].path, e.influences[i].path);
            EXPECT_EQ(a.influences[i].locked, e.influences[i].locked);
        }
        EXPECT_TRUE(a.locks == e.locks);
        EXPECT_EQ(a.vertices, e.vertices);
        ASSERT_EQ(a.positions.size(), e.positions.size());
        for (size_t v = 0; v < e.positions.size(); ++v)
            for (auto coordinate : {&HPoint::x, &HPoint::y, &HPoint::z}) {
                EXPECT_EQ(a.positions[v].*coordinate, e.positions[v].*coordinate);
                EXPECT_EQ(std::signbit(a.positions[v].*coordinate),
                          std::signbit(e.positions[v].*coordinate));
            }
        EXPECT_TRUE(a.weights == e.weights);
    }
}

std::string problemOf(const std::string& text) {
    WeightsFile file;
    std::string problem;
    EXPECT_FALSE(runtime::parseWeightsFile(text.data(), text.size(), file, problem)) << text;
    return problem;
}

const std::string kHead = R"({"format": "vorel-skin-weights", "version": 1, "skinClusters": [)";

// A file of one cluster of two influences and four vertices, with the given vertices.
std::string withVertices(const std::string& vertices) {
    return kHead + R"({"mesh": "|m", "vertexCount": 4, "influences": [{"name": "a"}, )" +
           R"({"name": "b"}], "vertices": [)" + vertices + "]}]}";
}

} // namespace

TEST(WeightsFile, WrittenFilesReadBackBitForBit) {
    const WeightsFile file = sampleFile();
    const std::string text = runtime::weightsFileText(file);
    WeightsFile read;
    std::string problem;
    ASSERT_TRUE(runtime::parseWeightsFile(text.data(), text.size(), read, problem)) << problem;
    expectSame(read, file);
    EXPECT_EQ(read.clusters[0].weights.entryCount(1), 2u) << "a zero weight is no weight";

    QTemporaryDir folder;
    const std::string path = folder.filePath("w.json").toStdString();
    ASSERT_TRUE(runtime::writeWeightsFile(file, path).ok());
    WeightsFile fromDisk;
    ASSERT_TRUE(runtime::readWeightsFile(path, fromDisk).ok());
    expectSame(fromDisk, file);
}

TEST(WeightsFile, OneLinePerVertex) {
    const std::string text = runtime::weightsFileText(sampleFile());
    EXPECT_NE(text.find("\n[1, [-0, 5e-324, 123456789.125], [[0, 0.1], [2, 0.9000000000000001]]]"
                        ",\n"),
              std::string::npos)
        << text;
}

TEST(WeightsFile, AcceptsAnyLayoutKeyOrderAndMembersOfOthers) {
    const std::string text = R"(  {
        "tool": {"made by": ["x", 1, null, true, {"deep": []}]},
        "skinClusters": [ {
            "vertices": [ [ 2 , [ 1E0 , -2.5e-1 , 0 ] , [ [ 1 , 0.25 ] , [0,75e-2] ] ] ],
            "influences": [{"path": "|a", "name": "a\u00e9\ud83d\ude00", "color": 3}, {"name": "b"}],
            "vertexCount": 3, "mesh": "|m", "extra": "kept out" } ],
        "version": 1, "format": "vorel-skin-weights" }
    )";
    WeightsFile file;
    std::string problem;
    ASSERT_TRUE(runtime::parseWeightsFile(text.data(), text.size(), file, problem)) << problem;
    ASSERT_EQ(file.clusters.size(), 1u);
    const WeightsFileCluster& cluster = file.clusters[0];
    EXPECT_EQ(cluster.influences[0].name, "a\xC3\xA9\xF0\x9F\x98\x80");
    EXPECT_FALSE(cluster.hasLocks);
    EXPECT_EQ(cluster.vertices, std::vector<unsigned>{2});
    EXPECT_EQ(cluster.positions[0].y, -0.25);
    EXPECT_EQ(cluster.weights.weight(0, 0), 0.75);
    EXPECT_EQ(cluster.weights.weight(0, 1), 0.25);
}

TEST(WeightsFile, RefusesBadFilesNamingTheFirstProblemAndItsPlace) {
    const std::pair<std::string, std::string> cases[] = {
        {"", "line 1, column 1: the text ends too early"},
        {"[1]", "line 1, column 1: expected an object ('{')"},
        {R"({"format": "other", "version": 1})",
         "line 1, column 12: it is not a skin weights file (its format is \"other\")"},
        {R"({"format": "vorel-skin-weights", "version": 2, "skinClusters": []})",
         "line 1, column 45: version 2 is not known (this host reads version 1)"},
        {R"({"version": 1, "skinClusters": []})",
         "it is not a skin weights file (it has no \"format\")"},
        {kHead + "]", "line 1, column 66: the text ends too early"},
        {kHead + "]} x", "line 1, column 68: text after the end of the JSON value"},
        {kHead + R"({"mesh": "|m"}]})",
         "line 1, column 79: a skin cluster without \"vertexCount\""},
        {withVertices(R"([0, [0, 0, 0], [[0, -0.5]]])"), "line 1, column 177: a negative weight"},
        {withVertices(R"([0, [0, 0, 0], [[1, 0.5], [1, 0.5]]])"),
         "line 1, column 184: influence 1 appears twice in one vertex"},
        {withVertices(R"([1, [0, 0, 0], []], [1, [0, 0, 0], []])"),
         "line 1, column 178: vertex 1 comes after vertex 1; vertices are listed once each, in "
         "ascending order"},
        {withVertices(R"([0, [0, 0], []])"), "line 1, column 167: a position is [x, y, z]"},
        {withVertices(R"([0, [0, 0, 0], [[0, 1, 2]]])"),
         "line 1, column 179: a weight is an [influence, weight] pair"},
        {withVertices(R"([0, [0, 0, 0]])"),
         "line 1, column 171: a vertex is [index, [x, y, z], [[influence, weight], ...]]"},
        {withVertices(R"([0, [0, 0, 1e999], []])"),
         "line 1, column 168: a number too large or too small for a double"},
        {withVertices(R"([0.5, [0, 0, 0], []])"),
         "line 1, column 158: expected a whole number from 0 to 2147483646"},
        {withVertices(R"([0, [0, 0, 0], [[0, 01]]])"),
         "line 1, column 177: a number with a leading zero"},
        {withVertices(R"([0, [0, 0, 0], [[0, 1.]]])"),
         "line 1, column 177: a number without digits after its '.'"},
        {withVertices(R"([0, [0, 0, 0], [[0, 1e+]]])"),
         "line 1, column 177: a number without digits in its exponent"},
        {withVertices(R"([0, [0, 0, .5], []])"), "line 1, column 168: expected a number"},
        {withVertices(R"([0, [0, 0, 0], [[0, NaN]]])"), "line 1, column 177: expected a number"},
        {withVertices(R"([4, [0, 0, 0], []])"),
         "skin cluster 0: vertex 4 is beyond the mesh's 4 vertices"},
        {withVertices(R"([0, [0, 0, 0], [[2, 0]]])"),
         "skin cluster 0: vertex 0 has a weight of influence 2, which is out of range (there are "
         "2 influences)"},
        {kHead + R"({"mesh": "\x"}]})", "line 1, column 75: an unknown escape \\x"},
        {kHead + "{\"mesh\": \"\xC3\x28\"}]}", "line 1, column 75: text that is not UTF-8"},
        {kHead + R"({"mesh": "a", "mesh": "b"}]})", "line 1, column 79: \"mesh\" appears twice"},
        {kHead + "{\"x\": " + std::string(200, '[') + std::string(200, ']') + "}]}",
         "line 1, column 199: values nested more than 128 levels deep"},
    };
    for (const auto& [text, problem] : cases)
        EXPECT_EQ(problemOf(text), problem) << text;
}

TEST(WeightsFile, AFileThatCannotBeReadIsNamed) {
    WeightsFile file;
    runtime::FileResult result = runtime::readWeightsFile("no/such/w.json", file);
    EXPECT_FALSE(result.ok());
    EXPECT_EQ(result.message, "Cannot read \"no/such/w.json\": the file does not exist.");
    QTemporaryDir folder;
    const std::string path = folder.filePath("half.json").toStdString();
    const std::string text = runtime::weightsFileText(sampleFile());
    std::ofstream(path) << text.substr(0, text.size() / 2);
    result = runtime::readWeightsFile(path, file);
    EXPECT_EQ(result.message.rfind("Cannot read \"" + path + "\": line ", 0), 0u) << result.message;
}
