// Files made to hurt the host, opened through the `file` command as a user would: hierarchies
// deep enough to exhaust a stack or make every full path name enormous, more nodes than any
// scene has, cycles, indices below zero, weights that are not numbers, and names and strings
// that hold command text. Each is refused with a message naming the file and the problem, the
// open scene staying exactly as it was, or it opens inertly: nothing in a file ever runs.
#include "OutputRecorder.h"
#include "document/SceneDocument.h"
#include "documentTesting.h"
#include "gltfTestFiles.h"
#include "scene/Scene.h"

#include <cmath>
#include <cstring>
#include <functional>
#include <nlohmann/json.hpp>

using namespace documenttest;
using filetest::GltfFile;
using Json = nlohmann::ordered_json;

namespace {

Json nativeScene(Json nodes, Json connections = Json::array()) {
    return {{"format", "vorel-scene"},
            {"version", 1},
            {"nodes", std::move(nodes)},
            {"connections", std::move(connections)}};
}

// `count` transforms "n0", "n1"...; each the child of the one before when chained.
Json transforms(int count, bool chained) {
    Json nodes = Json::array();
    for (int i = 0; i < count; ++i) {
        Json node = {{"type", "transform"}, {"name", "n" + std::to_string(i)}};
        if (chained && i > 0)
            node["parent"] = i - 1;
        nodes.push_back(std::move(node));
    }
    return nodes;
}

// The skinned quad under a chain of `depth` nodes, the root first.
GltfFile quadUnderChain(int depth) {
    GltfFile file = filetest::skinnedQuad();
    Json& nodes = file.json["nodes"];
    const int first = static_cast<int>(nodes.size());
    for (int i = 0; i < depth; ++i) {
        nodes.push_back({{"name", "g" + std::to_string(i)}});
        if (i > 0)
            nodes[first + i - 1]["children"] = {first + i};
    }
    nodes[first + depth - 1]["children"] = {0};
    file.json["scenes"][0]["nodes"] = {first, 1};
    return file;
}

class HostileSceneFiles : public DocumentTest {
protected:
    void SetUp() override {
        DocumentTest::SetUp();
        makeLegScene();
        ASSERT_TRUE(run("file -rename \"" + path("open.vscene") +
                        "\"; select -r leg.vtx[2:4]; setAttr rig.tx 5"));
    }

    std::string refusalOf(const Json& native, const std::string& name) {
        writeText(path(name), native.dump());
        return openRefusal(path(name));
    }
    std::string refusalOf(const GltfFile& gltf, const std::string& name) {
        gltf.save(path(name));
        return openRefusal(path(name));
    }
    // Opens the file; the errors and warnings it gave.
    std::vector<std::string> opened(const std::string& name) {
        OutputRecorder output;
        EXPECT_TRUE(run("file -f -o \"" + path(name) + "\""));
        std::vector<std::string> said = output.texts(HCommandMessage::kError);
        for (const std::string& warning : output.texts(HCommandMessage::kWarning))
            said.push_back(warning);
        return said;
    }
};

} // namespace

TEST_F(HostileSceneFiles, DeepHierarchiesAreRefused) {
    EXPECT_EQ(
        refusalOf(nativeScene(transforms(100000, true)), "deep.vscene"),
        readRefusal(path("deep.vscene"), "node 256 is more than 256 levels deep in the hierarchy"));
    EXPECT_EQ(refusalOf(quadUnderChain(100000), "deep.glb"),
              readRefusal(path("deep.glb"), "the scene it holds is inconsistent: node 256 is more "
                                            "than 256 levels deep in the hierarchy"));

    // Built as text: writing so deep a document with the JSON library would exhaust the stack.
    const std::string nested = std::string(100000, '[') + std::string(100000, ']');
    std::string text = nativeScene(transforms(1, false)).dump();
    text.replace(text.find("\"name\""), 0, "\"values\": {\"visibility\": " + nested + "}, ");
    writeText(path("nested.vscene"), text);
    EXPECT_EQ(openRefusal(path("nested.vscene")),
              readRefusal(path("nested.vscene"), "its JSON is nested more than 128 levels deep"));
}

TEST_F(HostileSceneFiles, TheDeepestHierarchyAllowedOpens) {
    writeText(path("deepest.vscene"), nativeScene(transforms(256, true)).dump());
    EXPECT_TRUE(opened("deepest.vscene").empty());
    ASSERT_NE(runtime::scene().findNode("n255"), nullptr);
    EXPECT_EQ(runtime::scene().findNode("n255")->parent()->name(), "n254");
    quadUnderChain(255).save(path("deepest.glb"));
    EXPECT_TRUE(opened("deepest.glb").empty());
    EXPECT_NE(runtime::scene().findNode("tip"), nullptr);
}

