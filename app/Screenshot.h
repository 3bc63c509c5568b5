// Screenshot: a picture of the main window with every other visible top-level window of the
// host (the Vorel window, dialogs) drawn over it where it stands on the screen, as a user
// would see them. The picture covers all of them; what none covers is left dark grey.
//
// Works on every Qt platform, the off-screen one included (each window draws itself). Saving
// reports a failure (an unwritable path) as a status with a message naming the file.
#pragma once

#include "HStatus.h"

#include <QImage>
#include <QString>

class QWidget;

namespace app {

QImage takeScreenshot(QWidget& mainWindow);
HStatus saveScreenshot(QWidget& mainWindow, const QString& path);

} // namespace app
