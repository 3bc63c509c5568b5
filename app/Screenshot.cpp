#include "Screenshot.h"

#include <QApplication>
#include <QPainter>
#include <QPixmap>
#include <QWidget>
#include <vector>

namespace app {

namespace {

// The main window first, then the others, in the order Qt lists them.
std::vector<QWidget*> visibleWindows(QWidget& mainWindow) {
    std::vector<QWidget*> windows{&mainWindow};
    for (QWidget* widget : QApplication::topLevelWidgets()) {
        bool popup = widget->windowType() == Qt::Popup || widget->windowType() == Qt::ToolTip;
        if (widget != &mainWindow && widget->isVisible() && !popup)
            windows.push_back(widget);
    }
    return windows;
}

} // namespace

QImage takeScreenshot(QWidget& mainWindow) {
    std::vector<QWidget*> windows = visibleWindows(mainWindow);
    QRect bounds;
    for (QWidget* window : windows)
        bounds = bounds.united(window->geometry());
    QImage picture(bounds.size(), QImage::Format_ARGB32_Premultiplied);
    picture.fill(QColor(0x30, 0x30, 0x30));
    QPainter painter(&picture);
    for (QWidget* window : windows)
        painter.drawPixmap(window->geometry().topLeft() - bounds.topLeft(), window->grab());
    return picture;
}

HStatus saveScreenshot(QWidget& mainWindow, const QString& path) {
    if (!takeScreenshot(mainWindow).save(path, "PNG"))
        return HStatus(HS::kFailure, ("Cannot write the picture " + path).toUtf8().constData());
    return HS::kSuccess;
}

} // namespace app
