// The id of an Action: "ID", the local date and time in 14 digits, and a random tail of two.
#pragma once

#include <string>
#include <string_view>

#include "platform/host.h"

namespace core {

// From the host's clock and one draw r: the tail is r × 100 / 32767, so that r = 32767 gives "100"
// and an id of 19 characters, which CheckActId refuses (kept on purpose).
std::u16string GenerateActId();
// The same for another moment than the clock's.
std::u16string GenerateActId(const platform::LocalTime& moment);

// 0; -1 if the length is not 18; -2 if it does not begin with "ID".
int CheckActId(std::u16string_view id);

}  // namespace core
