// Viewport: the 3D view in the middle of the application's window (a QOpenGLWidget): the
// scene's meshes skinned and shaded, the heat map of the current influence with its legend,
// the joints, the grid, and the selection. The mouse moves the camera (Alt with the left,
// middle or right button: orbit, pan, dolly; the wheel zooms; F frames the selection or
// everything) and picks vertices (a click or a dragged rectangle; Shift adds, Ctrl removes),
// which runs `select` through the CommandRunner, echoed and undoable as if typed.
//
// It redraws by itself after every change it hears of (SceneView) and at once on `refresh`.
// It needs OpenGL 3.3 core: createViewportArea() only makes one where the display offers it.
// Destroy it before the host stops; the runner must outlive it.
#pragma once

#include "Camera.h"
#include "Picking.h"
#include "Renderer.h"
#include "SceneView.h"

#include <QOpenGLFunctions_3_3_Core>
#include <QOpenGLWidget>
#include <QPoint>

class QCheckBox;

namespace app {

class CommandRunner;

namespace viewport {

class Viewport : public QOpenGLWidget {
    Q_OBJECT

public:
    explicit Viewport(CommandRunner& runner, QWidget* parent = nullptr);
    ~Viewport() override;

    // The toggle for vertices whose weights do not sum to one.
    bool showUnnormalised() const;
    void setShowUnnormalised(bool on);

    // What the mouse does, for scripts of the mouse (tests) and the keys.
    void pickAt(const QPointF& pixel, SelectMode mode);
    void pickInside(const QRectF& rectangle, SelectMode mode);
    void frameSelection();

    Camera& camera() { return m_camera; }
    SceneView& sceneView() { return m_view; }
    const UploadCounts& uploads() const { return m_renderer.uploads(); }
    unsigned long long framesDrawn() const { return m_frames; }
    // Empty while the renderer works; otherwise why it does not draw.
    QString renderError() const;

protected:
    void initializeGL() override;
    void resizeGL(int width, int height) override;
    void paintGL() override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    enum class Drag { kNone, kOrbit, kPan, kDolly, kSelect };

    // Draws the next frame and shows it before returning, as `refresh` asks.
    void drawNow();
    void releaseGl();
    void paintOverlay();
    std::vector<const MeshDrawData*> pickable();
    void runSelect(const QString& statement);

    CommandRunner& m_runner;
    SceneView m_view;
    Camera m_camera;
    Renderer m_renderer;
    QOpenGLFunctions_3_3_Core m_gl;
    QCheckBox* m_unnormalisedToggle;
    QMetaObject::Connection m_contextGoing;
    unsigned long long m_refreshSubscription = 0;
    unsigned long long m_frames = 0;
    bool m_framed = false;
    Drag m_drag = Drag::kNone;
    QPoint m_pressPosition;
    QPoint m_lastPosition;
    Qt::KeyboardModifiers m_pressModifiers;
};

} // namespace viewport
} // namespace app
