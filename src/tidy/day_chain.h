// A day as a chain from 00:00 to 24:00: its Actions, the gaps between them, and where two are at
// once. Moments are seconds from the day's beginning: below 0 before it, from kDaySeconds on after
// it. All functions are re-entrant.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "core/day.h"
#include "store/action.h"

namespace tidy {

inline constexpr int64_t kDaySeconds = int64_t{24} * 60 * 60;

struct Span {
  store::Action action;
  int64_t start = 0;
  int64_t end = 0;    // of the running Action: now, if that's after its start
  bool runs = false;  // the recorder's running Action, whose end isn't settled

  bool BeganBefore() const { return start < 0; }
  bool GoesOn() const { return end > kDaySeconds; }
};

enum class LinkKind { kAction, kGap, kOverlap };

inline constexpr size_t kNoAction = SIZE_MAX;

struct Link {
  LinkKind kind;
  int64_t from, to;  // within the day
  // Positions in DayChain::spans. Of an Action both are its own; of a gap what stands before it and
  // after it, if anything; of an overlap the one that began first and the other.
  size_t before, after;
};

struct DayChain {
  core::Day day;
  std::vector<Span> spans;  // by start, then by end
  std::vector<Link> links;
};

// Equally many Actions at once, from one moment of the day to another.
struct Stretch {
  int64_t from, to;
  int depth;
};

// The moment of a stored text; none if it is no moment.
std::optional<int64_t> ReadMoment(std::u16string_view text, const core::Day& day);
// yyyy/mm/dd hh:mm:ss
std::u16string MomentText(int64_t moment, const core::Day& day);
// "1:20"; with ":05" after it where seconds are left.
std::u16string LengthText(int64_t seconds);

// Of rows that touch the day; others, and those without times, are left out. `running` is the id of
// the running Action, or empty.
DayChain MakeChain(const core::Day& day, std::vector<store::Action> rows,
                   std::u16string_view running, int64_t now);

// The whole day, without a gap.
std::vector<Stretch> StretchesOf(const DayChain& chain);

// What a message calls an Action: its place, or else a category, or its start.
std::u16string NameOf(const Span& span);

}  // namespace tidy
