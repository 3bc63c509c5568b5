// The command's creation, syntax and dispatch. Running without flags opens the window.
#include "vorelCmd.h"

#include "HArgParser.h"
#include "HGlobal.h"
#include "HQtUtil.h"
#include "editorPointers.h"
#include "vorelWindow.h"
#include "weightTableModel.h"

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

vorelCmd::vorelCmd() : paintSmoothPending(false), weightSmoothPending(false) {}

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
    // The edits with a class of their own take what they need from the model's request; the
    // others work from a copy of the model's table (sharing its rows).
    const bool ownClassOnly = parser.numberOfFlagsUsed() == 1 &&
                              (parser.isFlagSet("setData") || parser.isFlagSet("dragSlider") ||
                               parser.isFlagSet("numMax") || parser.isFlagSet("round") ||
                               parser.isFlagSet("replace") || parser.isFlagSet("dragSliderColumn"));
    if (!ownClassOnly)
        copyModel();

    // The first flag whose edit can be prepared is performed; a flag whose preparation fails
    // (it said why) lets the next one be tried.
    const bool prepared =
        (parser.isFlagSet("numMax") && prepareLimitInfluences()) ||
        (parser.isFlagSet("round") && prepareRound()) ||
        (parser.isFlagSet("replace") && prepareReplace()) ||
        ((parser.isFlagSet("setData") || parser.isFlagSet("dragSlider")) &&
         prepareCells(parser.isFlagSet("setData"))) ||
        (parser.isFlagSet("dragSliderColumn") && prepareColumnDrag()) ||
        (parser.isFlagSet("skinPaintSmooth") && (paintSmoothPending = preparePaintSmoothing())) ||
        (parser.isFlagSet("smoothSkinWeights") &&
         (weightSmoothPending = prepareWeightSmoothing())) ||
        (parser.isFlagSet("paste") && preparePaste());
    if (!prepared)
        return HS::kSuccess;
    return redoIt();
}

void vorelCmd::copyModel() {
    skinClusters = editorModel->getSkinClusters();
    shapePaths = editorModel->getShapePaths();
    weightRows = editorModel->getWeightRows();
    influencePaths = editorModel->getInfluencePaths();
    shapeComponents = editorModel->getShapeComponents();
    lockedCells = editorModel->getLockedCells();
    lockedColumns = editorModel->getLockedColumns();
}

HStatus vorelCmd::redoIt() {
    if (edit)
        return edit->redoIt();
    HStatus status;
    const bool savedAutoUpdate = weightTableModel::getAutoUpdate();
    // The writes and lock commands change the scene; the table must not reload meanwhile.
    if (editorModel)
        editorModel->setAutoUpdate(false);
    if (!cells.isEmpty() && !paintSmoothPending)
        status = refuseCellsWithoutValues();
    if (paintSmoothPending)
        status = writePaintSmoothing();
    if (weightSmoothPending)
        status = writeWeightSmoothing();
    if (!pasteInfluences.isEmpty())
        status = writePaste();
    if (editorModel) {
        editorModel->rebuildWeightRows();
        editorModel->setUpColumn();
        editorModel->setAutoUpdate(savedAutoUpdate);
    }
    return status;
}

HStatus vorelCmd::undoIt() {
    if (edit)
        return edit->undoIt();
    // The edits without a class of their own wrote vertex by vertex.
    const HStatus status = restoreVertexWrites();
    // The table follows the scene; the command keeps the rows it worked from, so that a redo
    // writes the same edit whatever the table shows by then.
    if (editorModel) {
        editorModel->rebuildWeightRows();
        editorModel->setUpColumn();
    }
    return status;
}

bool vorelCmd::isUndoable() const {
    return true;
}
