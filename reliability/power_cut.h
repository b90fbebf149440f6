// What a disk may hold after the power went: everything that was brought to it, and of the rest any
// part in any order.
#pragma once

#include <filesystem>
#include <random>

#include "reliability/calls.h"

namespace reliability {

// Fills the empty `folder` with what may be left of the first `events` events of the log, in which
// 512-byte blocks of a write may be torn and names come to the disk in their order. Returns the
// number of the last mark among these events, 0 for none.
uint64_t CutPower(const EventLog& log, long events, std::minstd_rand& chance,
                  const std::filesystem::path& folder);

}  // namespace reliability
