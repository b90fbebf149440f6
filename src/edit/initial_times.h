// When a new Action begins and ends before its user has said so.
#pragma once

#include <string_view>

#include "core/day.h"
#include "edit/start_end.h"
#include "platform/host.h"

namespace edit {

// A new Action of a day: on today by `timeInitForNewMode`, of which an unknown number acts as the
// clock; on another day all day or at noon.
StartEnd TimesOfNew(std::u16string_view date, int timeInitForNewMode,
                    const platform::LocalTime& now);

// A new Action that starts where `former` ended. Up to now, or to the next half hour (also for an
// unknown number), if that is today; the next whole day after an all-day Action.
StartEnd TimesOfFollow(const StartEnd& former, int timeInitForFollowMode,
                       const platform::LocalTime& now);

// The day after `date`; `date` itself if it is no date.
std::u16string NextDay(std::u16string_view date);

// `date`, or the last day of its month if the day lies beyond it, or today if there is no such
// month.
std::u16string ExistingDate(const core::Day& day, const platform::LocalTime& now);

}  // namespace edit
