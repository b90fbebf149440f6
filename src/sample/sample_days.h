// What the person of the sample diary does on a day: works in the next town, rides home, and sees
// Kamakura at weekends.
#pragma once

#include <chrono>
#include <vector>

#include "store/action.h"

namespace sample {

// By their starts, some fifteen of them; the last may end on the next day. Actions that overlap are
// whole days, or those that run meanwhile, kMeanwhile.
std::vector<store::Action> ActionsOf(std::chrono::sys_days date);

inline constexpr std::u16string_view kMeanwhile = u"洗濯";  // their second category

}  // namespace sample
