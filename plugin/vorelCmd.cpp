// The command's creation, syntax and dispatch. Running without flags opens the window.
#include "vorelCmd.h"

#include "HArgParser.h"
#include "HGlobal.h"
#include "HQtUtil.h"
#include "editorPointers.h"
#include "pastedValuesCmd.h"
#include "smoothingCmd.h"
#include "vorelWindow.h"
#include "weightTableModel.h"
#include "windowEditCommands.h"

#include <QMainWindow>

namespace {

void openEditorWindow() {
    QMainWindow* mainWindow = HQtUtil::mainWindow();
    if (!editorWindow) {
        editorWindow = new vorelWindow(mainWindow);
        editorModel = editorWindow->model();
    }
    editorWindow->show();
}

} // namespace

HPxCommand* createCommand() {
    return new vorelCmd();
}

HSyntax createSyntax() {
    HSyntax syntax;
    syntax.addFlag("-nm", "-numMax");
    syntax.addFlag("-r", "-round");
    syntax.addFlag("-re", "-replace");
    syntax.addFlag("-sd", "-setData");
    syntax.addFlag("-ds", "-dragSlider");
    syntax.addFlag("-dsc", "-dragSliderColumn");
    // Both smoothing flags share "-sm"; the plug-in always runs them by their long names.
    syntax.addFlag("-sm", "-skinPaintSmooth");
    syntax.addFlag("-sm", "-smoothSkinWeights");
    syntax.addFlag("-pa", "-paste");
    syntax.enableQuery(false);
    syntax.enableEdit(false);
    return syntax;
}

vorelCmd::vorelCmd() = default;

vorelCmd::~vorelCmd() = default;

HStatus vorelCmd::doIt(const HArgList& args) {
    HStatus status;
    HArgParser parser(syntax(), args, &status);
    if (!status)
        return status;
    if (parser.numberOfFlagsUsed() == 0) {
        openEditorWindow();
        return HS::kSuccess;
    }
    if (!editorModel) {
        HGlobal::displayError("The Vorel window is not open. Run vorelCmd without flags first.");
        return HS::kFailure;
    }
    for (const char* flag : {"numMax", "round", "replace", "setData", "dragSlider",
                             "dragSliderColumn", "skinPaintSmooth", "smoothSkinWeights", "paste"})
        if (parser.isFlagSet(flag) && prepareEdit(flag))
            return redoIt();
    return HS::kSuccess;
}

namespace {

// The window's class for a kind of edit, made as vorelCmd's own edit.
template <typename Command> std::unique_ptr<Command> windowClass() {
    return std::unique_ptr<Command>(new Command(editorWindow, editorModel));
}

} // namespace

bool vorelCmd::prepareEdit(const char* name) {
    weightTableModel& model = *editorModel;
    const QByteArray flag(name);
    std::unique_ptr<editCommand> made;
    bool prepared = false;
    if (flag == "numMax") {
        auto limit = windowClass<applyButtonCmd>();
        prepared = limit->prepare(model.getPendingLimit(), model);
        made = std::move(limit);
    } else if (flag == "round") {
        auto round = windowClass<roundButtonCmd>();
        prepared = round->prepareRound(model);
        made = std::move(round);
    } else if (flag == "replace") {
        auto flood = windowClass<replaceButtonCmd>();
        prepared = flood->prepareFlood(model);
        made = std::move(flood);
    } else if (flag == "setData" || flag == "dragSlider") {
        std::unique_ptr<cellValuesCmd> cells;
        if (flag == "setData")
            cells = windowClass<setCellDataCmd>();
        else
            cells = windowClass<dragSliderCmd>();
        prepared =
            cells->prepare(model.getPendingCellValues(), model, cellValuesCmd::Rules{true, true});
        made = std::move(cells);
    } else if (flag == "dragSliderColumn") {
        auto drag = windowClass<dragSliderColCmd>();
        prepared = drag->prepareColumnDrag(model);
        made = std::move(drag);
    } else if (flag == "skinPaintSmooth") {
        auto paint = windowClass<smoothCmd>();
        prepared = paint->preparePaint(model);
        made = std::move(paint);
    } else if (flag == "smoothSkinWeights") {
        std::unique_ptr<smoothingCmd> smoothing(new smoothingCmd);
        prepared = smoothing->prepareWeightSmoothing(model);
        made = std::move(smoothing);
    } else if (flag == "paste") {
        std::unique_ptr<pastedValuesCmd> paste(new pastedValuesCmd);
        prepared = paste->prepare(model.getPendingPaste(), model);
        made = std::move(paste);
    }
    if (prepared)
        edit = std::move(made);
    return prepared;
}

void vorelCmd::refreshTable() {
    if (!editorModel)
        return;
    editorModel->rebuildWeightRows();
    editorModel->setUpColumn();
}

HStatus vorelCmd::redoIt() {
    if (edit)
        return edit->redoIt();
    const bool savedAutoUpdate = weightTableModel::getAutoUpdate();
    if (editorModel)
        editorModel->setAutoUpdate(false);
    refreshTable();
    if (editorModel)
        editorModel->setAutoUpdate(savedAutoUpdate);
    return HS::kSuccess;
}

HStatus vorelCmd::undoIt() {
    if (edit)
        return edit->undoIt();
    refreshTable();
    return HS::kFailure;
}

bool vorelCmd::isUndoable() const {
    return true;
}
