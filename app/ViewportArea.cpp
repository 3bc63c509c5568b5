#include "ViewportArea.h"

#include <QLabel>

namespace app {

QWidget* createViewportArea(QWidget* parent) {
    QLabel* placeholder = new QLabel("Viewport", parent);
    placeholder->setObjectName("viewport");
    placeholder->setAlignment(Qt::AlignCenter);
    placeholder->setMinimumSize(320, 240);
    placeholder->setAutoFillBackground(true);
    QPalette colours = placeholder->palette();
    colours.setColor(QPalette::Window, QColor(0x44, 0x47, 0x4c));
    colours.setColor(QPalette::WindowText, QColor(0x8a, 0x8d, 0x93));
    placeholder->setPalette(colours);
    return placeholder;
}

} // namespace app
