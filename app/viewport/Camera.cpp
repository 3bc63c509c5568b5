#include "Camera.h"

#include <QtMath>
#include <algorithm>
#include <cmath>

namespace app::viewport {

namespace {

constexpr float kDegreesPerPixel = 0.4f;
constexpr float kDollyPerPixel = 0.005f;
constexpr float kZoomPerStep = 0.85f;
constexpr float kMaxPitch = 89.0f;
constexpr float kMinDistance = 1e-4f;

} // namespace

void Bounds::add(const QVector3D& point) {
    if (empty) {
        min = max = point;
        empty = false;
        return;
    }
    min = QVector3D(std::min(min.x(), point.x()), std::min(min.y(), point.y()),
                    std::min(min.z(), point.z()));
    max = QVector3D(std::max(max.x(), point.x()), std::max(max.y(), point.y()),
                    std::max(max.z(), point.z()));
}

Camera::Camera() {
    reset();
}

void Camera::reset() {
    m_target = QVector3D(0, 0, 0);
    m_yaw = 30.0f;
    m_pitch = 20.0f;
    m_distance = 8.0f;
}

void Camera::setOrbit(const QVector3D& target, float yaw, float pitch, float distance) {
    m_target = target;
    m_yaw = yaw;
    m_pitch = std::clamp(pitch, -kMaxPitch, kMaxPitch);
    m_distance = std::max(distance, kMinDistance);
}

void Camera::setViewportSize(const QSize& size) {
    m_size = QSize(std::max(size.width(), 1), std::max(size.height(), 1));
}

QVector3D Camera::forward() const {
    float yaw = qDegreesToRadians(m_yaw);
    float pitch = qDegreesToRadians(m_pitch);
    return -QVector3D(std::cos(pitch) * std::sin(yaw), std::sin(pitch),
                      std::cos(pitch) * std::cos(yaw));
}

QVector3D Camera::eye() const {
    return m_target - forward() * m_distance;
}

QMatrix4x4 Camera::view() const {
    QMatrix4x4 view;
    view.lookAt(eye(), m_target, QVector3D(0, 1, 0));
    return view;
}

QMatrix4x4 Camera::projection() const {
    QMatrix4x4 projection;
    // Near and far follow the distance, so that close-ups and whole scenes both keep depth
    // precision.
    float nearPlane = std::max(m_distance * 0.01f, kMinDistance * 0.1f);
    projection.perspective(m_fieldOfView, float(m_size.width()) / float(m_size.height()), nearPlane,
                           m_distance * 100.0f);
    return projection;
}

bool Camera::project(const QVector3D& world, QPointF& pixel, float* depth) const {
    QVector4D clip = viewProjection() * QVector4D(world, 1.0f);
    if (clip.w() <= 0.0f)
        return false;
    QVector3D ndc = clip.toVector3DAffine();
    pixel =
        QPointF((ndc.x() * 0.5 + 0.5) * m_size.width(), (0.5 - ndc.y() * 0.5) * m_size.height());
    if (depth)
        *depth = ndc.z() * 0.5f + 0.5f;
    return true;
}

void Camera::orbit(const QPointF& delta) {
    m_yaw = std::fmod(m_yaw - float(delta.x()) * kDegreesPerPixel, 360.0f);
    m_pitch = std::clamp(m_pitch + float(delta.y()) * kDegreesPerPixel, -kMaxPitch, kMaxPitch);
}

float Camera::worldUnitsPerPixel() const {
    return 2.0f * m_distance * std::tan(qDegreesToRadians(m_fieldOfView) * 0.5f) /
           float(m_size.height());
}

void Camera::pan(const QPointF& delta) {
    QVector3D right = QVector3D::crossProduct(forward(), QVector3D(0, 1, 0)).normalized();
    QVector3D up = QVector3D::crossProduct(right, forward());
    float scale = worldUnitsPerPixel();
    // The scene follows the mouse.
    m_target += (-right * float(delta.x()) + up * float(delta.y())) * scale;
}

void Camera::dolly(const QPointF& delta) {
    // Dragging right or up moves closer.
    m_distance = std::max(m_distance * std::exp(-float(delta.x() - delta.y()) * kDollyPerPixel),
                          kMinDistance);
}

void Camera::zoom(double steps) {
    m_distance = std::max(m_distance * std::pow(kZoomPerStep, float(steps)), kMinDistance);
}

void Camera::frame(const Bounds& box) {
    if (box.empty)
        return;
    m_target = box.centre();
    float radius = std::max(box.radius(), 0.05f);
    float halfAngle = qDegreesToRadians(m_fieldOfView) * 0.5f;
    float aspect = float(m_size.width()) / float(m_size.height());
    // The narrower of the two angles decides.
    float fitAngle = aspect < 1.0f ? std::atan(std::tan(halfAngle) * aspect) : halfAngle;
    m_distance = radius / std::sin(fitAngle) * 1.1f;
}

} // namespace app::viewport
