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

#include <QList>
#include <functional>

class HFnSkinCluster;
class weightTableModel;

// Where one host write goes, and what holds still meanwhile.
struct WriteTarget {
    HObject cluster;
    HDagPath shape;
    HObject component;
    unsigned influenceCount = 0;
    // The table rows of the component's vertices, in its order.
    QVector<WrittenRow> rows;
    // Influences locked for the write (by full path), the locks entering the undo queue or not.
    QList<HString> lockedInfluences;
    bool recordLocks = false;
    bool normalisationGuard = true;
};

class editCommand : public HPxCommand {
public:
    // Performs the prepared edit (the window's classes prepare in a doIt of their own).
    HStatus doIt(const HArgList&) override { return redoIt(); }
    bool isUndoable() const override { return true; }

protected:
    // Runs `write` on the target's skin cluster, with its influences locked and (when asked) the
    // normalisation guard, and keeps what it replaced in `written`. The write's status.
    using HostWrite = std::function<HStatus(HFnSkinCluster& cluster, HDoubleArray* oldWeights)>;
    HStatus writeTarget(const WriteTarget& target, const HostWrite& write);

    // Runs `write` with the table's automatic reload off, then refreshes the written rows of
    // `model` and its hidden columns. The status of `write`.
    HStatus writeAndRefresh(weightTableModel* model, const std::function<HStatus()>& write);
    // Writes back what the last redo replaced, then refreshes `model`'s rows and, when asked,
    // its hidden columns.
    HStatus restoreAndRefresh(weightTableModel* model, bool hiddenColumns = true);

    writtenWeights written;
};
