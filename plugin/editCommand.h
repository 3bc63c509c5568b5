// editCommand: the base of the edit command classes that vorelCmd holds and forwards its redo and
// undo to. An edit is prepared from the model's request once; redoIt writes it into the scene
// and undoIt writes back what it replaced, each keeping the table's automatic reload off while
// it writes and then letting the table read exactly the rows written.
//
// The model the refreshes are given is not owned; it must outlive the command's use of it (the
// window owns both, and the host drops the command before the window goes).
#pragma once

#include "HArgList.h"
#include "HPxCommand.h"
#include "HStatus.h"
#include "writtenWeights.h"

#include <functional>

class weightTableModel;

class editCommand : public HPxCommand {
public:
    // Performs the prepared edit (the window's classes prepare in a doIt of their own).
    HStatus doIt(const HArgList&) override { return redoIt(); }
    bool isUndoable() const override { return true; }

protected:
    // Runs `write` with the table's automatic reload off, then refreshes the written rows of
    // `model` and its hidden columns. The status of `write`.
    HStatus writeAndRefresh(weightTableModel* model, const std::function<HStatus()>& write);
    // Writes back what the last redo replaced, then refreshes `model`'s rows and, when asked,
    // its hidden columns.
    HStatus restoreAndRefresh(weightTableModel* model, bool hiddenColumns = true);

    writtenWeights written;
};
