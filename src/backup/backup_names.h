// Where the copies of a diary lie and what they are called, and which of the daily ones have had
// their time. A name is made of the diary's own, so that two diaries in a folder don't meet.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "core/day.h"
#include "platform/host.h"

namespace backup {

// The path itself, or what a link at it leads to.
std::u16string RealPath(std::u16string_view path);

// `backup` beside the data file; of a link beside the file that it leads to.
std::u16string BackupFolder(std::u16string_view dataFile);

// Of "user.sdf": "user_20261122.sdf", which a user's own backup is offered;
std::u16string DatedName(std::u16string_view dataFile, const core::Day& day);
// "user_20261122_auto.sdf", the copy of a day;
std::u16string DailyName(std::u16string_view dataFile, const core::Day& day);
// "user_20261122_104530.sdf", what a restored file took the place of.
std::u16string MomentName(std::u16string_view dataFile, const platform::LocalTime& moment);

// After a name: a copy that isn't whole yet.
inline constexpr std::u16string_view kUnfinished = u".new";

// Those of `names` that are copies of days and may go: all but the newest seven, and the last one
// of each of the newest twelve months that have any. The copy of `today` stays; unfinished copies
// go. A name that isn't DailyName's to the letter isn't among them.
std::vector<std::u16string> OutdatedCopies(const std::vector<std::u16string>& names,
                                           std::u16string_view dataFile, const core::Day& today);

}  // namespace backup
