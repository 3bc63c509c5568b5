// writtenWeights: what an edit wrote, one entry per host write in write order: the skin
// cluster, the shape, the vertices, the weights they held before (all influences) and whether
// the write ran inside the normalisation guard. Undo is one loop over it; the table reads the
// entries' rows again.
//
// The record owns its arrays; host objects are value handles.
#pragma once

#include "HDagPath.h"
#include "HDoubleArray.h"
#include "HObject.h"
#include "HStatus.h"
#include "editRequests.h"

#include <QVector>

class writtenWeights {
public:
    struct Entry {
        HObject cluster;
        HDagPath shape;
        HObject component;
        unsigned influenceCount = 0;
        HDoubleArray oldWeights;
        bool normalisationGuard = true;
        // The table rows the write was made from, one per vertex of the component.
        QVector<WrittenRow> rows;
    };

    void clear() {
        entries.clear();
        rowsUnknown = false;
    }
    // The edit changed weights it cannot name (a host command did the writing): rows() then
    // holds one row that names nothing, so that the table reads all of its rows again.
    void markRowsUnknown() { rowsUnknown = true; }
    bool isEmpty() const { return entries.isEmpty(); }
    void append(Entry entry) { entries.append(std::move(entry)); }

    // Writes every entry's old weights back in the order they were written, so that a vertex
    // written twice ends with the weights it had after its first write. The status of the last
    // write; failure when there was none.
    HStatus restore() const;

    // The rows of the entries, in write order.
    QVector<WrittenRow> rows() const;

private:
    QVector<Entry> entries;
    bool rowsUnknown = false;
};
