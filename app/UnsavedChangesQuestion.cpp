#include "UnsavedChangesQuestion.h"

#include <QMessageBox>
#include <QPushButton>

namespace app {

const char* const kUnsavedChangesObjectName = "unsavedChangesQuestion";

UnsavedChangesAnswer askAboutUnsavedChanges(QWidget* parent, const QString& sceneName) {
    QMessageBox box(parent);
    box.setObjectName(kUnsavedChangesObjectName);
    box.setIcon(QMessageBox::Warning);
    box.setWindowTitle("Unsaved changes");
    box.setText("The scene has unsaved changes.");
    box.setInformativeText(QString("Save the changes to %1 first?").arg(sceneName));
    box.setStandardButtons(QMessageBox::Save | QMessageBox::Discard | QMessageBox::Cancel);
    box.button(QMessageBox::Discard)->setText("Don't Save");
    box.setDefaultButton(QMessageBox::Save);
    box.setEscapeButton(QMessageBox::Cancel);
    switch (box.exec()) {
    case QMessageBox::Save:
        return UnsavedChangesAnswer::kSave;
    case QMessageBox::Discard:
        return UnsavedChangesAnswer::kDiscard;
    default:
        return UnsavedChangesAnswer::kCancel;
    }
}

} // namespace app
