// What the commands of the tidy screen make of a day: from the chain and what was chosen in it to
// the rows to write, or the reason why not. All functions are re-entrant.
#pragma once

#include <string>
#include <vector>

#include "tidy/day_chain.h"

namespace tidy {

enum class WriteKind { kInsert, kUpdate, kDelete };

struct RowWrite {
  WriteKind kind;
  store::Action action;  // an inserted one has no id
};

struct Outcome {
  std::vector<RowWrite> writes;
  std::u16string refusal;  // a sentence; empty if the writes may be made
};

// All that meet at `from` follow to `to`. Refused where one of them would be left without a length,
// or come over another Action.
Outcome MoveBoundary(const DayChain& chain, int64_t from, int64_t to);

// On a gap: what stands before it goes on to its end; what stands after it begins at its beginning.
Outcome ExtendBefore(const DayChain& chain, const Link& gap);
Outcome AdvanceAfter(const DayChain& chain, const Link& gap);

// On an overlap: the first ends where the second begins; the second begins where the first ends;
// the first goes on around the second, as two.
Outcome TrimBefore(const DayChain& chain, const Link& overlap);
Outcome DelayAfter(const DayChain& chain, const Link& overlap);
Outcome SplitOuter(const DayChain& chain, const Link& overlap);
// The second ends before the first does, which the other two commands can't mend.
bool IsInside(const DayChain& chain, const Link& overlap);

// Both halves keep all fields. The later one of two is new; of the running Action it's the earlier
// one, as that goes on under its id.
Outcome Split(const DayChain& chain, size_t span, int64_t at);

// The Action after a span, by start; kNoAction for none.
size_t NextOf(const DayChain& chain, size_t span);
// Place or category differ: its user is asked first.
bool DiffersFromNext(const DayChain& chain, size_t span);
// Both become one, from the start of the first to the later end, with both memos.
Outcome JoinWithNext(const DayChain& chain, size_t span);

Outcome Delete(const DayChain& chain, size_t span);

}  // namespace tidy
