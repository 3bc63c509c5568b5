// Rounding rows for display; see weightRounding.h.
#include "weightRounding.h"

#include <QVarLengthArray>

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

} // namespace

void roundPositiveWeights(WeightRow& row, int precision) {
    for (int i = 1; i < row.size(); ++i) {
        const double weight = row.at(i);
        if (weight > 0.0)
            store(row, i, weightRows::roundToPrecision(weight, precision));
    }
}

Correction absorbIntoLastWeight(WeightRow& row, int precision) {
    if (row.size() < 2)
        return Correction::kTooShort;
    double sumBeforeLast = 0.0;
    double last = 0.0;
    bool found = false;
    for (int i = 1; i < row.size(); ++i) {
        const double weight = row.at(i);
        if (weight <= 0.0)
            continue;
        if (found)
            sumBeforeLast += last;
        last = weight;
        found = true;
    }
    if (!found)
        return Correction::kNoPositiveWeight;
    int lastPosition = -1;
    for (int i = row.size() - 1; i >= 0; --i)
        if (row.at(i) == last) {
            lastPosition = i;
            break;
        }
    if (lastPosition == -1)
        return Correction::kNotFound;
    const double tolerance = weightRows::roundToPrecision(
        std::pow(10.0, -precision) + std::pow(10.0, -(precision + 1)), precision + 1);
    const double total = sumBeforeLast + last;
    if (total > 1.0 - tolerance && total < 1.0 + tolerance)
        store(row, lastPosition, 1.0 - sumBeforeLast);
    return Correction::kDone;
}

Correction absorbIntoFreeWeight(WeightRow& row, int editedColumn,
                                const std::function<bool(int column)>& isLocked) {
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
    store(row, position, 1.0 - others);
    return Correction::kDone;
}

} // namespace weightRounding
