// windowEditCommands: the window's undoable edit command objects, one class per kind of edit:
// flood replace (replaceButtonCmd), precision rounding (roundButtonCmd), maximum influences
// (applyButtonCmd), slider drags of cells (dragSliderCmd) and of a column (dragSliderColCmd),
// typed cell values (setCellDataCmd) and paint-tool smoothing (smoothCmd). Each performs one
// kind of edit with vorelCmd's own prepare, write and undo steps, on its own lists; none is
// registered with the host, since every edit the window makes runs through vorelCmd.
//
// Where a class differs from the matching vorelCmd flag: setCellDataCmd edits the table's
// current selection instead of the model's hand-over cells; dragSliderCmd refuses a row
// outside the table as a shape header row and keeps its temporary influence locks out of the
// undo queue; applyButtonCmd hands every cell whose influence it removed to the model's
// read-back.
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
#include "vorelCmd.h"

class vorelWindow;
class weightTableModel;

// `Base` holds the steps: vorelCmd's own, or the edit class vorelCmd holds for that kind.
template <typename Command, typename Base = vorelCmd> class windowEditCommand : public Base {
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

class smoothCmd : public windowEditCommand<smoothCmd> {
public:
    using windowEditCommand::windowEditCommand;
    HStatus doIt(const HArgList& args) override;
};
