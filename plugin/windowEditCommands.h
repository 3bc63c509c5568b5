// windowEditCommands: the window's undoable edit command objects, one class per kind of edit:
// flood replace (replaceButtonCmd), precision rounding (roundButtonCmd), maximum influences
// (applyButtonCmd), slider drags of cells (dragSliderCmd) and of a column (dragSliderColCmd),
// typed cell values (setCellDataCmd) and paint-tool smoothing (smoothCmd). Each is the edit
// class of its kind (cellValuesCmd, limitInfluencesCmd, shapeWritesCmd, smoothingCmd) with a
// doIt of its own; none is registered with the host. vorelCmd makes one of them for every edit
// the window runs through it, prepares it from the model's request and forwards its redo and
// undo to it.
//
// Where a class run on its own (its doIt) differs from the matching vorelCmd flag:
// setCellDataCmd edits the table's current selection instead of the model's hand-over cells;
// dragSliderCmd refuses a row outside the table as a shape header row and keeps its temporary
// influence locks out of the undo queue; applyButtonCmd hands every cell whose influence it
// removed to the model's read-back.
//
// The window creates one object of each class and deletes them. Each class has its own
// class-wide window and model pointers, set by the last object constructed and left as they
// are when it is deleted. Failures are reported as fixed sentences through the host's
// messages; a preparation that fails leaves the scene untouched and doIt succeeds.
#pragma once

#include "HArgList.h"
#include "HStatus.h"
#include "cellValuesCmd.h"
#include "limitInfluencesCmd.h"
#include "shapeWritesCmd.h"
#include "smoothingCmd.h"

class vorelWindow;
class weightTableModel;

// `Base` is the edit class of that kind, which vorelCmd also makes and holds.
template <typename Command, typename Base> class windowEditCommand : public Base {
public:
    windowEditCommand(vorelWindow* window, weightTableModel* model) {
        editWindow = window;
        editModel = model;
    }
    ~windowEditCommand() override = default;

protected:
    // Writes when the preparation succeeded; a failed one leaves the scene as it was.
    HStatus performWhen(bool prepared) { return prepared ? this->redoIt() : HStatus(HS::kSuccess); }

    static vorelWindow* editWindow;
    static weightTableModel* editModel;
};

template <typename Command, typename Base>
vorelWindow* windowEditCommand<Command, Base>::editWindow = nullptr;
template <typename Command, typename Base>
weightTableModel* windowEditCommand<Command, Base>::editModel = nullptr;

class replaceButtonCmd : public windowEditCommand<replaceButtonCmd, shapeWritesCmd> {
public:
    using windowEditCommand::windowEditCommand;
    HStatus doIt(const HArgList& args) override;
};

class roundButtonCmd : public windowEditCommand<roundButtonCmd, shapeWritesCmd> {
public:
    using windowEditCommand::windowEditCommand;
    HStatus doIt(const HArgList& args) override;
};

class applyButtonCmd : public windowEditCommand<applyButtonCmd, limitInfluencesCmd> {
public:
    using windowEditCommand::windowEditCommand;
    HStatus doIt(const HArgList& args) override;

protected:
    // On its own, the class reads each changed cell back into the table.
    void influenceRemoved(int row, int column) override;

private:
    bool onItsOwn = false;
};

class dragSliderCmd : public windowEditCommand<dragSliderCmd, cellValuesCmd> {
public:
    using windowEditCommand::windowEditCommand;
    HStatus doIt(const HArgList& args) override;
};

class dragSliderColCmd : public windowEditCommand<dragSliderColCmd, shapeWritesCmd> {
public:
    using windowEditCommand::windowEditCommand;
    HStatus doIt(const HArgList& args) override;
};

class setCellDataCmd : public windowEditCommand<setCellDataCmd, cellValuesCmd> {
public:
    using windowEditCommand::windowEditCommand;
    HStatus doIt(const HArgList& args) override;
};

class smoothCmd : public windowEditCommand<smoothCmd, smoothingCmd> {
public:
    using windowEditCommand::windowEditCommand;
    HStatus doIt(const HArgList& args) override;
};
