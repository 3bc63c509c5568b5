// ViewportArea: the widget in the middle of the main window, where the scene is shown: the 3D
// viewport when the display offers OpenGL 3.3 (a real display, or a virtual X server), and
// otherwise a plain panel saying why there is no picture (off screen without any display).
#pragma once

class QWidget;

namespace app {

class CommandRunner;

// The caller (the main window) owns the widget; the runner (which picking runs `select`
// through) must outlive it.
QWidget* createViewportArea(CommandRunner& runner, QWidget* parent = nullptr);

// Whether OpenGL 3.3 core can be used here; asked once.
bool openGlAvailable();

} // namespace app
