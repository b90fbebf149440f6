// The Action index of the application object: all Actions as ids and starts, sorted by start, a
// copy of the session's that is taken whole after every change. Its lookups need no SQL.
#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "core/app_state.h"

namespace store {

// Reads ids and starts of all rows into the lists and sets both counts. 0, -3 if the select failed,
// -101 if a row could not be read; the lists then hold what was read.
int LoadActionIndex(core::CAppState& app);

// Drops the find and rebuilds the index, then sets ListPage to the page of the current date.
// 0, -2 (the page was not found), -3, -101.
int ReloadActionIndex(core::CAppState& app);

// After a start only what was asked for of a large index has been read. Reads some more of it: a
// millisecond or two, if the disk has it ready. kDamaged until it's mended: positions and ids may
// be wrong, and nothing else.
enum class Ahead { kMore, kWhole, kDamaged };
Ahead ReadAhead();
// Has a damaged index read from the diary, by ReloadActionIndex; a find stays.
void MendActionIndex(core::CAppState& app);
// For what goes through all of the index: reads what's left of it and mends it if it's damaged.
void ReadWholeActionIndex(core::CAppState& app);

// First position whose start is at or after the moment (kAtOrAfter) or after it (kAfter);
// IndexCount if there is none, -101 if the index is empty.
enum class LowerMode { kAfter = 0, kAtOrAfter = 1 };
int FindActionIndexLower(const core::CAppState& app, std::u16string_view date,
                         std::u16string_view time, LowerMode mode);

// Page of the list view, 0 the newest, that holds a moment. Pages are cut from the newest end, so
// the oldest one takes the remainder. An empty `time` means "24:00:00". 0 for an empty index or
// date; a page size of 0 means what fits the list control now (app.ListRowsPerScreen).
int FindActionIndexByPosition(const core::CAppState& app, std::u16string_view date,
                              std::u16string_view time, int pageSize);

// Exact position of an id, -1 if it isn't in the index; -101 empty index, -103 select failed,
// -104 no such row, -105 read failed.
int FindActionPosition(const core::CAppState& app, std::u16string_view actId);

// The SQL condition of the Actions at these places of the session's sorted starts.
std::u16string PlacesCondition(std::span<const size_t> places);

// The SQL condition of the Actions that start before `to` and end at `from` or later, each
// "yyyy/mm/dd" or "yyyy/mm/dd hh:mm:ss", found without reading the others. It's that of the moment:
// a later change isn't in it. None if no file is open or a changed row can't be read.
std::optional<std::u16string> TouchingCondition(std::u16string_view from, std::u16string_view to);

}  // namespace store
