// The command's creation, syntax and dispatch. Running without flags opens the window.
#include "vorelCmd.h"

#include "HArgParser.h"
#include "HGlobal.h"
#include "HQtUtil.h"
#include "editorPointers.h"
#include "vorelWindow.h"

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
    syntax.enableQuery(false);
    syntax.enableEdit(false);
    return syntax;
}

vorelCmd::vorelCmd()
    : maxInfluences(0), floodValue(0.0), targetColumn(0), smoothColumn(0), smoothOpacity(0.0),
      paintSmoothPending(false), weightSmoothPending(false) {}

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
    return HS::kSuccess;
}

HStatus vorelCmd::undoIt() {
    return HS::kSuccess;
}

HStatus vorelCmd::redoIt() {
    return HS::kSuccess;
}

bool vorelCmd::isUndoable() const {
    return true;
}
