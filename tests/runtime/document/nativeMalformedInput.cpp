#include "OutputRecorder.h"
#include "document/NativeSceneFormat.h"
#include "document/SceneDocument.h"
#include "documentTesting.h"
#include "scene/Scene.h"
#include "undo/UndoQueue.h"

#include <cmath>
#include <functional>
#include <nlohmann/json.hpp>

using namespace documenttest;

namespace {

using Json = nlohmann::ordered_json;

struct Damage {
    const char* what;
    std::function<void(Json&)> apply;
    // The problem the message names; empty for damage done to the text itself.
    std::string problem;
};

Json& nodeNamed(Json& file, const std::string& name) {
    for (Json& node : file["nodes"])
        if (node["name"] == name)
            return node;
    throw std::runtime_error("no node " + name);
}

// Changes a packed list of a saved file as a writer of the format would.
template <typename T> void editList(Json& list, const std::function<void(std::vector<T>&)>& edit) {
    std::vector<T> values;
    ASSERT_TRUE(runtime::readList(list, values));
    edit(values);
    list = runtime::packedList(values);
}

// A packed list written out as a plain JSON list, as a file written by hand has it.
template <typename T> Json& writtenOut(Json& list) {
    std::vector<T> values;
    EXPECT_TRUE(runtime::readList(list, values));
    list = Json(values);
    return list;
}

Json& weightList(Json& file, const char* name) {
    return nodeNamed(file, "legCluster")["skin"]["weights"][name];
}

int indexOf(const Json& file, const std::string& name) {
    for (std::size_t i = 0; i < file["nodes"].size(); ++i)
        if (file["nodes"][i]["name"] == name)
            return static_cast<int>(i);
    return -1;
}

// A saved scene is damaged in one place at a time; each damaged file must be refused with its
// problem while the open scene, its selection, its undo queue and its name stay as they were.
class NativeMalformedInput : public DocumentTest {
protected:
    void SetUp() override {
        DocumentTest::SetUp();
        makeLegScene();
        ASSERT_TRUE(run("file -ea \"" + path("good.vscene") + "\""));
        m_good = Json::parse(readText(path("good.vscene")));
        ASSERT_TRUE(run("file -rename \"" + path("open.vscene") +
                        "\"; select -r leg.vtx[2:4]; "
                        "setAttr rig.tx 5"));
    }

    void expectRefused(const std::string& text, const std::string& problem, const char* what) {
        SCOPED_TRACE(what);
        writeText(path("bad.vscene"), text);
        const std::string error = openRefusal(path("bad.vscene"));
        if (problem.empty())
            EXPECT_EQ(error.rfind(
                          "Cannot read \"" + path("bad.vscene") + "\": it is not valid JSON (", 0),
                      0u)
                << error;
        else
            EXPECT_EQ(error, readRefusal(path("bad.vscene"), problem));
        EXPECT_EQ(runtime::sceneDocument().name(), path("open.vscene"));
        EXPECT_TRUE(runtime::scene().isModified());
    }

