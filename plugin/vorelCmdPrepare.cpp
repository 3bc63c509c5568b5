// The prepare steps of vorelCmd's edits: each copies the model's hand-over members and builds
// the components, indices and values its write step needs, so that a later redo writes the
// same edit whatever the model shows by then. A shape's rows are found by their marker; when
// the table does not hold a row for every vertex an edit must write, nothing is prepared.
#include "HDagPathArray.h"
#include "HFnDagNode.h"
#include "HFnSingleIndexedComponent.h"
#include "HFnSkinCluster.h"
#include "HGlobal.h"
#include "HQtUtil.h"
#include "commandModelAccess.h"
#include "editorPointers.h"
#include "vorelCmd.h"
#include "weightTableModel.h"
#include "weightWriting.h"
#include "windowEditCommands.h"

#include <QHash>

using namespace commandModelAccess;
using weightWriting::singleVertexComponent;
using weightWriting::wholeShapeComponent;

namespace {} // namespace

bool vorelCmd::prepareLimitInfluences() {
    std::unique_ptr<applyButtonCmd> limit(new applyButtonCmd(editorWindow, editorModel));
    if (!limit->prepare(editorModel->getPendingLimit(), *editorModel))
        return false;
    edit = std::move(limit);
    return true;
}

template <typename Command>
bool vorelCmd::holdShapeWrites(bool (shapeWritesCmd::*prepare)(weightTableModel&)) {
    std::unique_ptr<Command> command(new Command(editorWindow, editorModel));
    if (!((*command).*prepare)(*editorModel))
        return false;
    edit = std::move(command);
    return true;
}

bool vorelCmd::prepareRound() {
    return holdShapeWrites<roundButtonCmd>(&shapeWritesCmd::prepareRound);
}

bool vorelCmd::prepareReplace() {
    return holdShapeWrites<replaceButtonCmd>(&shapeWritesCmd::prepareFlood);
}

bool vorelCmd::prepareColumnDrag() {
    return holdShapeWrites<dragSliderColCmd>(&shapeWritesCmd::prepareColumnDrag);
}

bool vorelCmd::prepareCells(bool typed) {
    std::unique_ptr<cellValuesCmd> cells;
    if (typed)
        cells.reset(new setCellDataCmd(editorWindow, editorModel));
    else
        cells.reset(new dragSliderCmd(editorWindow, editorModel));
    if (!cells->prepare(editorModel->getPendingCellValues(), *editorModel,
                        cellValuesCmd::Rules{true, true}))
        return false;
    edit = std::move(cells);
    return true;
}
