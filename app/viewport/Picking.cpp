#include "Picking.h"

#include "api/HApiAccess.h"
#include "scene/ComponentData.h"
#include "scene/Scene.h"
#include "scene/Selection.h"
#include "scene/SelectionItems.h"

#include <cmath>

namespace app::viewport {

std::vector<const MeshDrawData*> pickableMeshes(const std::vector<const MeshDrawData*>& meshes) {
    std::vector<const MeshDrawData*> pickable;
    const runtime::Selection& selection = runtime::selection();
    if (!selection.vertices() && !selection.allComponents())
        return pickable;
    for (const MeshDrawData* mesh : meshes)
        if (mesh->visible &&
            (mesh->hilited || mesh->objectSelected || !mesh->selectedVertices().empty()))
            pickable.push_back(mesh);
    return pickable;
}

std::optional<PickedVertices> pickNearest(const Camera& camera,
                                          const std::vector<const MeshDrawData*>& meshes,
                                          const QPointF& pixel) {
    const MeshDrawData* bestMesh = nullptr;
    unsigned bestVertex = 0;
    double bestDistance = kPickRadius;
    float bestDepth = 0.0f;
    for (const MeshDrawData* mesh : meshes) {
        for (unsigned v = 0; v < mesh->vertexCount(); ++v) {
            QPointF projected;
            float depth = 0.0f;
            if (!camera.project(mesh->worldPosition(v), projected, &depth))
                continue;
            double distance = std::hypot(projected.x() - pixel.x(), projected.y() - pixel.y());
            if (distance > kPickRadius)
                continue;
            bool nearer = !bestMesh || distance < bestDistance - 1.0 ||
                          (distance <= bestDistance + 1.0 && depth < bestDepth);
            if (nearer) {
                bestMesh = mesh;
                bestVertex = v;
                bestDistance = distance;
                bestDepth = depth;
            }
        }
    }
    if (!bestMesh)
        return std::nullopt;
    return PickedVertices{bestMesh->shape(), {bestVertex}};
}

std::vector<PickedVertices> pickInside(const Camera& camera,
                                       const std::vector<const MeshDrawData*>& meshes,
                                       const QRectF& rectangle) {
    std::vector<PickedVertices> picked;
    QRectF area = rectangle.normalized();
    for (const MeshDrawData* mesh : meshes) {
        PickedVertices hits{mesh->shape(), {}};
        for (unsigned v = 0; v < mesh->vertexCount(); ++v) {
            QPointF projected;
            if (camera.project(mesh->worldPosition(v), projected) && area.contains(projected))
                hits.vertices.push_back(v);
        }
        if (!hits.vertices.empty())
            picked.push_back(std::move(hits));
    }
    return picked;
}

QString selectStatement(SelectMode mode, const std::vector<PickedVertices>& picked) {
    runtime::SelectionItems items;
    for (const PickedVertices& pick : picked) {
        auto component = std::make_shared<runtime::ComponentData>(HFn::kMeshVertComponent);
        for (unsigned vertex : pick.vertices)
            component->add(static_cast<int>(vertex));
        runtime::addItem(items, runtime::itemForComponent(pick.shape, component));
    }
    if (items.empty())
        return mode == SelectMode::kReplace ? QStringLiteral("select -cl") : QString();
    static const char* const flags[] = {"-r", "-add", "-d"};
    QString statement = QString("select ") + flags[static_cast<int>(mode)];
    for (const std::string& text : runtime::itemTexts(runtime::scene(), items, false))
        statement += ' ' + QString::fromStdString(text);
    return statement;
}

} // namespace app::viewport
