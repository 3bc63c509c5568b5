// The window's "Weights" menu: the host's skinWeights command on the loaded meshes, or on the
// vertices of the selected rows, with undo on. Each entry that needs values asks for them in a
// weightsDialog; the entries that change weights read the table again from the scene.
#include "HGlobal.h"
#include "HQtUtil.h"
#include "vorelWindow.h"
#include "weightTableModel.h"
#include "weightTableView.h"
#include "weightsDialog.h"

#include <QItemSelectionModel>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>

void vorelWindow::createWeightsMenu() {
    weightsMenu = menuBar()->addMenu("Weights");
    auto addEntry = [this](const QString& text, auto run) {
        connect(weightsMenu->addAction(text), &QAction::triggered, this, run);
    };
    addEntry("Export Weights...",
             [this] { askAndRunWeightsCommand(weightsDialog::Kind::kExport); });
    addEntry("Import Weights...",
             [this] { askAndRunWeightsCommand(weightsDialog::Kind::kImport); });
    addEntry("Mirror Weights...",
             [this] { askAndRunWeightsCommand(weightsDialog::Kind::kMirror); });
    addEntry("Limit Influences", [this] { limitInfluences(); });
    addEntry("Quantize...", [this] { askAndRunWeightsCommand(weightsDialog::Kind::kQuantize); });
}

void vorelWindow::askAndRunWeightsCommand(weightsDialog::Kind kind) {
    weightsDialog dialog(kind, this);
    if (dialog.exec() != QDialog::Accepted)
        return;
    runWeightsCommand(dialog.commandFlags(), kind != weightsDialog::Kind::kExport);
}

void vorelWindow::limitInfluences() {
    int maximum = 0;
    if (!readMaxInfluenceBox(maximum))
        return;
    runWeightsCommand("-limit " + QString::number(maximum), true);
}

void vorelWindow::runWeightsCommand(const QString& flags, bool changesWeights) {
    const QString targets = tableModel->weightTargets(tableView->selectionModel()->selection());
    if (targets.isEmpty()) {
        HGlobal::displayError("There is no weight list displayed in the window.");
        return;
    }
    const QString command = "skinWeights " + flags + " " + targets;
    if (!HGlobal::executeCommand(HQtUtil::toHString(command), true, true) || !changesWeights)
        return;
    tableModel->rebuildWeightRows();
    // An import brings the locks stored in its file.
    tableModel->checkLockAttr();
}
