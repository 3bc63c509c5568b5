// weightsDialog: the small dialog in which an entry of the Vorel window's "Weights" menu asks
// for what its host command needs: a weights file (and how to match its vertices), a mirror
// axis and direction, or the number of steps to quantize to. The dialog only gathers values;
// the window runs the command. Its widgets carry object names so that scripts and tests can
// fill them.
#pragma once

#include <QDialog>

class QComboBox;
class QDialogButtonBox;
class QFormLayout;
class QLineEdit;
class QSpinBox;

class weightsDialog : public QDialog {
    Q_OBJECT

public:
    enum class Kind { kExport, kImport, kMirror, kQuantize };

    weightsDialog(Kind kind, QWidget* parent = nullptr);

    // The skinWeights flags of the values chosen, e.g. -import "body.json" -method position.
    QString commandFlags() const;

private:
    void addFileRow(QFormLayout* form);
    void browse();
    QComboBox* addChoice(QFormLayout* form, const QString& label, const char* name,
                         const QStringList& items);

    Kind kind;
    QLineEdit* fileEdit = nullptr;
    QComboBox* methodBox = nullptr;
    QComboBox* axisBox = nullptr;
    QComboBox* directionBox = nullptr;
    QSpinBox* stepsBox = nullptr;
    QDialogButtonBox* buttons = nullptr;
};
