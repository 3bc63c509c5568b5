#include "ViewportArea.h"

#include "viewport/Viewport.h"

#include <QLabel>
#include <QOffscreenSurface>
#include <QOpenGLContext>

namespace app {

namespace {

bool probeOpenGl() {
    QSurfaceFormat format;
    format.setVersion(3, 3);
    format.setProfile(QSurfaceFormat::CoreProfile);
    QOpenGLContext context;
    context.setFormat(format);
    if (!context.create())
        return false;
    QOffscreenSurface surface;
    surface.setFormat(context.format());
    surface.create();
    if (!context.makeCurrent(&surface))
        return false;
    QSurfaceFormat got = context.format();
    bool enough = got.version() >= qMakePair(3, 3);
    context.doneCurrent();
    return enough;
}

QWidget* placeholder(QWidget* parent) {
    QLabel* label = new QLabel("No OpenGL 3.3 on this display: the viewport cannot draw.", parent);
    label->setObjectName("viewport");
    label->setAlignment(Qt::AlignCenter);
    label->setMinimumSize(320, 240);
    label->setAutoFillBackground(true);
    QPalette colours = label->palette();
    colours.setColor(QPalette::Window, QColor(0x44, 0x47, 0x4c));
    colours.setColor(QPalette::WindowText, QColor(0x8a, 0x8d, 0x93));
    label->setPalette(colours);
    return label;
}

} // namespace

bool openGlAvailable() {
    static const bool available = probeOpenGl();
    return available;
}

QWidget* createViewportArea(CommandRunner& runner, QWidget* parent) {
    if (!openGlAvailable())
        return placeholder(parent);
    return new viewport::Viewport(runner, parent);
}

} // namespace app
