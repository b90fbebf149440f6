// A find narrows the Action index to the rows of a condition, and leaves the condition for
// the views' own queries. ReloadActionIndex drops it again.
#pragma once

#include <functional>
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

inline constexpr int kFindFailed = -101;
inline constexpr int kFindStopped = -102;

// Called while a find goes through the diary, every 20 ms or so, with the hundredths that it has
// gone through, below kFindIsThrough. False stops it.
inline constexpr int kFindIsThrough = 100;
using FindProgress = std::function<bool(int hundredths)>;

// Puts the condition into FindWhere and the rows it finds into the Action index, by start
// ascending. Their number, or kFindFailed: a select that cannot run leaves the index as it is, a
// row that cannot be read leaves what was read. kFindStopped, with all as it was.
int FindActions(core::CAppState& app, const FindSpan& span, std::u16string_view text, int mask,
                const FindProgress& progress = {});

}  // namespace exchange
