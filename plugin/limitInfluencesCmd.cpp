#include "limitInfluencesCmd.h"

#include "HDagPathArray.h"
#include "HDoubleArray.h"
#include "HFnSingleIndexedComponent.h"
#include "HFnSkinCluster.h"
#include "HGlobal.h"
#include "commandModelAccess.h"
#include "weightTableModel.h"
#include "weightWriting.h"

#include <QSet>
#include <QVarLengthArray>
#include <algorithm>

using namespace commandModelAccess;

namespace {

// Vertices read and written per host call.
constexpr int kSliceRows = 4096;

// The position of the smallest positive weight of the row (the leftmost of equal ones), or 0
// when none is positive.
int smallestPositive(const WeightRow& row) {
    int found = 0;
    for (int i = 1; i < row.size(); ++i)
        if (row.at(i) > 0.0 && (found == 0 || row.at(i) < row.at(found)))
            found = i;
    return found;
}

// The weights the vertex's row shows after a removal: each influence's into its column.
void showInRow(WeightRow& row, const std::vector<int>& columnOfInfluence, const double* weights,
               unsigned count) {
    for (unsigned k = 0; k < count && k < columnOfInfluence.size(); ++k) {
        const int column = columnOfInfluence[k];
        if (column >= 0 && column + 1 < row.size())
            row[column + 1] = weights[k];
    }
}

} // namespace

bool limitInfluencesCmd::prepare(const LimitRequest& request, weightTableModel& model) {
    tableModel = &model;
    overLimit.clear();
    shapes.clear();
    const HObjectArray clusters = model.getSkinClusters();
    const HDagPathArray paths = model.getShapePaths();
    for (const LimitedRow& row : request.rows) {
        if (row.shape < 0 || static_cast<unsigned>(row.shape) >= clusters.length()) {
            HGlobal::displayError("There is an error accessing shape index.");
            return false;
        }
        // Each cluster's influences are looked up once, not once per row.
        if (!shapes.contains(row.shape)) {
            ShapeInfluences& found = shapes[row.shape];
            found.cluster = clusters[static_cast<unsigned>(row.shape)];
            found.shape = paths[static_cast<unsigned>(row.shape)];
            const InfluenceColumns columns = clusterColumns(model, found.cluster);
            found.columnOfInfluence.assign(columns.columnOfInfluence.begin(),
                                           columns.columnOfInfluence.end());
            found.influenceOfColumn.assign(columns.influenceOfColumn.begin(),
                                           columns.influenceOfColumn.end());
        }
        if (row.vertex < 0) {
            HGlobal::displayError("There is some error with parsing the vertex index value.");
            return false;
        }
        int nonZero = 0;
        for (int i = 1; i < row.values.size(); ++i)
            if (row.values.at(i) > 0.0)
                ++nonZero;
        if (nonZero >= 2 && nonZero > request.maxInfluences) {
            OverLimitRow over;
            over.row = row;
            over.excess = nonZero - request.maxInfluences;
            overLimit.append(over);
        }
    }
    return true;
}

int limitInfluencesCmd::influenceToRemove(const ShapeInfluences& shape, int column, bool& missing) {
    const int influence =
        column >= 0 && static_cast<size_t>(column) < shape.influenceOfColumn.size()
            ? shape.influenceOfColumn[static_cast<size_t>(column)]
            : -1;
    if (influence == -1) {
        HGlobal::displayInfo("Could not find the influence.");
        missing = true;
    }
    return influence;
}

