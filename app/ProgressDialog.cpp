#include "ProgressDialog.h"

#include "HQtUtil.h"
#include "core/HostContext.h"

#include <QCoreApplication>
#include <QProgressDialog>

namespace app {

ProgressDialog::ProgressDialog(QWidget* parent) : m_parent(parent) {
    runtime::host().get<runtime::ProgressMonitor>().setDisplay(this);
}

ProgressDialog::~ProgressDialog() {
    runtime::host().get<runtime::ProgressMonitor>().setDisplay(nullptr);
    delete m_dialog.data();
}

void ProgressDialog::begin(const HString& title) {
    delete m_dialog.data();
    m_title = HQtUtil::toQString(title);
    m_dialog = new QProgressDialog(m_title, "Cancel", 0, kSteps, m_parent);
    m_dialog->setObjectName("progressDialog");
    m_dialog->setWindowTitle(m_title);
    m_dialog->setWindowModality(Qt::WindowModal);
    m_dialog->setMinimumDuration(kShowDelayMs);
    m_dialog->setAutoClose(false);
    m_dialog->setAutoReset(false);
    m_dialog->setValue(0);
}

bool ProgressDialog::update(double fraction, const HString& stage) {
    if (!m_dialog)
        return true;
    QString text = HQtUtil::toQString(stage);
    m_dialog->setLabelText(text.isEmpty() ? m_title : m_title + "\n" + text);
    // A modal dialog handles events in setValue; a same value does not, so do it here too.
    int value = static_cast<int>(fraction * kSteps);
    if (value == m_dialog->value())
        QCoreApplication::processEvents();
    else
        m_dialog->setValue(value);
    return !m_dialog->wasCanceled();
}

void ProgressDialog::end() {
    delete m_dialog.data();
}

} // namespace app
