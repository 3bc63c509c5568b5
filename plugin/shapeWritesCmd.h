// shapeWritesCmd: the edits that write every vertex of loaded shapes in one host call each:
// rounding ("vorelCmd -round": every weight as the table shows it, without the normalisation
// guard), flood replace ("-replace": one influence set to one value, the host renormalising
// each vertex) and the drag of a whole influence column ("-dragSliderColumn": the column's new
// values, the locked influences held by locks kept out of the undo queue). Undo writes each
// shape's previous weights back, in write order.
//
// Each prepare step takes the model's loaded objects, its hand-over values and the rows the
// table shows (a shape's rows found by their marker, the j-th row for the j-th vertex); it
// refuses the edit, asking for a reload, when the table does not hold a row for every vertex the
// edit must write. The model (not owned) is kept for the table's refresh after each redo and
// undo.
#pragma once

#include "HDagPath.h"
#include "HDoubleArray.h"
#include "HIntArray.h"
#include "HObject.h"
#include "HString.h"
#include "editCommand.h"

#include <QList>
#include <QVector>

class shapeWritesCmd : public editCommand {
public:
    bool prepareRound(weightTableModel& model);
    bool prepareFlood(weightTableModel& model);
    bool prepareColumnDrag(weightTableModel& model);
    HStatus redoIt() override;
    HStatus undoIt() override;

private:
    struct ShapeWrite {
        WriteTarget target;
        // One influence set to `value` on every vertex, or `influences` with `values` per vertex.
        bool oneValue = false;
        unsigned influence = 0;
        double value = 0.0;
        HIntArray influences;
        HDoubleArray values;
    };

    // The shape's write with its component and rows (the shape's vertex rows, `shapeRows`);
    // false when the rows do not fit the component.
    bool startWrite(const weightTableModel& model, unsigned shape, const QVector<int>& shapeRows,
                    ShapeWrite& write) const;
    HStatus writeShapes();

    QVector<ShapeWrite> shapeWrites;
    weightTableModel* tableModel = nullptr;
};