bool limitInfluencesCmd::removeInPlace(OverLimitRow& row, const ShapeInfluences& shape,
                                       double* weights, bool& missing) {
    const unsigned count = static_cast<unsigned>(shape.columnOfInfluence.size());
    const bool repeating = !row.removed.isEmpty();
    // The vertex's influences with weight, in influence order: after the first removal the row
    // shows exactly these (the first is chosen from the values the table showed).
    QVarLengthArray<unsigned, 16> held;
    for (unsigned k = 0; k < count; ++k)
        if (weights[k] > 0.0)
            held.append(k);
    for (int round = 0; round < row.excess; ++round) {
        int column = -1;
        if (repeating) {
            column = row.removed.value(round, -1);
        } else if (round == 0) {
            column = smallestPositive(row.row.values) - 1;
        } else {
            // The smallest weight shown, the leftmost column of equal ones.
            double smallest = 0.0;
            for (unsigned k : held) {
                const int shown = shape.columnOfInfluence[k];
                if (shown < 0 || !(weights[k] > 0.0))
                    continue;
                if (column == -1 || weights[k] < smallest ||
                    (weights[k] == smallest && shown < column)) {
                    smallest = weights[k];
                    column = shown;
                }
            }
        }
        const int influence = influenceToRemove(shape, column, missing);
        if (missing)
            return false;
        // The host's normalised write of 0: the other unlocked weights share what the locked
        // ones leave, in proportion, summed in influence order as the host sums them.
        double lockedSum = 0.0, unlockedSum = 0.0;
        for (unsigned k : held) {
            if (static_cast<int>(k) == influence || !(weights[k] > 0.0))
                continue;
            if (shape.locked[k])
                lockedSum += weights[k];
            else
                unlockedSum += weights[k];
        }
        const double remainder = std::max(0.0, 1.0 - lockedSum);
        if (unlockedSum > 0.0) {
            const double factor = remainder / unlockedSum;
            for (unsigned k : held)
                if (static_cast<int>(k) != influence && weights[k] > 0.0 && !shape.locked[k])
                    weights[k] *= factor;
        } else if (remainder > 0.0) {
            // The host gives the remainder to the influence nearest in the bind pose.
            if (!repeating)
                row.removed.clear();
            return false;
        }
        if (!repeating)
            row.removed.append(column);
        weights[influence] = 0.0;
    }
    return true;
}

HStatus limitInfluencesCmd::removeOneByOne(OverLimitRow& row, const ShapeInfluences& shape,
                                           bool& missing) {
    HFnSkinCluster cluster(shape.cluster);
    const HObject component = weightWriting::singleVertexComponent(row.row.vertex);
    const bool repeating = !row.removed.isEmpty();
    WeightRow working = row.row.values;
    HStatus status;
    for (int round = 0; round < row.excess; ++round) {
        const int column = repeating ? row.removed.value(round, -1) : smallestPositive(working) - 1;
        const int influence = influenceToRemove(shape, column, missing);
        if (missing)
            return HS::kFailure;
        if (!repeating)
            row.removed.append(column);
        if (round == 0) {
            // Undo returns the row to where it was before the first removal.
            WriteTarget target;
            target.cluster = shape.cluster;
            target.shape = shape.shape;
            target.component = component;
            target.influenceCount = static_cast<unsigned>(shape.columnOfInfluence.size());
            target.rows.append(WrittenRow{row.row.row, row.row.shape, row.row.vertex});
            status = writeTarget(target, [&](HFnSkinCluster& host, HDoubleArray* old) {
                return host.setWeights(shape.shape, component, static_cast<unsigned>(influence),
                                       0.0, true, old);
            });
        } else {
            weightWriting::NormalisationGuard normalisation(shape.cluster);
            status = cluster.setWeights(shape.shape, component, static_cast<unsigned>(influence),
                                        0.0, true);
        }
        HDoubleArray weights;
        unsigned count = 0;
        cluster.getWeights(shape.shape, component, weights, count);
        if (weights.length() != 0)
            showInRow(working, shape.columnOfInfluence, &weights[0],
                      std::min<unsigned>(count, weights.length()));
    }
    return status;
}

