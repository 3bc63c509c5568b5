// What the file tests share: the sample files, small glTF documents built in memory that a test
// breaks in one place, a look into written glTF files that does not go through the host's
// reader, and the validator.
#pragma once

#include "files/SceneDescription.h"

#include <QTemporaryDir>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>
#include <string>
#include <vector>

namespace filetest {

using Json = nlohmann::ordered_json;

// The shared test assets folder, which sits beside the checkout and not inside it: a bare clone
// of the repository has none.
std::string testAssetsFolder();
bool testAssetsPresent();

// A file of the shared test assets, by its path below the assets folder ("gltf/SimpleSkin.gltf");
// throws std::runtime_error, which fails the test, when the file is not there. Tests that call it
// begin with SKIP_WITHOUT_TEST_ASSETS(), so that only a file missing from a present folder fails.
std::string assetPath(const std::string& name);
// A file of Debian's import library test models ("X/Testwuson.X").
std::string importModelPath(const std::string& name);

std::string readText(const std::string& path);
void writeBytes(const std::string& path, const std::string& bytes);

// A test with a temporary folder of its own.
class FolderTest : public ::testing::Test {
protected:
    std::string path(const std::string& name) const;
    QTemporaryDir m_folder;
};

// Reads any scene file the host reads; a failure fails the test.
runtime::SceneDescription readScene(const std::string& path);
// The first node of that name, or -1.
int nodeNamed(const runtime::SceneDescription& scene, const std::string& name);

// A glTF file as its JSON and its one binary buffer.
struct GltfFile {
    Json json;
    std::vector<unsigned char> bin;

    // Reads a .glb (header and chunks) or a .gltf whose buffer is a data URI or a file beside it.
    static GltfFile load(const std::string& path);
    // Writes a .glb or a .gltf with the buffer embedded, by the path's extension; with
    // `externalBin` a .gltf refers to a .bin file written beside it instead.
    void save(const std::string& path, const std::string& externalBin = {}) const;

    // The components of an accessor, element after element, as numbers (normalised integers
    // scaled).
    std::vector<double> numbers(int accessor) const;
    // The accessor a primitive attribute refers to.
    int attribute(int mesh, int primitive, const std::string& name) const;
};

// Runs the Khronos glTF validator (installed by the GltfValidator test fixture) on the files and
// fails the calling test, with the validator's report, for every file that has errors.
void expectValidGltf(const std::vector<std::string>& files);

// A skinned quad: 4 vertices, 2 triangles, joints "root" and its child "tip", one weight set:
// vertex 0 all "root", vertex 1 0.75/0.25, vertex 2 0.25/0.75, vertex 3 all "tip".
// Nodes: 0 "body" (mesh 0, skin 0), 1 "root", 2 "tip". Accessors: 0 POSITION, 1 indices,
// 2 JOINTS_0, 3 WEIGHTS_0, 4 inverse bind matrices; each in its own buffer view.
GltfFile skinnedQuad();

// A fresh scene: a chain of six joints "j0".."j5" one unit apart upwards, and node "body" (the
// last) showing "quad", four vertices skinned to them: vertex 0 has six weights summing to 1.3,
// vertex 1 one weight of 2, vertex 2 none, vertex 3 a third on each of the first three joints.
runtime::SceneDescription jointChainOverQuad();

// The same weights with those of one vertex replaced.
runtime::SparseSkinWeights withVertexWeights(const runtime::SparseSkinWeights& weights, int vertex,
                                             const std::vector<runtime::SkinWeight>& entries);

} // namespace filetest

// Skips the calling test (or fixture set-up) when the shared test assets folder is absent, naming
// the folder it looked for; CTest shows such a test as skipped.
#define SKIP_WITHOUT_TEST_ASSETS()                                                              \
    if (!filetest::testAssetsPresent())                                                          \
    GTEST_SKIP() << "needs the shared test assets folder " << filetest::testAssetsFolder()      \
                 << ", which is not beside this checkout"
