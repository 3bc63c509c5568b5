// weightRounding: the display rounding of vertex rows. Each positive weight is rounded to the
// precision, then one weight of the row takes the remainder so that the shown row sums to one
// again: after a load or rebuild the last positive weight, when the row is off by no more than
// rounding explains; after an edit the first weight that is neither the edited one nor locked.
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

// The correction after a load: the last positive weight takes 1 minus the others when their
// total lies within 10^-precision + 10^-(precision + 1) of one.
Correction absorbIntoLastWeight(WeightRow& row, int precision);

// The correction after an edit: among the positive weights in column order, the first whose
// column is not `editedColumn` and not locked takes the remainder; the first positive weight
// when all are excluded. A value is placed by its leftmost equal in the row (element 0
// included), so equal weights resolve to the leftmost column holding them. Rows with fewer
// than two positive weights are left as they are.
Correction absorbIntoFreeWeight(WeightRow& row, int editedColumn,
                                const std::function<bool(int column)>& isLocked);

} // namespace weightRounding