HStatus limitInfluencesCmd::writeSlice(const ShapeInfluences& shape, const QVector<int>& entries,
                                       const std::vector<double>& weights, unsigned count) {
    if (entries.isEmpty())
        return HS::kSuccess;
    WriteTarget target;
    target.cluster = shape.cluster;
    target.shape = shape.shape;
    target.influenceCount = count;
    HIntArray vertices;
    HDoubleArray values;
    values.setLength(static_cast<unsigned>(entries.size()) * count);
    for (int n = 0; n < entries.size(); ++n) {
        const OverLimitRow& row = overLimit[entries[n]];
        vertices.append(row.row.vertex);
        target.rows.append(WrittenRow{row.row.row, row.row.shape, row.row.vertex});
        for (unsigned k = 0; k < count; ++k)
            values[static_cast<unsigned>(n) * count + k] =
                weights[static_cast<size_t>(n) * count + k];
    }
    HFnSingleIndexedComponent part;
    target.component = part.create(HFn::kMeshVertComponent);
    part.addElements(vertices);
    // Every influence listed: the host stores the weights as they are.
    return writeTarget(target, [&](HFnSkinCluster& cluster, HDoubleArray* old) {
        return cluster.setWeights(target.shape, target.component, allInfluences(count), values,
                                  true, old);
    });
}

HStatus limitInfluencesCmd::writeRows() {
    HStatus status;
    QSet<int> locksRead;
    int next = 0;
    while (next < overLimit.size()) {
        // A slice: rows that follow one another on one shape, each vertex once.
        const int shapeIndex = overLimit[next].row.shape;
        ShapeInfluences& shape = shapes[shapeIndex];
        if (!locksRead.contains(shapeIndex)) {
            locksRead.insert(shapeIndex);
            HDagPathArray influences;
            HFnSkinCluster(shape.cluster).influenceObjects(influences);
            shape.locked.assign(shape.columnOfInfluence.size(), 0);
            for (unsigned k = 0; k < influences.length() && k < shape.locked.size(); ++k)
                shape.locked[k] = weightWriting::influenceLockedInHost(influences[k]);
        }
        QVector<int> slice;
        QSet<int> sliceVertices;
        HIntArray vertices;
        while (next < overLimit.size() && overLimit[next].row.shape == shapeIndex &&
               slice.size() < kSliceRows && !sliceVertices.contains(overLimit[next].row.vertex)) {
            sliceVertices.insert(overLimit[next].row.vertex);
            vertices.append(overLimit[next].row.vertex);
            slice.append(next++);
        }
        const unsigned count = static_cast<unsigned>(shape.columnOfInfluence.size());
        std::vector<double> weights(static_cast<size_t>(slice.size()) * count, 0.0);
        weightWriting::readVertexWeights(shape.cluster, shape.shape, vertices,
                                         [&](int position, const double* read, unsigned readCount) {
                                             std::copy(read, read + std::min(readCount, count),
                                                       weights.begin() +
                                                           static_cast<long>(position) * count);
                                         });

        QVector<int> inPlace;
        std::vector<double> inPlaceWeights;
        for (int n = 0; n < slice.size(); ++n) {
            OverLimitRow& row = overLimit[slice[n]];
            double* vertexWeights = weights.data() + static_cast<size_t>(n) * count;
            bool missing = false;
            if (removeInPlace(row, shape, vertexWeights, missing)) {
                inPlace.append(slice[n]);
                inPlaceWeights.insert(inPlaceWeights.end(), vertexWeights, vertexWeights + count);
                continue;
            }
            // What was found before stays written.
            status = writeSlice(shape, inPlace, inPlaceWeights, count);
            inPlace.clear();
            inPlaceWeights.clear();
            if (!missing)
                status = removeOneByOne(row, shape, missing);
            if (missing)
                return HS::kFailure;
        }
        status = writeSlice(shape, inPlace, inPlaceWeights, count);
    }
    return status;
}

HStatus limitInfluencesCmd::redoIt() {
    const HStatus status = writeAndRefresh(tableModel, [this]() { return writeRows(); });
    for (const OverLimitRow& row : qAsConst(overLimit))
        for (int column : row.removed)
            influenceRemoved(row.row.row, column);
    return status;
}

HStatus limitInfluencesCmd::undoIt() {
    return restoreAndRefresh(tableModel);
}

void limitInfluencesCmd::influenceRemoved(int, int) {}
