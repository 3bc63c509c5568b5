// qtWarnings: QtWarningCatcher collects every Qt warning and critical message (the model
// tester's reports come as warnings) while it lives, for a test to fail on. Fatal messages
// still abort. Only one may live at a time.
#pragma once

#include <QString>
#include <QtGlobal>
#include <string>
#include <vector>

namespace vorel {

class QtWarningCatcher {
public:
    QtWarningCatcher() : previous(qInstallMessageHandler(&collect)) { caught().clear(); }
    ~QtWarningCatcher() { qInstallMessageHandler(previous); }
    QtWarningCatcher(const QtWarningCatcher&) = delete;
    QtWarningCatcher& operator=(const QtWarningCatcher&) = delete;

    // The messages since the last call.
    std::vector<std::string> take() {
        std::vector<std::string> messages;
        messages.swap(caught());
        return messages;
    }

private:
    static std::vector<std::string>& caught() {
        static std::vector<std::string> messages;
        return messages;
    }
    static void collect(QtMsgType type, const QMessageLogContext&, const QString& text) {
        // The offscreen platform cannot raise windows or grab the keyboard for popups; it says
        // so for every popup, which is no fault of the window.
        if (text.startsWith("This plugin does not support"))
            return;
        if (type != QtDebugMsg && type != QtInfoMsg)
            caught().push_back(text.toStdString());
    }

    QtMessageHandler previous;
};

} // namespace vorel
