// cellValuesCmd: the edit of given values into single cells, typed ("vorelCmd -setData") or
// dragged ("vorelCmd -dragSlider"). Each cell is one write of its influence on its vertex, with
// the row's other locked cells held by temporary influence locks and the vertex kept normalised
// by the host; undo writes every vertex's previous weights back, in write order.
//
// prepare() takes the cells by identity from the model's request and refuses the whole edit,
// with the message of the first cell that names nothing (in this order: a negative row, a shape
// header row, a row without vertex number, an influence the cell's skin cluster lacks). It keeps
// a pointer to the model (not owned) for the table's refresh after each redo and undo.
#pragma once

#include "HDagPath.h"
#include "HObject.h"
#include "HString.h"
#include "editCommand.h"
#include "editRequests.h"

#include <QList>
#include <QVector>

class cellValuesCmd : public editCommand {
public:
    struct Rules {
        // A negative row is reported as such; otherwise as a cell that cannot be edited.
        bool reportRowNumbers = true;
        // The temporary influence locks are recorded in the host's undo queue.
        bool recordLocks = true;
    };

    bool prepare(const CellValuesRequest& request, weightTableModel& model, Rules rules);
    HStatus redoIt() override;
    HStatus undoIt() override;

private:
    struct CellWrite {
        WriteTarget target;
        unsigned influence = 0;
        double value = 0.0;
    };

    HStatus writeCells();

    QVector<CellWrite> cellWrites;
    weightTableModel* tableModel = nullptr;
};
