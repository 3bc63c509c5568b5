#include "Viewport.h"

#include "CommandRunner.h"
#include "Overlay.h"
#include "core/DisplayRefresh.h"

#include <QCheckBox>
#include <QCoreApplication>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QOpenGLContext>
#include <QPainter>
#include <QWheelEvent>

namespace app::viewport {

namespace {

// Further than this between press and release, a left drag selects a rectangle.
constexpr int kClickTolerance = 4;

SelectMode modeFor(Qt::KeyboardModifiers modifiers) {
    if (modifiers & Qt::ShiftModifier)
        return SelectMode::kAdd;
    if (modifiers & Qt::ControlModifier)
        return SelectMode::kRemove;
    return SelectMode::kReplace;
}

} // namespace

Viewport::Viewport(CommandRunner& runner, QWidget* parent)
    : QOpenGLWidget(parent), m_runner(runner), m_view([this] { update(); }) {
    setObjectName("viewport");
    setMinimumSize(320, 240);
    setFocusPolicy(Qt::StrongFocus);
    QSurfaceFormat format;
    format.setVersion(3, 3);
    format.setProfile(QSurfaceFormat::CoreProfile);
    format.setDepthBufferSize(24);
    setFormat(format);

    m_unnormalisedToggle = new QCheckBox(tr("Show weights that do not sum to 1"), this);
    m_unnormalisedToggle->setObjectName("showUnnormalised");
    m_unnormalisedToggle->setStyleSheet("QCheckBox { color: #e8e8e8; }");
    m_unnormalisedToggle->move(8, 6);
    m_unnormalisedToggle->setFocusPolicy(Qt::NoFocus);
    connect(m_unnormalisedToggle, &QCheckBox::toggled, this, [this] { update(); });

    m_refreshSubscription =
        runtime::host().get<runtime::DisplayRefresh>().subscribe([this] { drawNow(); });
}

Viewport::~Viewport() {
    runtime::host().get<runtime::DisplayRefresh>().unsubscribe(m_refreshSubscription);
    releaseGl();
    // The base class destroys the context, after this object's part is gone.
    QObject::disconnect(m_contextGoing);
    // Destroying the context may deliver pending paint events (off screen it flushes the
    // window system's queue); the widget must not draw while it goes.
    setUpdatesEnabled(false);
}

void Viewport::drawNow() {
    // repaint() leaves the frame to the event loop when the window was drawn less than a
    // screen refresh ago (Qt spaces out the compositions of a window with OpenGL in it), so the
    // request it posts is delivered here instead.
    update();
    QCoreApplication::sendPostedEvents(window(), QEvent::UpdateRequest);
}

bool Viewport::showUnnormalised() const {
    return m_unnormalisedToggle->isChecked();
}

void Viewport::setShowUnnormalised(bool on) {
    m_unnormalisedToggle->setChecked(on);
}

QString Viewport::renderError() const {
    return m_renderer.ready() ? QString() : m_renderer.error();
}

void Viewport::initializeGL() {
    // The context goes away with the widget's window; the GL objects go first.
    QObject::disconnect(m_contextGoing);
    m_contextGoing =
        connect(context(), &QOpenGLContext::aboutToBeDestroyed, this, &Viewport::releaseGl);
    if (m_gl.initializeOpenGLFunctions())
        m_renderer.initialize(m_gl);
}

void Viewport::releaseGl() {
    if (!m_renderer.ready() || !context())
        return;
    makeCurrent();
    m_renderer.release();
    doneCurrent();
}

void Viewport::resizeGL(int width, int height) {
    m_camera.setViewportSize(QSize(width, height) * devicePixelRatioF());
}

void Viewport::paintGL() {
    m_view.prepare();
    if (m_view.takeSceneReplaced())
        m_framed = false;
    if (!m_framed && !m_view.meshes().empty()) {
        m_camera.frame(m_view.sceneBounds());
        m_framed = true;
    }
    m_gl.glDisable(GL_SCISSOR_TEST);
    m_gl.glDepthMask(GL_TRUE);
    m_renderer.render(m_view, m_camera, RenderOptions{showUnnormalised()});
    paintOverlay();
    ++m_frames;
}

void Viewport::paintOverlay() {
    QPainter painter(this);
    const runtime::NodePtr& influence = m_view.heatInfluence();
    paintLegend(painter, rect(), influence ? QString::fromStdString(influence->name()) : QString(),
                showUnnormalised());
    if (m_drag == Drag::kSelect)
        paintSelectionRectangle(painter, QRect(m_pressPosition, m_lastPosition));
}

std::vector<const MeshDrawData*> Viewport::pickable() {
    m_view.prepare();
    std::vector<const MeshDrawData*> meshes;
    for (const std::unique_ptr<MeshDrawData>& mesh : m_view.meshes())
        meshes.push_back(mesh.get());
    return pickableMeshes(meshes);
}

void Viewport::runSelect(const QString& statement) {
    if (!statement.isEmpty())
        m_runner.run(statement);
}

void Viewport::pickAt(const QPointF& pixel, SelectMode mode) {
    std::vector<PickedVertices> picked;
    if (std::optional<PickedVertices> nearest = pickNearest(m_camera, pickable(), pixel))
        picked.push_back(*nearest);
    runSelect(selectStatement(mode, picked));
}

void Viewport::pickInside(const QRectF& rectangle, SelectMode mode) {
    runSelect(selectStatement(mode, app::viewport::pickInside(m_camera, pickable(), rectangle)));
}

void Viewport::frameSelection() {
    m_view.prepare();
    Bounds bounds = m_view.selectionBounds();
    m_camera.frame(bounds.empty ? m_view.sceneBounds() : bounds);
    update();
}

void Viewport::mousePressEvent(QMouseEvent* event) {
    m_pressPosition = m_lastPosition = event->pos();
    m_pressModifiers = event->modifiers();
    bool alt = event->modifiers() & Qt::AltModifier;
    if (alt && event->button() == Qt::LeftButton)
        m_drag = Drag::kOrbit;
    else if (alt && event->button() == Qt::MiddleButton)
        m_drag = Drag::kPan;
    else if (alt && event->button() == Qt::RightButton)
        m_drag = Drag::kDolly;
    else if (event->button() == Qt::LeftButton)
        m_drag = Drag::kSelect;
}

void Viewport::mouseMoveEvent(QMouseEvent* event) {
    QPointF delta = (event->pos() - m_lastPosition) * devicePixelRatioF();
    m_lastPosition = event->pos();
    switch (m_drag) {
    case Drag::kOrbit:
        m_camera.orbit(delta);
        break;
    case Drag::kPan:
        m_camera.pan(delta);
        break;
    case Drag::kDolly:
        m_camera.dolly(delta);
        break;
    case Drag::kSelect:
    case Drag::kNone:
        break;
    }
    if (m_drag != Drag::kNone)
        update();
}

void Viewport::mouseReleaseEvent(QMouseEvent* event) {
    Drag drag = m_drag;
    m_drag = Drag::kNone;
    if (drag != Drag::kSelect || event->button() != Qt::LeftButton)
        return;
    SelectMode mode = modeFor(m_pressModifiers);
    qreal scale = devicePixelRatioF();
    if ((event->pos() - m_pressPosition).manhattanLength() <= kClickTolerance)
        pickAt(QPointF(event->pos()) * scale, mode);
    else
        pickInside(QRectF(QPointF(m_pressPosition) * scale, QPointF(event->pos()) * scale), mode);
    update();
}

void Viewport::wheelEvent(QWheelEvent* event) {
    m_camera.zoom(event->angleDelta().y() / 120.0);
    update();
}

void Viewport::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_F && !(event->modifiers() & ~Qt::KeypadModifier)) {
        frameSelection();
        return;
    }
    QOpenGLWidget::keyPressEvent(event);
}

} // namespace app::viewport
