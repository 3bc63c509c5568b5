// limitInfluencesCmd: the edit that limits vertex rows to a maximum number of weights above zero
// ("vorelCmd -numMax"). Each row over the limit loses its smallest weights one at a time (the
// leftmost of equal ones; the first from the values the table showed, the next from the weights
// the host holds after the previous removal), each removal renormalising the vertex as the
// host's normalised write does: the other unlocked weights share what the removed one held.
//
// The host's renormalisation is followed here step by step (its arithmetic is stated in
// HFnSkinCluster.h), so each vertex is read once and written once, with the weights the
// removals one after another give: a slice of vertices per host call. A vertex whose other
// unlocked weights hold nothing, where the host's rule needs the bind pose, is limited by one
// host write per removal instead. Undo writes every vertex's weights before the edit back.
//
// prepare() reports, as errors, a requested row that is a shape header row and one without a
// vertex number; a removal whose column names no influence of the row's skin cluster stops the
// writes there with the information "Could not find the influence.", keeping what was written.
#pragma once

#include "HDagPath.h"
#include "HIntArray.h"
#include "HObject.h"
#include "editCommand.h"
#include "editRequests.h"

#include <QHash>
#include <QList>
#include <QVector>
#include <vector>

class limitInfluencesCmd : public editCommand {
public:
    bool prepare(const LimitRequest& request, weightTableModel& model);
    HStatus redoIt() override;
    HStatus undoIt() override;

protected:
    // Called after the writes, once per influence removed, with the row and the column.
    virtual void influenceRemoved(int row, int column);

private:
    // What a removal needs of one loaded shape's skin cluster, found once.
    struct ShapeInfluences {
        HObject cluster;
        HDagPath shape;
        std::vector<int> columnOfInfluence; // per influence index (-1: no column)
        std::vector<int> influenceOfColumn; // per column, the first influence of its name
        std::vector<char> locked;           // per influence index, its host lock
    };
    struct OverLimitRow {
        LimitedRow row;
        int excess = 0;
        // The columns taken out, in order; a redo takes out the same ones.
        QList<int> removed;
    };

    HStatus writeRows();
    // The influence whose weight the column shows, to be removed; -1, with `missing` set after
    // the message, when the column names no influence of the shape's skin cluster.
    static int influenceToRemove(const ShapeInfluences& shape, int column, bool& missing);
    // Follows the removals of one row on `weights` (the vertex's, in influence order); false
    // when the host's rule for an empty remainder applies, or (after the message) when a
    // column names no influence, with `missing` set.
    bool removeInPlace(OverLimitRow& row, const ShapeInfluences& shape, double* weights,
                       bool& missing);
    // One host write per removal, reading the vertex back after each.
    HStatus removeOneByOne(OverLimitRow& row, const ShapeInfluences& shape, bool& missing);
    HStatus writeSlice(const ShapeInfluences& shape, const QVector<int>& entries,
                       const std::vector<double>& weights, unsigned count);

    QVector<OverLimitRow> overLimit;
    QHash<int, ShapeInfluences> shapes;
    weightTableModel* tableModel = nullptr;
};
