// windowEditCommands: the window's undoable edit command objects, one class per kind of edit:
// flood replace (replaceButtonCmd), precision rounding (roundButtonCmd), maximum influences
// (applyButtonCmd), slider drags of cells (dragSliderCmd) and of a column (dragSliderColCmd),
// typed cell values (setCellDataCmd) and paint-tool smoothing (smoothCmd). Each carries out
// the same preparation, write and undo as the matching vorelCmd flag, on its own lists; none is
// registered with the host, since every edit the window makes runs through vorelCmd.
//
// The window creates one object of each class and deletes them. Each class has its own
// class-wide window and model pointers, set by the last object constructed and left as they
// are when it is deleted. Failures are reported as fixed sentences through the host's
// messages.
#pragma once

#include "HArgList.h"
#include "HPxCommand.h"
#include "HStatus.h"

class vorelWindow;
class weightTableModel;

template <typename Command> class windowEditCommand : public HPxCommand {
public:
    windowEditCommand(vorelWindow* window, weightTableModel* model) {
        editWindow = window;
        editModel = model;
    }
    ~windowEditCommand() override = default;
    HStatus doIt(const HArgList&) override { return HS::kSuccess; }
    HStatus undoIt() override { return HS::kSuccess; }
    HStatus redoIt() override { return HS::kSuccess; }
    bool isUndoable() const override { return true; }

protected:
    static vorelWindow* editWindow;
    static weightTableModel* editModel;
};

template <typename Command> vorelWindow* windowEditCommand<Command>::editWindow = nullptr;
template <typename Command> weightTableModel* windowEditCommand<Command>::editModel = nullptr;

class replaceButtonCmd : public windowEditCommand<replaceButtonCmd> {
public:
    using windowEditCommand::windowEditCommand;
};

class roundButtonCmd : public windowEditCommand<roundButtonCmd> {
public:
    using windowEditCommand::windowEditCommand;
};

class applyButtonCmd : public windowEditCommand<applyButtonCmd> {
public:
    using windowEditCommand::windowEditCommand;
};

class dragSliderCmd : public windowEditCommand<dragSliderCmd> {
public:
    using windowEditCommand::windowEditCommand;
};

class dragSliderColCmd : public windowEditCommand<dragSliderColCmd> {
public:
    using windowEditCommand::windowEditCommand;
};

class setCellDataCmd : public windowEditCommand<setCellDataCmd> {
public:
    using windowEditCommand::windowEditCommand;
};

class smoothCmd : public windowEditCommand<smoothCmd> {
public:
    using windowEditCommand::windowEditCommand;
};
