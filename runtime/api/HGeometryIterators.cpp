// HItMeshVertex and HItGeometry: two names for the same walk over a mesh's vertices; both
// hand every operation to HGeometryIteratorData.
#include "HItGeometry.h"
#include "HItMeshVertex.h"
#include "api/HGeometryIteratorData.h"

HItMeshVertex::HItMeshVertex(const HDagPath& path, const HObject& component, HStatus* status)
    : m_data(std::make_unique<HGeometryIteratorData>(path.node(), component, status)) {}
HItMeshVertex::HItMeshVertex(const HObject& meshNode, HStatus* status)
    : m_data(std::make_unique<HGeometryIteratorData>(meshNode, HObject(), status)) {}
HItMeshVertex::~HItMeshVertex() = default;
int HItMeshVertex::index(HStatus* status) const {
    return m_data->index(status);
}
HPoint HItMeshVertex::position(HStatus* status) const {
    return m_data->point(status);
}
HStatus HItMeshVertex::next() {
    return m_data->next();
}
bool HItMeshVertex::isDone(HStatus* status) const {
    return m_data->isDone(status);
}
int HItMeshVertex::count(HStatus* status) const {
    return m_data->count(status);
}
HStatus HItMeshVertex::reset() {
    return m_data->reset();
}

HItGeometry::HItGeometry(const HDagPath& path, const HObject& component, HStatus* status)
    : m_data(std::make_unique<HGeometryIteratorData>(path.node(), component, status)) {}
HItGeometry::HItGeometry(const HObject& shapeNode, HStatus* status)
    : m_data(std::make_unique<HGeometryIteratorData>(shapeNode, HObject(), status)) {}
HItGeometry::~HItGeometry() = default;
int HItGeometry::index(HStatus* status) const {
    return m_data->index(status);
}
HPoint HItGeometry::position(HStatus* status) const {
    return m_data->point(status);
}
HStatus HItGeometry::next() {
    return m_data->next();
}
bool HItGeometry::isDone(HStatus* status) const {
    return m_data->isDone(status);
}
int HItGeometry::count(HStatus* status) const {
    return m_data->count(status);
}
HStatus HItGeometry::reset() {
    return m_data->reset();
}
