// windowEditCommands: the window's undoable edit command objects, one class per kind of edit:
// flood replace (replaceButtonCmd), precision rounding (roundButtonCmd), maximum influences
// (applyButtonCmd), slider drags of cells (dragSliderCmd) and of a column (dragSliderColCmd),
// typed cell values (setCellDataCmd) and paint-tool smoothing (smoothCmd). Each carries out
// the same preparation, write and undo as the matching vorelCmd flag, on its own lists; none is
// registered with the host, since every edit the window makes runs through vorelCmd.
//
// The window creates one object of each class and deletes them. Each class has its own
// class-wide window and model pointers, set by the last object constructed and left as they
// are when it is deleted; the classes read the model through them (smoothCmd, like vorelCmd,
// through editorModel). Failures are reported as fixed sentences through the host's messages.
#pragma once

#include "HArgList.h"
#include "HStatus.h"
#include "paintSmoothStroke.h"
#include "weightEditSteps.h"

class vorelWindow;
class weightTableModel;

template <typename Command> class windowEditCommand : public weightEditSteps {
public:
    windowEditCommand(vorelWindow* window, weightTableModel* model) {
        editWindow = window;
        editModel = model;
    }
    ~windowEditCommand() override = default;
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
    HStatus doIt(const HArgList& args) override;
    HStatus undoIt() override;
    HStatus redoIt() override;
};

class roundButtonCmd : public windowEditCommand<roundButtonCmd> {
public:
    using windowEditCommand::windowEditCommand;
    HStatus doIt(const HArgList& args) override;
    HStatus undoIt() override;
    HStatus redoIt() override;
};

class applyButtonCmd : public windowEditCommand<applyButtonCmd> {
public:
    using windowEditCommand::windowEditCommand;
    HStatus doIt(const HArgList& args) override;
    HStatus undoIt() override;
    HStatus redoIt() override;
};

class dragSliderCmd : public windowEditCommand<dragSliderCmd> {
public:
    using windowEditCommand::windowEditCommand;
    HStatus doIt(const HArgList& args) override;
    HStatus undoIt() override;
    HStatus redoIt() override;
};

class dragSliderColCmd : public windowEditCommand<dragSliderColCmd> {
public:
    using windowEditCommand::windowEditCommand;
    HStatus doIt(const HArgList& args) override;
    HStatus undoIt() override;
    HStatus redoIt() override;
};

class setCellDataCmd : public windowEditCommand<setCellDataCmd> {
public:
    using windowEditCommand::windowEditCommand;
    HStatus doIt(const HArgList& args) override;
    HStatus undoIt() override;
    HStatus redoIt() override;
};

class smoothCmd : public windowEditCommand<smoothCmd> {
public:
    using windowEditCommand::windowEditCommand;
    HStatus doIt(const HArgList& args) override;
    HStatus undoIt() override;
    HStatus redoIt() override;

private:
    paintSmoothStroke stroke;
};
