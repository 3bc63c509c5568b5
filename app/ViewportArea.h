// ViewportArea: the widget in the middle of the main window, where the scene is shown. For now
// a placeholder; the 3D viewport replaces what createViewportArea() returns, and nothing else
// of the window needs to change.
#pragma once

class QWidget;

namespace app {

// The caller (the main window) owns the widget.
QWidget* createViewportArea(QWidget* parent = nullptr);

} // namespace app
