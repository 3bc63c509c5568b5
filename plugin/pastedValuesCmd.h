// pastedValuesCmd: the paste edit ("vorelCmd -paste"). Every pasted row is one write of its
// pasted influences, the row's other unlocked influences sharing the remainder, so that each row
// keeps exactly the values pasted into it; the row's locked cells are held by temporary locks
// kept out of the undo queue. Undo writes the rows' previous weights back.
//
// prepare() takes the pasted cells and values by identity and refuses the whole paste, with a
// message, at the first cell that is no vertex cell or whose influence the row's skin cluster
// lacks. The model (not owned) is kept for the table's refresh after each redo and undo.
#pragma once

#include "HDagPath.h"
#include "HDoubleArray.h"
#include "HIntArray.h"
#include "HObject.h"
#include "HString.h"
#include "editCommand.h"
#include "editRequests.h"

#include <QList>
#include <QVector>

class pastedValuesCmd : public editCommand {
public:
    bool prepare(const CellValuesRequest& request, weightTableModel& model);
    HStatus redoIt() override;
    HStatus undoIt() override;

private:
    struct RowWrite {
        WriteTarget target;
        HIntArray influences;
        HDoubleArray values;
    };

    HStatus writeRows();

    QVector<RowWrite> rowWrites;
    weightTableModel* tableModel = nullptr;
};
