// Reading the Actions of a period out of the open data file. Nothing else here knows the store, and
// nothing of it changes anything: a find stays.
#pragma once

#include <optional>
#include <string>

#include "core/app_state.h"
#include "platform/late_wait.h"
#include "totals/groups.h"
#include "totals/period.h"
#include "totals/rows.h"

namespace totals {

// Fills `rows` with the Actions that have any part in the period, each read once, and the
// recorder's running one, which may reach into it by now. `find` is the condition that they all
// meet, or empty. Of the texts only those that `choices` sum up by are read. The index of `app` is
// read to its end first, and mended if need be. False, after a message, if reading failed; `rows`
// then holds what was read.
bool ReadPeriod(core::CAppState& app, const Period& period, const std::u16string& find,
                const Choices& choices, Rows& rows, platform::LateWait& wait);

// The texts by which a list shows an Action.
struct ActionTexts {
  std::u16string id, start, end, place, category1, category2, memo;
};
// None if it is gone.
std::optional<ActionTexts> ReadTexts(int64_t row);

}  // namespace totals
