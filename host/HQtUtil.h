// HQtUtil: the bridge between the host and Qt: the host's main window, and conversions
// between HString and QString (both UTF-8 clean).
//
// mainWindow() is null only before HLibrary::initialize() or after cleanup(). The host owns
// the window; widgets a plug-in parents to it must be deleted by the plug-in before it is
// unloaded.
#pragma once

#include "HString.h"

#include <QString>

class QMainWindow;

class HQtUtil {
public:
    static QMainWindow* mainWindow();
    static HString toHString(const QString& text);
    static QString toQString(const HString& text);
};
