// The import test models read through the importer program give the very scene the host read
// when it ran the import library in its own process: the fingerprints below were taken from
// that in-process reading. A fingerprint covers every node (name, parent, joint mark, mesh),
// every mesh (points bit for bit, polygons) and every skin (joints in influence order, inverse
// bind matrices, and each vertex's weights in the order they were listed).
#include "files/SceneDescription.h"
#include "gltfTestFiles.h"

#include <cstdint>
#include <cstring>
#include <gtest/gtest.h>

using namespace runtime;

namespace {

class Fingerprint {
public:
    void add(const void* bytes, std::size_t size) {
        const auto* p = static_cast<const unsigned char*>(bytes);
        for (std::size_t i = 0; i < size; ++i)
            m_hash = (m_hash ^ p[i]) * 0x100000001b3ull;
    }
    void add(const std::string& text) {
        add(std::int64_t(text.size()));
        add(text.data(), text.size());
    }
    template <typename T> void add(T value) { add(&value, sizeof value); }
    std::uint64_t value() const { return m_hash; }

private:
    std::uint64_t m_hash = 0xcbf29ce484222325ull;
};

std::uint64_t fingerprint(const SceneDescription& scene) {
    Fingerprint print;
    for (const SceneNode& node : scene.nodes) {
        print.add(node.name);
        print.add(node.parent);
        print.add(node.isJoint);
        print.add(node.mesh);
        print.add(node.transform.matrix.data(), sizeof(double) * 16);
    }
    for (const SceneMesh& mesh : scene.meshes) {
        print.add(mesh.name);
        print.add(mesh.points.data(), mesh.points.size() * sizeof(mesh.points[0]));
        print.add(mesh.polygonSizes.data(), mesh.polygonSizes.size() * sizeof(int));
        print.add(mesh.polygonVertices.data(), mesh.polygonVertices.size() * sizeof(int));
    }
    for (const SceneSkin& skin : scene.skins) {
        print.add(skin.meshNode);
        for (int joint : skin.joints)
            print.add(scene.nodes[joint].name);
        print.add(skin.joints.data(), skin.joints.size() * sizeof(int));
        for (const Matrix4& matrix : skin.inverseBindMatrices)
            print.add(matrix.data(), sizeof(double) * 16);
        for (int v = 0; v < skin.weights.vertexCount(); ++v) {
            print.add(std::int64_t(skin.weights.vertex(v).size()));
            for (const SkinWeight& entry : skin.weights.vertex(v)) {
                print.add(entry.influence);
                print.add(entry.weight);
            }
        }
    }
    return print.value();
}

struct Expected {
    const char* model;
    std::size_t joints;
    std::size_t weightEntries;
    std::uint64_t fingerprint;
};

} // namespace

TEST(ImportedModels, ReadTheSameAsTheInProcessImport) {
    const Expected models[] = {
        {"X/Testwuson.X", 37, 3484, 0x6500e62726b65fb2ull},
        {"X/BCN_Epileptic.X", 54, 3949, 0x3b244035c21c6ecdull},
        {"FBX/huesitos.fbx", 9, 156, 0xa9031d8a63bea5f9ull},
        {"FBX/animation_with_skeleton.fbx", 14, 5020, 0xd28f3e66b0c906a4ull},
        {"Collada/box_nested_animation.dae", 1, 8, 0xf43eb850faf70db1ull},
        {"SMD/WusonSMD.smd", 1, 2117, 0x71a0a6cc13986b23ull},
    };
    for (const Expected& expected : models) {
        SCOPED_TRACE(expected.model);
        const SceneDescription scene =
            filetest::readScene(filetest::importModelPath(expected.model));
        std::size_t joints = 0, entries = 0;
        for (const SceneSkin& skin : scene.skins) {
            joints += skin.joints.size();
            entries += skin.weights.entryCount();
        }
        EXPECT_EQ(joints, expected.joints);
        EXPECT_EQ(entries, expected.weightEntries);
        EXPECT_EQ(fingerprint(scene), expected.fingerprint)
            << "{\"" << expected.model << "\", " << joints << ", " << entries << ", 0x" << std::hex
            << fingerprint(scene) << "ull},";
    }
}
