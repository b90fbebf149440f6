// The picture of a period of several days: a column for each day, week or month, stacked by the
// greatest groups.
#pragma once

#include <vector>

#include "totals/groups.h"
#include "totals/period.h"

namespace totals {

// Groups that have a colour of their own; all others share one.
inline constexpr size_t kMostSlots = 7;

struct Columns {
  ColumnPlan plan;
  std::vector<int> greatest;  // outer keys of the greatest groups, in the order of the groups
  bool hasOthers = false;     // groups without a slot
  // Of each column, the time of each slot and, last, that of the others.
  std::vector<std::vector<Seconds>> times;
  Seconds highest = 0;  // of the columns

  // The slot of a group; greatest.size() for one of the others.
  size_t SlotOf(int outer) const;
};

// `totals` are those of the same rows, days and choices.
Columns Stack(const Rows& rows, const Period& period, const Choices& choices, const Totals& totals);

}  // namespace totals
