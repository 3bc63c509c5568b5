// Picking: which vertices a click or a dragged rectangle in the viewport hits, and the
// `select` statement that makes them the selection. Works on projected points (Camera), so it
// needs no OpenGL.
//
// A click hits the vertex whose projection is nearest to the mouse within kPickRadius pixels;
// between vertices equally near on screen (within a pixel) the one nearer the camera wins. A
// rectangle hits every vertex projected inside it, in front of the camera.
#pragma once

#include "Camera.h"
#include "MeshDrawData.h"

#include <QPoint>
#include <QRect>
#include <QString>
#include <optional>
#include <vector>

namespace app::viewport {

constexpr double kPickRadius = 10.0;

struct PickedVertices {
    runtime::NodePtr shape;
    std::vector<unsigned> vertices;
};

// The meshes whose vertices can be picked now: visible ones in the hilite list or selected
// (as objects or by their components), when the vertex selection mode is on.
std::vector<const MeshDrawData*> pickableMeshes(const std::vector<const MeshDrawData*>& meshes);

std::optional<PickedVertices> pickNearest(const Camera& camera,
                                          const std::vector<const MeshDrawData*>& meshes,
                                          const QPointF& pixel);
std::vector<PickedVertices> pickInside(const Camera& camera,
                                       const std::vector<const MeshDrawData*>& meshes,
                                       const QRectF& rectangle);

enum class SelectMode { kReplace, kAdd, kRemove };

// The statement that applies the picked vertices ("select -r bodyShape.vtx[3:5]"); "select
// -cl" for replacing with nothing, and empty when adding or removing nothing.
QString selectStatement(SelectMode mode, const std::vector<PickedVertices>& picked);

} // namespace app::viewport
