// windowEditCommand: the common base of the window's undoable edit commands (one class per
// kind of edit, created by the window beside vorelCmd and never registered with the host).
// Each command class gets its own class-wide window and model pointers, set by the last
// object constructed; deleting an object leaves them as they are. The window owns the
// objects. Nothing here can fail.
#pragma once

#include "HPxCommand.h"

class vorelWindow;
class weightTableModel;

template <typename Command> class windowEditCommand : public HPxCommand {
public:
    windowEditCommand(vorelWindow* window, weightTableModel* model) {
        editWindow = window;
        editModel = model;
    }

protected:
    static vorelWindow* editWindow;
    static weightTableModel* editModel;
};

template <typename Command> vorelWindow* windowEditCommand<Command>::editWindow = nullptr;
template <typename Command> weightTableModel* windowEditCommand<Command>::editModel = nullptr;