TEST_F(HostileSceneFiles, ManyNodesOpenInProportion) {
    writeText(path("wide.vscene"), nativeScene(transforms(100000, false)).dump());
    EXPECT_TRUE(opened("wide.vscene").empty());
    EXPECT_EQ(runtime::scene().nodeCount(), 100000u);
}

TEST_F(HostileSceneFiles, CyclicConnectionsOpenInertly) {
    const Json cycle = Json::array({Json::array({0, "translateX", 1, "translateX"}),
                                    Json::array({1, "translateX", 0, "translateX"})});
    writeText(path("cycle.vscene"), nativeScene(transforms(2, false), cycle).dump());
    EXPECT_TRUE(opened("cycle.vscene").empty());
    EXPECT_TRUE(run("setAttr n0.tx 2; setAttr n1.tx 3"));
    EXPECT_EQ(stringResult("getAttr n0.tx") + " " + stringResult("getAttr n1.tx"), "2 3");
    EXPECT_TRUE(run("file -save; file -f -o \"" + path("cycle.vscene") + "\""));
    std::vector<std::string> connections;
    for (const runtime::ConnectionPtr& connection : runtime::scene().connections())
        connections.push_back(connection->source.name() + " -> " + connection->destination.name());
    EXPECT_EQ(connections, (std::vector<std::string>{"n0.translateX -> n1.translateX",
                                                     "n1.translateX -> n0.translateX"}));

    GltfFile ownChild = filetest::skinnedQuad();
    ownChild.json["nodes"][1]["children"] = {1, 2};
    EXPECT_EQ(refusalOf(ownChild, "own-child.gltf"),
              readRefusal(path("own-child.gltf"), "node 1 has more than one parent"));
}

TEST_F(HostileSceneFiles, NegativeIndicesAreRefused) {
    struct Damage {
        const char* file;
        std::function<void(Json&)> apply;
        std::string problem;
    };
    const Damage damages[] = {
        {"child.gltf", [](Json& f) { f["nodes"][1]["children"] = {-1}; },
         "node 1 has child -1, which does not exist"},
        {"joint.gltf",
         [](Json& f) {
             f["skins"][0]["joints"] = {1, -2};
         },
         "skin 0 has joint -2, which is not in the scene"},
        {"accessor.glb",
         [](Json& f) { f["meshes"][0]["primitives"][0]["attributes"]["WEIGHTS_0"] = -3; },
         "mesh 0 primitive 0: set 0 has JOINTS without WEIGHTS or the reverse"},
    };
    for (const Damage& damage : damages) {
        GltfFile file = filetest::skinnedQuad();
        damage.apply(file.json);
        EXPECT_EQ(refusalOf(file, damage.file), readRefusal(path(damage.file), damage.problem));
    }
}

TEST_F(HostileSceneFiles, WeightsThatAreNotNumbersAreRefused) {
    const std::pair<double, const char*> bads[] = {
        {std::nan(""), "nan"}, {INFINITY, "inf"}, {-INFINITY, "-inf"}};
    for (const auto& [bad, text] : bads) {
        GltfFile file = filetest::skinnedQuad();
        const int weights = file.attribute(0, 0, "WEIGHTS_0");
        const int view = file.json["accessors"][weights]["bufferView"];
        const std::size_t offset = file.json["bufferViews"][view].value("byteOffset", 0u);
        const float value = static_cast<float>(bad);
        std::memcpy(file.bin.data() + offset + 4 * sizeof(float), &value, sizeof value);
        EXPECT_EQ(
            refusalOf(file, "weights.glb"),
            readRefusal(path("weights.glb"), std::string("mesh 0 primitive 0 vertex 1 has the "
                                                         "weight ") +
                                                 text + ", which is not a finite number"));
    }
}

TEST_F(HostileSceneFiles, CommandTextInNamesAndStringsIsNeverRun) {
    const std::string command = "file -f -new; print \"ran\"";
    GltfFile file = filetest::skinnedQuad();
    file.json["nodes"][1]["name"] = command;
    file.json["nodes"][2]["extras"] = {{"note", command}};
    file.json["meshes"][0]["name"] = command;
    file.json["asset"]["extras"] = {{"script", command}};
    file.save(path("commands.gltf"));
    OutputRecorder output;
    EXPECT_TRUE(run("file -f -o \"" + path("commands.gltf") + "\""));
    EXPECT_EQ(output.lines(), std::vector<OutputRecorder::Line>{});
    EXPECT_EQ(stringResult("ls -type joint"), "file__f__new__print__ran_ tip");

    Json native = nativeScene(transforms(1, false));
    native["nodes"][0]["name"] = command;
    EXPECT_EQ(
        refusalOf(native, "name.vscene"),
        readRefusal(path("name.vscene"), "node 0: Invalid node name: file -f -new; print \"ran\""));
}
