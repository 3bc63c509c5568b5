#include "weightsDialog.h"

#include <QComboBox>
#include <QDialogButtonBox>
#include <QFileDialog>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QPushButton>
#include <QSpinBox>

namespace {

const char* titleOf(weightsDialog::Kind kind) {
    switch (kind) {
    case weightsDialog::Kind::kExport:
        return "Export Weights";
    case weightsDialog::Kind::kImport:
        return "Import Weights";
    case weightsDialog::Kind::kMirror:
        return "Mirror Weights";
    case weightsDialog::Kind::kQuantize:
        return "Quantize Weights";
    }
    return "";
}

// A path as a string of the command language: in double quotes, with its backslashes, quotes
// and line breaks escaped.
QString quoted(QString text) {
    text.replace('\\', "\\\\").replace('"', "\\\"").replace('\n', "\\n");
    return '"' + text + '"';
}

} // namespace

weightsDialog::weightsDialog(Kind kind, QWidget* parent) : QDialog(parent), kind(kind) {
    setWindowTitle(titleOf(kind));
    QFormLayout* form = new QFormLayout(this);
    switch (kind) {
    case Kind::kExport:
        addFileRow(form);
        break;
    case Kind::kImport:
        addFileRow(form);
        methodBox =
            addChoice(form, "Match vertices by:", "weightsMethodBox", {"index", "position"});
        break;
    case Kind::kMirror:
        axisBox = addChoice(form, "Across the plane of:", "weightsAxisBox", {"x", "y", "z"});
        directionBox =
            addChoice(form, "From the side:", "weightsDirectionBox", {"positive", "negative"});
        break;
    case Kind::kQuantize:
        stepsBox = new QSpinBox();
        stepsBox->setObjectName("weightsStepsBox");
        stepsBox->setRange(1, 65535);
        stepsBox->setValue(255);
        form->addRow("Steps per weight (255: 8 bits, 65535: 16 bits):", stepsBox);
        break;
    }
    buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel);
    form->addRow(buttons);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    if (fileEdit) {
        // Without a file there is nothing to run.
        auto needFile = [this] {
            buttons->button(QDialogButtonBox::Ok)
                ->setEnabled(!fileEdit->text().trimmed().isEmpty());
        };
        connect(fileEdit, &QLineEdit::textChanged, this, needFile);
        needFile();
    }
}

void weightsDialog::addFileRow(QFormLayout* form) {
    fileEdit = new QLineEdit();
    fileEdit->setObjectName("weightsFileEdit");
    fileEdit->setMinimumWidth(fileEdit->fontMetrics().horizontalAdvance(QString(40, 'x')));
    QPushButton* browseButton = new QPushButton("Browse...");
    connect(browseButton, &QPushButton::clicked, this, &weightsDialog::browse);
    QHBoxLayout* row = new QHBoxLayout();
    row->addWidget(fileEdit);
    row->addWidget(browseButton);
    form->addRow("Weights file:", row);
}

void weightsDialog::browse() {
    const QString filter = "Weights files (*.json);;All files (*)";
    const QString path =
        kind == Kind::kExport
            ? QFileDialog::getSaveFileName(this, windowTitle(), fileEdit->text(), filter)
            : QFileDialog::getOpenFileName(this, windowTitle(), fileEdit->text(), filter);
    if (!path.isEmpty())
        fileEdit->setText(path);
}

QComboBox* weightsDialog::addChoice(QFormLayout* form, const QString& label, const char* name,
                                    const QStringList& items) {
    QComboBox* box = new QComboBox();
    box->setObjectName(name);
    box->addItems(items);
    form->addRow(label, box);
    return box;
}

QString weightsDialog::commandFlags() const {
    switch (kind) {
    case Kind::kExport:
        return "-export " + quoted(fileEdit->text().trimmed());
    case Kind::kImport:
        return "-import " + quoted(fileEdit->text().trimmed()) + " -method " +
               methodBox->currentText();
    case Kind::kMirror:
        return "-mirror " + axisBox->currentText() + " -direction " + directionBox->currentText();
    case Kind::kQuantize:
        return "-quantize " + QString::number(stepsBox->value());
    }
    return QString();
}
