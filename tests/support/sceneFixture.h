// sceneFixture: builds test scenes in one call, without the command language.
//
// makeSkinnedMesh() makes a mesh (a grid or an open cylinder of exactly the requested number
// of vertices) under a transform NAME with the shape NAME + "Shape", a chain of joints
// NAME + "Joint1", NAME + "Joint2", ... laid along the mesh, and a skin cluster giving every
// vertex weightsPerVertex non-zero weights that sum to 1: by distance to the joints, or,
// with a seed, drawn at random (the same seed gives the same weights). FreshScene is the test
// base that gives each test an empty scene and an empty selection.
#pragma once

#include "HDagPath.h"
#include "HObject.h"
#include "scene/Node.h"
#include "scene/Scene.h"

#include <gtest/gtest.h>
#include <initializer_list>
#include <string>
#include <vector>

namespace fixture {

enum class MeshShape { kGrid, kCylinder };

struct SkinnedMeshOptions {
    unsigned vertices = 16;
    MeshShape shape = MeshShape::kGrid;
    unsigned joints = 3;
    unsigned weightsPerVertex = 2;
    // 0: weights by distance to the joints; otherwise random weights from this seed.
    unsigned seed = 0;
    std::string name = "body";
    // Empty: the next free "skinCluster" name.
    std::string clusterName;
};

struct SkinnedMesh {
    runtime::NodePtr transform;
    runtime::NodePtr shape;
    runtime::NodePtr cluster;
    std::vector<runtime::NodePtr> joints;

    HObject clusterObject() const;
    HDagPath shapePath() const;
    HDagPath jointPath(size_t index) const;
    unsigned vertexCount() const;
};

// Fails the calling test (and returns empty nodes) when the scene refuses something.
SkinnedMesh makeSkinnedMesh(const SkinnedMeshOptions& options = SkinnedMeshOptions());

// Handles for runtime objects, as a plug-in would hold them.
HObject objectOf(const runtime::NodePtr& node);
HDagPath pathOf(const runtime::NodePtr& node);
// A new mesh vertex component with the given elements, in that order.
HObject vertexComponent(std::initializer_list<int> vertices);
// The cell lock attribute a weight editor keeps on a skin cluster: the compound array
// "lockedCellIndices" whose child "lockedLocalJoints" is an array of strings.
runtime::AttributePtr cellLockAttribute();

class FreshScene : public ::testing::Test {
protected:
    void SetUp() override;
    runtime::Scene& scene() const;
};

} // namespace fixture
