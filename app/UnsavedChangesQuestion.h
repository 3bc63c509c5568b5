// UnsavedChangesQuestion: asks the user what to do with a modified scene before it is closed,
// replaced or the application quits: Save, Don't Save or Cancel.
//
// A modal message box over the given window; closing it with Escape or the title bar's button
// counts as Cancel. Its object name is kUnsavedChangesObjectName, so that it can be found while it
// is open.
#pragma once

#include <QString>

class QWidget;

namespace app {

enum class UnsavedChangesAnswer { kSave, kDiscard, kCancel };

extern const char* const kUnsavedChangesObjectName;

UnsavedChangesAnswer askAboutUnsavedChanges(QWidget* parent, const QString& sceneName);

} // namespace app
