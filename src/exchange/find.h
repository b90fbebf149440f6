// A find narrows the Action index to the rows of a condition, and leaves the condition for
// the views' own queries. ReloadActionIndex drops it again.
#pragma once

#include <string>
#include <string_view>

#include "core/app_state.h"

namespace exchange {

// Which columns a find looks into.
enum FindTarget { kFindInPlace = 1, kFindInCategory1 = 2, kFindInCategory2 = 4, kFindInMemo = 8 };

// The dialog's bounds: dates of 10 characters, times of 8, each empty for none. A start of 00:00:00
// with an end of 24:00:00 finds only what ends at the end of a day.
struct FindSpan {
  std::u16string staDate, staTime, endDate, endTime;
};

// The condition as SQL text without the word where; empty if nothing is asked for. `text` is one
// pattern, in which "%" and "_" are wildcards; an empty one matches every row whose column is not
// NULL. `mask` joins values of FindTarget.
std::u16string FindCondition(const FindSpan& span, std::u16string_view text, int mask);

// Puts the condition into FindWhere and the rows it finds into the Action index, by start
// ascending. Their number, or -101 on a failure: a select that cannot run leaves the index as it
// is, a row that cannot be read leaves what was read.
int FindActions(core::CAppState& app, const FindSpan& span, std::u16string_view text, int mask);

}  // namespace exchange
