#include "gltfTestFiles.h"

#include "files/SceneFiles.h"

#include <QByteArray>
#include <QFile>
#include <QFileInfo>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <stdexcept>

namespace filetest {

namespace {

std::uint32_t word(const unsigned char* at) {
    std::uint32_t value;
    std::memcpy(&value, at, 4);
    return value;
}

void appendWord(std::string& out, std::uint32_t value) {
    out.append(reinterpret_cast<const char*>(&value), 4);
}

template <typename T> void appendValue(std::vector<unsigned char>& bin, T value) {
    const auto* raw = reinterpret_cast<const unsigned char*>(&value);
    bin.insert(bin.end(), raw, raw + sizeof(T));
}

// Appends a buffer view holding `bytes` and returns its index.
int addView(GltfFile& file, const std::vector<unsigned char>& bytes, int target) {
    while (file.bin.size() % 4 != 0)
        file.bin.push_back(0);
    Json view = {{"buffer", 0}, {"byteOffset", file.bin.size()}, {"byteLength", bytes.size()}};
    if (target != 0)
        view["target"] = target;
    file.bin.insert(file.bin.end(), bytes.begin(), bytes.end());
    file.json["bufferViews"].push_back(view);
    return static_cast<int>(file.json["bufferViews"].size()) - 1;
}

} // namespace

std::string testAssetsFolder() {
    return VOREL_TEST_ASSETS;
}

bool testAssetsPresent() {
    return QFileInfo(QString::fromStdString(testAssetsFolder())).isDir();
}

std::string assetPath(const std::string& name) {
    std::string path = testAssetsFolder() + "/" + name;
    // Thrown, so that the test fails here with the reason instead of reading an empty scene.
    if (!QFileInfo::exists(QString::fromStdString(path)))
        throw std::runtime_error("missing test asset " + path +
                                 ": the shared assets folder must sit beside the checkout");
    return path;
}

std::string importModelPath(const std::string& name) {
    return "/usr/share/assimp/models/" + name;
}

std::string FolderTest::path(const std::string& name) const {
    return m_folder.filePath(QString::fromStdString(name)).toStdString();
}

void expectValidGltf(const std::vector<std::string>& files) {
    std::string command = std::string("'") + VOREL_NODE + "' '" + VOREL_VALIDATE_SCRIPT + "' '" +
                          VOREL_GLTF_VALIDATOR + "'";
    for (const std::string& file : files)
        command += " '" + file + "'";
    std::vector<Json> reports;
    FILE* output = popen(command.c_str(), "r");
    ASSERT_TRUE(output) << command;
    std::string line;
    for (int c = std::fgetc(output); c != EOF; c = std::fgetc(output)) {
        if (c != '\n') {
            line += static_cast<char>(c);
            continue;
        }
        reports.push_back(Json::parse(line, nullptr, false));
        line.clear();
    }
    pclose(output);
    ASSERT_EQ(reports.size(), files.size()) << "the validator did not report on every file";
    for (const Json& report : reports) {
        ASSERT_TRUE(report.is_object());
        EXPECT_EQ(report["errors"], 0) << report.dump(2);
    }
}

runtime::SceneDescription readScene(const std::string& path) {
    runtime::SceneDescription scene;
    runtime::FileResult result = runtime::readSceneFile(path, scene);
    EXPECT_TRUE(result.ok()) << result.message;
    return scene;
}

int nodeNamed(const runtime::SceneDescription& scene, const std::string& name) {
    for (int n = 0; n < static_cast<int>(scene.nodes.size()); ++n)
        if (scene.nodes[n].name == name)
            return n;
    return -1;
}

std::string readText(const std::string& path) {
    QFile file(QString::fromStdString(path));
    if (!file.open(QIODevice::ReadOnly))
        throw std::runtime_error("cannot read " + path);
    return file.readAll().toStdString();
}

void writeBytes(const std::string& path, const std::string& bytes) {
    QFile file(QString::fromStdString(path));
    if (!file.open(QIODevice::WriteOnly) ||
        file.write(bytes.data(), static_cast<qint64>(bytes.size())) !=
            static_cast<qint64>(bytes.size()))
        throw std::runtime_error("cannot write " + path);
}

GltfFile GltfFile::load(const std::string& path) {
    const std::string bytes = readText(path);
    GltfFile file;
    const auto* data = reinterpret_cast<const unsigned char*>(bytes.data());
    if (bytes.compare(0, 4, "glTF") == 0) {
        const std::uint32_t jsonLength = word(data + 12);
        file.json = Json::parse(bytes.substr(20, jsonLength));
        const std::size_t binStart = 20 + jsonLength;
        if (binStart + 8 <= bytes.size())
            file.bin.assign(data + binStart + 8, data + binStart + 8 + word(data + binStart));
        return file;
    }
    file.json = Json::parse(bytes);
    if (!file.json.contains("buffers"))
        return file;
    const std::string uri = file.json["buffers"][0].value("uri", "");
    QByteArray raw;
    if (uri.rfind("data:", 0) == 0) {
        raw = QByteArray::fromBase64(QByteArray::fromStdString(uri.substr(uri.find(',') + 1)));
    } else {
        const std::string folder =
            QFileInfo(QString::fromStdString(path)).absolutePath().toStdString();
        raw = QByteArray::fromStdString(readText(folder + "/" + uri));
    }
    file.bin.assign(raw.begin(), raw.end());
    return file;
}

void GltfFile::save(const std::string& path, const std::string& externalBin) const {
    Json document = json;
    Json& buffer = document["buffers"][0];
    buffer["byteLength"] = bin.size();
    const std::string binText(bin.begin(), bin.end());
    if (QFileInfo(QString::fromStdString(path)).suffix() != "glb") {
        if (externalBin.empty()) {
            buffer["uri"] = "data:application/octet-stream;base64," +
                            QByteArray::fromStdString(binText).toBase64().toStdString();
        } else {
            buffer["uri"] = externalBin;
            const std::string folder =
                QFileInfo(QString::fromStdString(path)).absolutePath().toStdString();
            writeBytes(folder + "/" + externalBin, binText);
        }
        writeBytes(path, document.dump());
        return;
    }
    std::string text = document.dump();
    text.append((4 - text.size() % 4) % 4, ' ');
    std::string padded = binText;
    padded.append((4 - padded.size() % 4) % 4, '\0');
    std::string glb = "glTF";
    appendWord(glb, 2);
    appendWord(glb, static_cast<std::uint32_t>(28 + text.size() + padded.size()));
    appendWord(glb, static_cast<std::uint32_t>(text.size()));
    glb += "JSON" + text;
    appendWord(glb, static_cast<std::uint32_t>(padded.size()));
    glb += std::string("BIN\0", 4) + padded;
    writeBytes(path, glb);
}

std::vector<double> GltfFile::numbers(int index) const {
    const Json& accessor = json["accessors"][index];
    const Json& view = json["bufferViews"][accessor["bufferView"].get<int>()];
    const int componentType = accessor["componentType"];
    const std::string type = accessor["type"];
    const int components = type == "SCALAR" ? 1 : type == "VEC3" ? 3 : type == "VEC4" ? 4 : 16;
    const int size = componentType == 5121 ? 1 : componentType == 5123 ? 2 : 4;
    const std::size_t stride = view.value("byteStride", std::size_t(size * components));
    const std::size_t start =
        view.value("byteOffset", std::size_t(0)) + accessor.value("byteOffset", std::size_t(0));
    const bool normalized = accessor.value("normalized", false);
    std::vector<double> values;
    for (std::size_t e = 0; e < accessor["count"].get<std::size_t>(); ++e)
        for (int c = 0; c < components; ++c) {
            const unsigned char* at = bin.data() + start + e * stride + c * size;
            if (componentType == 5126) {
                float value;
                std::memcpy(&value, at, 4);
                values.push_back(value);
            } else if (componentType == 5121) {
                values.push_back(normalized ? *at / 255.0 : *at);
            } else if (componentType == 5123) {
                std::uint16_t value;
                std::memcpy(&value, at, 2);
                values.push_back(normalized ? value / 65535.0 : value);
            } else {
                values.push_back(word(at));
            }
        }
    return values;
}

int GltfFile::attribute(int mesh, int primitive, const std::string& name) const {
    return json["meshes"][mesh]["primitives"][primitive]["attributes"][name].get<int>();
}

GltfFile skinnedQuad() {
    GltfFile file;
    file.json = {{"asset", {{"version", "2.0"}}},
                 {"scene", 0},
                 {"scenes", {{{"nodes", {0, 1}}}}},
                 {"nodes",
                  {{{"name", "body"}, {"mesh", 0}, {"skin", 0}},
                   {{"name", "root"}, {"children", {2}}},
                   {{"name", "tip"}, {"translation", {0.0, 1.0, 0.0}}}}},
                 {"skins", {{{"joints", {1, 2}}, {"inverseBindMatrices", 4}}}},
                 {"bufferViews", Json::array()},
                 {"buffers", {{{"byteLength", 0}}}}};
    std::vector<unsigned char> positions, indices, joints, weights, matrices;
    for (float p : {0.f, 0.f, 0.f, 1.f, 0.f, 0.f, 0.f, 1.f, 0.f, 1.f, 1.f, 0.f})
        appendValue(positions, p);
    for (std::uint16_t i : {0, 1, 2, 2, 1, 3})
        appendValue(indices, i);
    for (std::uint8_t j : {0, 0, 0, 0, 0, 1, 0, 0, 0, 1, 0, 0, 1, 0, 0, 0})
        appendValue(joints, j);
    for (float w :
         {1.f, 0.f, 0.f, 0.f, .75f, .25f, 0.f, 0.f, .25f, .75f, 0.f, 0.f, 1.f, 0.f, 0.f, 0.f})
        appendValue(weights, w);
    for (float ty : {0.f, -1.f})
        for (float m :
             {1.f, 0.f, 0.f, 0.f, 0.f, 1.f, 0.f, 0.f, 0.f, 0.f, 1.f, 0.f, 0.f, ty, 0.f, 1.f})
            appendValue(matrices, m);
    const int vp = addView(file, positions, 34962), vi = addView(file, indices, 34963),
              vj = addView(file, joints, 34962), vw = addView(file, weights, 34962),
              vm = addView(file, matrices, 0);
    file.json["accessors"] = {
        {{"bufferView", vp},
         {"componentType", 5126},
         {"count", 4},
         {"type", "VEC3"},
         {"min", {0, 0, 0}},
         {"max", {1, 1, 0}}},
        {{"bufferView", vi}, {"componentType", 5123}, {"count", 6}, {"type", "SCALAR"}},
        {{"bufferView", vj}, {"componentType", 5121}, {"count", 4}, {"type", "VEC4"}},
        {{"bufferView", vw}, {"componentType", 5126}, {"count", 4}, {"type", "VEC4"}},
        {{"bufferView", vm}, {"componentType", 5126}, {"count", 2}, {"type", "MAT4"}}};
    Json primitive = {{"attributes", {{"POSITION", 0}, {"JOINTS_0", 2}, {"WEIGHTS_0", 3}}},
                      {"indices", 1}};
    file.json["meshes"] = Json::array({{{"primitives", Json::array({primitive})}}});
    return file;
}

runtime::SceneDescription jointChainOverQuad() {
    runtime::SceneDescription scene;
    for (int j = 0; j < 6; ++j) {
        runtime::SceneNode joint;
        joint.name = "j" + std::to_string(j);
        joint.parent = j - 1;
        joint.isJoint = true;
        joint.transform.translation = {0.0, j == 0 ? 0.0 : 1.0, 0.0};
        scene.nodes.push_back(joint);
    }
    runtime::SceneNode body;
    body.name = "body";
    body.mesh = 0;
    scene.nodes.push_back(body);
    runtime::SceneMesh quad;
    quad.name = "quad";
    quad.points = {{0, 0, 0}, {1, 0, 0}, {1, 4.9, 0}, {0, 1, 0}};
    quad.polygonSizes = {4};
    quad.polygonVertices = {0, 1, 2, 3};
    scene.meshes.push_back(quad);
    runtime::SceneSkin skin;
    skin.meshNode = 6;
    skin.joints = {0, 1, 2, 3, 4, 5};
    for (int j = 0; j < 6; ++j) {
        runtime::Matrix4 inverse = runtime::identityMatrix();
        inverse[13] = -j; // joint j sits at height j
        skin.inverseBindMatrices.push_back(inverse);
    }
    const std::vector<std::vector<runtime::SkinWeight>> weights = {
        {{0, 0.1}, {1, 0.3}, {2, 0.05}, {3, 0.2}, {4, 0.25}, {5, 0.4}}, // sums to 1.3
        {{2, 2.0}},
        {},
        {{0, 1.0 / 3}, {1, 1.0 / 3}, {2, 1.0 / 3}}};
    for (const auto& vertex : weights) {
        skin.weights.startVertex();
        for (const runtime::SkinWeight& entry : vertex)
            skin.weights.add(entry.influence, entry.weight);
    }
    scene.skins.push_back(skin);
    return scene;
}

runtime::SparseSkinWeights withVertexWeights(const runtime::SparseSkinWeights& weights, int vertex,
                                             const std::vector<runtime::SkinWeight>& entries) {
    runtime::SparseSkinWeights result;
    for (int v = 0; v < weights.vertexCount(); ++v) {
        result.startVertex();
        if (v == vertex) {
            for (const runtime::SkinWeight& entry : entries)
                result.add(entry.influence, entry.weight);
            continue;
        }
        for (const runtime::SkinWeight& entry : weights.vertex(v))
            result.add(entry.influence, entry.weight);
    }
    return result;
}

} // namespace filetest
