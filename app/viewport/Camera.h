// Camera: the viewport's view of the scene, orbiting a target point: yaw and pitch around it,
// a distance from it and a vertical field of view, Y up. It turns mouse movement in pixels
// into orbit, pan and dolly, frames a box, and projects world points to widget pixels (y
// down) for drawing and picking. Plain maths on Qt's matrix types: it never touches OpenGL.
#pragma once

#include <QMatrix4x4>
#include <QPointF>
#include <QSize>
#include <QVector3D>

namespace app::viewport {

// An axis-aligned box in world space; empty until a point is added.
struct Bounds {
    QVector3D min, max;
    bool empty = true;

    void add(const QVector3D& point);
    QVector3D centre() const { return (min + max) * 0.5f; }
    float radius() const { return empty ? 0.0f : (max - min).length() * 0.5f; }
};

class Camera {
public:
    Camera();

    void setViewportSize(const QSize& size);
    QSize viewportSize() const { return m_size; }

    QMatrix4x4 view() const;
    QMatrix4x4 projection() const;
    QMatrix4x4 viewProjection() const { return projection() * view(); }
    QVector3D eye() const;
    // The unit direction the camera looks in.
    QVector3D forward() const;
    QVector3D target() const { return m_target; }
    float distance() const { return m_distance; }

    // Widget pixels of a world point (y down) and its depth (0 near, 1 far); false for a point
    // behind the camera.
    bool project(const QVector3D& world, QPointF& pixel, float* depth = nullptr) const;

    // Mouse drags, in pixels moved since the last event.
    void orbit(const QPointF& delta);
    void pan(const QPointF& delta);
    void dolly(const QPointF& delta);
    // Wheel steps: positive moves closer.
    void zoom(double steps);
    // Looks at the box from the current direction, close enough that it fills the view.
    void frame(const Bounds& box);
    // A three-quarter view from the front, above, of a unit-sized scene at the origin.
    void reset();
    // Looks at target from yaw and pitch (degrees, as orbit() turns them) at distance.
    void setOrbit(const QVector3D& target, float yaw, float pitch, float distance);

private:
    float worldUnitsPerPixel() const;

    QSize m_size{640, 480};
    QVector3D m_target;
    float m_yaw = 0.0f;   // degrees around Y; 0 looks down -Z from +Z
    float m_pitch = 0.0f; // degrees above the target's horizon
    float m_distance = 1.0f;
    float m_fieldOfView = 40.0f; // vertical, degrees
};

} // namespace app::viewport
