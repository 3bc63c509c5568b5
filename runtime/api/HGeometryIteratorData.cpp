#include "api/HGeometryIteratorData.h"

#include "api/HApiAccess.h"
#include "api/StatusReport.h"
#include "scene/MeshData.h"
#include "scene/SkinBinding.h"

HGeometryIteratorData::HGeometryIteratorData(const HObject& node, const HObject& component,
                                             HStatus* status) {
    runtime::NodePtr live = HApiAccess::node(node);
    mesh = live ? runtime::meshShapeOf(*live) : nullptr;
    std::shared_ptr<runtime::ComponentData> elements =
        HApiAccess::as<runtime::ComponentData>(component);
    HStatus result;
    if (!mesh)
        result = runtime::invalidParameter("The object has no mesh geometry.");
    else if (!component.isNull() && (!elements || elements->apiType() != HFn::kMeshVertComponent))
        result = runtime::invalidParameter("The component is not a vertex component.");
    if (!result) {
        mesh = nullptr;
        runtime::report(status, result);
        return;
    }
    vertexCount = mesh->mesh()->vertexCount();
    if (elements) {
        all = false;
        for (int vertex : elements->elements())
            if (static_cast<unsigned>(vertex) < vertexCount)
                vertices.push_back(vertex);
    }
    runtime::report(status, HS::kSuccess);
}

int HGeometryIteratorData::index(HStatus* status) const {
    if (isDone()) {
        runtime::report(status, runtime::invalidParameter("The iterator is done."));
        return -1;
    }
    runtime::report(status, HS::kSuccess);
    return all ? static_cast<int>(position) : vertices[position];
}

HStatus HGeometryIteratorData::next() {
    if (isDone())
        return runtime::invalidParameter("The iterator is done.");
    ++position;
    return HS::kSuccess;
}

bool HGeometryIteratorData::isDone(HStatus* status) const {
    runtime::report(status, HS::kSuccess);
    return static_cast<int>(position) >= count();
}

int HGeometryIteratorData::count(HStatus* status) const {
    runtime::report(status, HS::kSuccess);
    return static_cast<int>(all ? vertexCount : vertices.size());
}

HStatus HGeometryIteratorData::reset() {
    position = 0;
    return HS::kSuccess;
}

HPoint HGeometryIteratorData::point(HStatus* status) const {
    int vertex = index(nullptr);
    if (vertex < 0 || !mesh || !mesh->isAlive() ||
        static_cast<unsigned>(vertex) >= mesh->mesh()->vertexCount()) {
        runtime::report(status, runtime::invalidParameter("The iterator has no current vertex."));
        return HPoint();
    }
    runtime::report(status, HS::kSuccess);
    return mesh->mesh()->point(static_cast<unsigned>(vertex));
}
