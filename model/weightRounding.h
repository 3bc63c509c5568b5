// weightRounding: the display rounding of vertex rows. Each positive weight is rounded to the
// precision, then one weight of the row takes the remainder so that the shown row sums to one
// again: after a load or rebuild the last positive weight, when the row is off by no more than
// rounding explains; after an edit the first weight that is neither the edited one nor locked.
//
// A weight that takes the remainder never goes below zero: when it would, it keeps its rounded
// value and the row's largest unlocked weight takes the remainder instead (then the next
// largest, should one not be enough), so that the row still sums to one. A row whose unlocked
// weights together cannot take it (a vertex far from normalised) stays as rounded.
//
// Pure functions on one row; they write an element only when its value changes, so that a row
// shared with an undo copy stays shared when rounding leaves it as it is. Failures are returned
// as codes; the model turns them into its messages.
#pragma once

#include "weightRows.h"

#include <functional>

namespace weightRounding {

// Rounds every weight above 0 from element 1 on; zeros and sentinels stay.
void roundPositiveWeights(WeightRow& row, int precision);

enum class Correction { kDone, kTooShort, kNoPositiveWeight, kNotFound };

// Whether a column's weight is locked.
using LockTest = std::function<bool(int column)>;

// Gives element `position` of the row (`size` elements) 1 - `others`, where `others` is the sum
// of the row's other positive weights; when that would be below zero, the largest unlocked
// positive weights take the remainder instead, as the top of this file says.
void giveRemainder(double* cells, int size, int position, double others, const LockTest& isLocked);

// How far from one a rounded row may sum and still be corrected after a load:
// 10^-precision + 10^-(precision + 1), rounded to precision + 1 places (0.0011 for 3).
double lastWeightTolerance(int precision);

// The correction after a load: the last positive weight takes 1 minus the others when their
// total lies strictly within `tolerance` of one.
Correction absorbIntoLastWeight(WeightRow& row, double tolerance);

// Fills a vertex row (already holding its template) from the vertex's weights in one pass,
// rounding each positive weight and, when `correct` is set, letting the last positive weight
// absorb the remainder: the same result as writing the weights, roundPositiveWeights and
// absorbIntoLastWeight. `elementOf` gives each weight's element and must increase with k; the
// row has `size` elements. Returns kNoPositiveWeight when correcting found no positive weight,
// kDone otherwise.
Correction fillRoundedRow(double* cells, int size, const int* elementOf, const double* weights,
                          unsigned count, int precision, double tolerance, bool correct);

// The correction after an edit: among the positive weights in column order, the first whose
// column is not `editedColumn` and not locked takes the remainder; the first positive weight
// when all are excluded. A value is placed by its leftmost equal in the row (element 0
// included), so equal weights resolve to the leftmost column holding them. Rows with fewer
// than two positive weights are left as they are.
Correction absorbIntoFreeWeight(WeightRow& row, int editedColumn, const LockTest& isLocked);

} // namespace weightRounding
