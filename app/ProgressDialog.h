// ProgressDialog: shows the host's long operations (ProgressMonitor) to the user: a modal
// progress dialog over the main window that appears only when the work takes longer than
// kShowDelayMs, says what is being done, and has a Cancel button.
//
// The work runs on the main thread, so each update lets Qt handle events (that is how the
// dialog paints and hears Cancel). The dialog is created when an operation begins and
// deleted when it ends; the object installs itself in the monitor while it lives.
#pragma once

#include "core/ProgressMonitor.h"

#include <QPointer>
#include <QProgressDialog>
#include <QString>

class QWidget;

namespace app {

class ProgressDialog : public runtime::ProgressDisplay {
public:
    static constexpr int kShowDelayMs = 500;
    static constexpr int kSteps = 1000;

    explicit ProgressDialog(QWidget* parent);
    ~ProgressDialog() override;
    ProgressDialog(const ProgressDialog&) = delete;
    ProgressDialog& operator=(const ProgressDialog&) = delete;

    void begin(const HString& title) override;
    bool update(double fraction, const HString& stage) override;
    void end() override;

    // The dialog of the operation under way; null when none is.
    QProgressDialog* dialog() const { return m_dialog; }

private:
    QWidget* m_parent;
    QPointer<QProgressDialog> m_dialog;
    QString m_title;
};

} // namespace app
