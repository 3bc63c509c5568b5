// Rounding rows for display; see weightRounding.h.
#include "weightRounding.h"

#include <QVarLengthArray>
#include <algorithm>

namespace weightRounding {

namespace {

void store(WeightRow& row, int position, double value) {
    if (row.at(position) != value)
        row[position] = value;
}

// Position of the first element equal to `value`, element 0 included; -1 when none.
int firstPositionOf(const WeightRow& row, double value) {
    for (int i = 0; i < row.size(); ++i)
        if (row.at(i) == value)
            return i;
    return -1;
}

bool unlocked(int) {
    return false;
}

// Gives the row's remainder to the weight at `position`, detaching the row only when a value
// changes.
void giveRemainderInRow(WeightRow& row, int position, double others, const LockTest& isLocked) {
    const double value = 1.0 - others;
    if (value >= 0.0)
        store(row, position, value);
    else
        giveRemainder(row.data(), row.size(), position, others, isLocked);
}

} // namespace

void giveRemainder(double* cells, int size, int position, double others, const LockTest& isLocked) {
    if (1.0 - others >= 0.0) {
        cells[position] = 1.0 - others;
        return;
    }
    // The other unlocked positive weights, largest first, leftmost first.
    QVarLengthArray<int, 64> takers;
    for (int i = 1; i < size; ++i)
        if (i != position && cells[i] > 0.0 && !isLocked(i - 1))
            takers.append(i);
    std::stable_sort(takers.begin(), takers.end(),
                     [&](int a, int b) { return cells[a] > cells[b]; });
    double total = others + cells[position];
    for (int k = 0; k < takers.size(); ++k) {
        const double rest = total - cells[takers[k]];
        if (1.0 - rest >= 0.0) {
            // The larger ones before this one give all they have.
            for (int emptied = 0; emptied < k; ++emptied)
                cells[takers[emptied]] = 0.0;
            cells[takers[k]] = 1.0 - rest;
            return;
        }
        total = rest;
    }
    // Not every unlocked weight together holds what the row has too much: the vertex is not
    // normalised, and its row stays as rounded.
}

void roundPositiveWeights(WeightRow& row, int precision) {
    const double scale = weightRows::powerOfTen(precision);
    const double* cells = row.constData();
    for (int i = 1; i < row.size(); ++i) {
        const double weight = cells[i];
        if (weight <= 0.0)
            continue;
        const double rounded = std::ceil(weight * scale - 0.49) / scale;
        if (rounded != weight) {
            // Writing detaches a shared row; `cells` must follow it.
            row[i] = rounded;
            cells = row.constData();
        }
    }
}

double lastWeightTolerance(int precision) {
    return weightRows::roundToPrecision(weightRows::powerOfTen(-precision) +
                                            weightRows::powerOfTen(-(precision + 1)),
                                        precision + 1);
}

Correction absorbIntoLastWeight(WeightRow& row, double tolerance) {
    const int size = row.size();
    if (size < 2)
        return Correction::kTooShort;
    const double* cells = row.constData();
    double sumBeforeLast = 0.0;
    double last = 0.0;
    int lastPosition = -1;
    for (int i = 1; i < size; ++i) {
        const double weight = cells[i];
        if (weight <= 0.0)
            continue;
        if (lastPosition != -1)
            sumBeforeLast += last;
        last = weight;
        lastPosition = i;
    }
    if (lastPosition == -1)
        return Correction::kNoPositiveWeight;
    const double total = sumBeforeLast + last;
    if (total > 1.0 - tolerance && total < 1.0 + tolerance)
        giveRemainderInRow(row, lastPosition, sumBeforeLast, unlocked);
    return Correction::kDone;
}

Correction fillRoundedRow(double* cells, int size, const int* elementOf, const double* weights,
                          unsigned count, int precision, double tolerance, bool correct) {
    const double scale = weightRows::powerOfTen(precision);
    double sumBeforeLast = 0.0;
    double last = 0.0;
    int lastPosition = -1;
    for (unsigned k = 0; k < count; ++k) {
        double weight = weights[k];
        if (weight > 0.0) {
            weight = std::ceil(weight * scale - 0.49) / scale;
            if (weight > 0.0) {
                if (lastPosition != -1)
                    sumBeforeLast += last;
                last = weight;
                lastPosition = elementOf[k];
            }
        }
        cells[elementOf[k]] = weight;
    }
    if (!correct)
        return Correction::kDone;
    if (lastPosition == -1)
        return Correction::kNoPositiveWeight;
    const double total = sumBeforeLast + last;
    if (total > 1.0 - tolerance && total < 1.0 + tolerance)
        giveRemainder(cells, size, lastPosition, sumBeforeLast, unlocked);
    return Correction::kDone;
}

Correction absorbIntoFreeWeight(WeightRow& row, int editedColumn, const LockTest& isLocked) {
    if (row.size() < 2)
        return Correction::kTooShort;
    QVarLengthArray<double, 64> positives;
    for (int i = 1; i < row.size(); ++i)
        if (row.at(i) > 0.0)
            positives.append(row.at(i));
    if (positives.size() < 2)
        return Correction::kDone;

    int chosen = 0;
    for (int k = 0; k < positives.size(); ++k) {
        const int column = firstPositionOf(row, positives[k]) - 1;
        if (column == editedColumn || isLocked(column))
            continue;
        chosen = k;
        break;
    }
    double others = 0.0;
    for (int k = 0; k < positives.size(); ++k)
        if (k != chosen)
            others += positives[k];
    const int position = firstPositionOf(row, positives[chosen]);
    if (position < 1)
        return Correction::kNotFound;
    giveRemainderInRow(row, position, others, isLocked);
    return Correction::kDone;
}

} // namespace weightRounding
