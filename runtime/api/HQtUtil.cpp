#include "HQtUtil.h"

#include "core/HostContext.h"
#include "core/HostMainWindow.h"

QMainWindow* HQtUtil::mainWindow() {
    if (!runtime::hostRunning())
        return nullptr;
    return runtime::host().get<runtime::HostMainWindow>().window();
}

HString HQtUtil::toHString(const QString& text) {
    return HString(text.toUtf8().toStdString());
}

QString HQtUtil::toQString(const HString& text) {
    return QString::fromUtf8(text.asChar(), static_cast<int>(text.length()));
}
