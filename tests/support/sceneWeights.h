// sceneWeights: the weights of every vertex of skinned test meshes, and the check that the
// host's undo and redo of the last edit give them back bit for bit.
#pragma once

#include "vorelSession.h"

#include <gtest/gtest.h>
#include <vector>

namespace vorel {

using MeshWeights = std::vector<std::vector<double>>;

inline MeshWeights everyVertexWeights(const fixture::SkinnedMesh& mesh) {
    MeshWeights weights;
    for (unsigned vertex = 0; vertex < mesh.vertexCount(); ++vertex)
        weights.push_back(weightsOf(mesh, static_cast<int>(vertex)));
    return weights;
}

// Undoes the last edit (expecting `before` exactly), redoes it (expecting what the edit left).
inline void expectExactUndoRedo(const fixture::SkinnedMesh& mesh, const MeshWeights& before) {
    const MeshWeights after = everyVertexWeights(mesh);
    ASSERT_TRUE(run("undo"));
    EXPECT_EQ(everyVertexWeights(mesh), before);
    ASSERT_TRUE(run("redo"));
    EXPECT_EQ(everyVertexWeights(mesh), after);
}

} // namespace vorel