    Json m_good;
};

TEST_F(NativeMalformedInput, BrokenTextIsRefused) {
    const std::string good = readText(path("good.vscene"));
    expectRefused(good.substr(0, good.size() / 2), "", "truncated");
    expectRefused(R"({"format": "vorel-scene", "version": 1, "nodes": [}])", "", "bad JSON");
    expectRefused("", "", "empty");
}

TEST_F(NativeMalformedInput, EachInconsistencyIsRefusedWithItsProblem) {
    const int cluster = indexOf(m_good, "legCluster");
    const std::string clusterName = "node " + std::to_string(cluster) + " (\"legCluster\")";
    const Damage damages[] = {
        {"unknown version", [](Json& f) { f["version"] = 2; },
         "it is of version 2, and this host reads version 1"},
        {"another format", [](Json& f) { f["format"] = "other"; },
         "it is not a native scene file (its \"format\" is not \"vorel-scene\")"},
        {"no nodes", [](Json& f) { f.erase("nodes"); }, "it has no list of nodes"},
        {"connection to a missing node", [](Json& f) { f["connections"][0][2] = 99; },
         "connection 0 refers to a node that is not in the file"},
        {"connection to a missing attribute",
         [](Json& f) { f["connections"][1][3] = "noSuchPlug"; },
         "connection 1: No attribute noSuchPlug on legClusterSet"},
        {"polygon vertex out of range",
         [](Json& f) {
             editList<std::int32_t>(nodeNamed(f, "legShape")["mesh"]["polygonVertices"],
                                    [](std::vector<std::int32_t>& v) { v[5] = 1000000; });
         },
         "node 1 (\"legShape\"): Polygon vertex index 1000000 is out of range"},
        {"influence index out of range",
         [](Json& f) {
             editList<std::uint16_t>(nodeNamed(f, "legCluster")["skin"]["weights"]["influences"],
                                     [](std::vector<std::uint16_t>& v) { v[1] = 3; });
         },
         clusterName + " has an influence out of range or twice on vertex 0"},
        {"influence node out of range",
         [](Json& f) { nodeNamed(f, "legCluster")["skin"]["influences"][0] = -1; },
         clusterName + " has influences that are not nodes of the file"},
        {"absurd weight count",
         [](Json& f) {
             editList<std::uint16_t>(nodeNamed(f, "legCluster")["skin"]["weights"]["counts"],
                                     [](std::vector<std::uint16_t>& v) { v[0] = 65535; });
         },
         clusterName + " has a weight count for vertex 0 that is out of range"},
        {"count beyond its type",
         [](Json& f) {
             nodeNamed(f, "legCluster")["skin"]["weights"]["counts"] = {4000000000u, 3};
         },
         clusterName + " has weight lists (\"counts\", \"influences\", \"values\") that are "
                       "missing or hold numbers out of range"},
        {"packed list that is not base64",
         [](Json& f) { nodeNamed(f, "legShape")["mesh"]["points"] = "not base64!"; },
         "node 1 (\"legShape\") has \"points\" that are not a list of x, y, z numbers"},
        {"weights of too few vertices",
         [](Json& f) {
             Json& weights = nodeNamed(f, "legCluster")["skin"]["weights"];
             std::size_t last = 0;
             editList<std::uint16_t>(weights["counts"], [&](std::vector<std::uint16_t>& v) {
                 last = v.back();
                 v.pop_back();
             });
             editList<std::uint16_t>(weights["influences"], [&](std::vector<std::uint16_t>& v) {
                 v.resize(v.size() - last);
             });
             editList<double>(weights["values"],
                              [&](std::vector<double>& v) { v.resize(v.size() - last); });
         },
         clusterName + " has weights for 25 vertices, and its mesh \"legShape\" has 26"},
        {"parent after its child", [](Json& f) { nodeNamed(f, "hip")["parent"] = 5; },
         "node 3 has a parent that is not a node before it"},
        {"value of the wrong kind",
         [](Json& f) { nodeNamed(f, "rig")["values"]["translate"]["translateX"] = "far"; },
         "node 2 (\"rig\"): the value of \"translate.translateX\" is wrong: it is not a number"},
        {"element index beyond 32 bits",
         [](Json& f) {
             nodeNamed(f, "legCluster")["values"]["lockVertex"] = {{"4294967296", true}};
         },
         clusterName + ": \"lockVertex\" has the element index \"4294967296\", which is not a "
                       "number from 0 to 2147483647"},
        {"unknown type", [](Json& f) { nodeNamed(f, "looseSet")["type"] = "camera"; },
         "node 9 is of the unknown type \"camera\""},
        {"name taken", [](Json& f) { nodeNamed(f, "looseSet")["name"] = "legClusterSet"; },
         "node 9 has the name \"legClusterSet\", which another node has already"},
        {"mesh without parent", [](Json& f) { nodeNamed(f, "legShape").erase("parent"); },
         "node 1 is a shape without a parent"},
        {"negative parent", [](Json& f) { nodeNamed(f, "hip")["parent"] = -1; },
         "node 3 has a parent that is not a node before it"},
        {"first node its own parent", [](Json& f) { f["nodes"][0]["parent"] = 0; },
         "node 0 has a parent that is not a node before it"},
        {"connections without nodes", [](Json& f) { f["nodes"] = Json::array(); },
         "connection 0 refers to a node that is not in the file"},
        {"negative polygon vertex",
         [](Json& f) {
             editList<std::int32_t>(nodeNamed(f, "legShape")["mesh"]["polygonVertices"],
                                    [](std::vector<std::int32_t>& v) { v[0] = -1; });
         },
         "node 1 (\"legShape\"): Polygon vertex index -1 is out of range"},
        {"absurd polygon size",
         [](Json& f) {
             editList<std::int32_t>(nodeNamed(f, "legShape")["mesh"]["polygonSizes"],
                                    [](std::vector<std::int32_t>& v) { v[0] = 2147483647; });
         },
         "node 1 (\"legShape\"): The polygon sizes do not add up to the number of polygon "
         "vertices"},
        {"negative weight influence",
         [](Json& f) { writtenOut<std::uint16_t>(weightList(f, "influences"))[0] = -1; },
         clusterName + " has weight lists (\"counts\", \"influences\", \"values\") that are "
                       "missing or hold numbers out of range"},
        {"negative element index",
         [](Json& f) {
             nodeNamed(f, "legCluster")["values"]["lockVertex"] = {{"-1", true}};
         },
         clusterName + ": \"lockVertex\" has the element index \"-1\", which is not a number "
                       "from 0 to 2147483647"},
        {"weight that is not a number",
         [](Json& f) {
             editList<double>(nodeNamed(f, "legCluster")["skin"]["weights"]["values"],
                              [](std::vector<double>& v) { v[4] = std::nan(""); });
         },
         clusterName + " has a weight that is not finite on vertex 1"},
        {"infinite weight written out",
         [](Json& f) { writtenOut<double>(weightList(f, "values"))[0] = "-inf"; },
         clusterName + " has a weight that is not finite on vertex 0"},
    };
    for (const Damage& damage : damages) {
        Json file = m_good;
        damage.apply(file);
        expectRefused(file.dump(), damage.problem, damage.what);
    }
}

} // namespace
