#include "tidy/commands.h"

#include <algorithm>

#include "core/date_time.h"
#include "store/user_data_table.h"

namespace tidy {
namespace {

using Text = std::u16string;

constexpr size_t kLongestMemo = 2000;  // as its column is declared

Outcome Refuse(Text sentence) {
  return {{}, std::move(sentence)};
}

Text Quoted(const Span& span) {
  return u"「" + NameOf(span) + u"」";
}

// An end of "24:00:00" stays as it is written, but only a start of 00:00:00 may have one.
void SetStart(const DayChain& chain, const Span& span, int64_t start, store::Action& action) {
  const bool isMoment = action[store::kStaDateTime] == action[store::kEndDateTime];
  action[store::kStaDateTime] = MomentText(start, chain.day);
  if (span.runs && (isMoment || action[store::kEndDateTime] < action[store::kStaDateTime])) {
    action[store::kEndDateTime] = action[store::kStaDateTime];
  } else if (store::CheckActionTimes(action) != 0) {
    action[store::kEndDateTime] = MomentText(span.end, chain.day);
  }
}

void SetEnd(const DayChain& chain, int64_t end, store::Action& action) {
  action[store::kEndDateTime] = MomentText(end, chain.day);
}

RowWrite StartAt(const DayChain& chain, size_t at, int64_t start) {
  RowWrite write{WriteKind::kUpdate, chain.spans[at].action};
  SetStart(chain, chain.spans[at], start, write.action);
  return write;
}

RowWrite EndAt(const DayChain& chain, size_t at, int64_t end) {
  RowWrite write{WriteKind::kUpdate, chain.spans[at].action};
  SetEnd(chain, end, write.action);
  return write;
}

RowWrite CopyOf(const DayChain& chain, const Span& span, int64_t start, int64_t end) {
  RowWrite copy{WriteKind::kInsert, span.action};
  copy.action[store::kActId].reset();
  copy.action[store::kStaDateTime] = MomentText(start, chain.day);
  copy.action[store::kEndDateTime] =
      end == span.end && !span.runs ? span.action[store::kEndDateTime] : MomentText(end, chain.day);
  if (store::CheckActionTimes(copy.action) != 0) SetEnd(chain, end, copy.action);
  return copy;
}

Outcome RefuseRunning(const Span& span) {
  return Refuse(u"記録中の" + Quoted(span) + u"の終わりは、まだ決まっていません。");
}

Outcome RefuseEmpty(const Span& span) {
  return Refuse(Quoted(span) + u"の長さがなくなります。");
}

Outcome RefuseSame(const Span& first, const Span& second) {
  return Refuse(Quoted(first) + u"と" + Quoted(second) +
                u"は同じ時間です。時刻を変えるか、どちらかを削除してください。");
}

// One of those that meet at a boundary, with its times after the move.
struct Moved {
  size_t at;
  int64_t start, end;
};

std::vector<Moved> MeetingAt(const DayChain& chain, int64_t from, int64_t to) {
  std::vector<Moved> moved;
  for (size_t i = 0; i < chain.spans.size(); ++i) {
    const Span& span = chain.spans[i];
    const bool starts = span.start == from;
    const bool ends = span.end == from && !span.runs;
    if (starts || ends) moved.push_back({i, starts ? to : span.start, ends ? to : span.end});
  }
  return moved;
}

bool Meet(const Span& span, int64_t start, int64_t end) {
  return span.start < end && span.end > start;
}

// The first Action that `moved` comes over, and didn't stand over before.
const Span* FindInTheWay(const DayChain& chain, const Moved& moved, const std::vector<Moved>& all) {
  const Span& former = chain.spans[moved.at];
  for (size_t i = 0; i < chain.spans.size(); ++i) {
    const Span& other = chain.spans[i];
    const bool follows = std::ranges::find(all, i, &Moved::at) != all.end();
    if (!follows && Meet(other, moved.start, moved.end) && !Meet(other, former.start, former.end)) {
      return &other;
    }
  }
  return nullptr;
}

// What `kept` has nothing for, it takes over.
void FillFrom(const store::Action& other, store::Action& kept) {
  for (size_t i = store::kLatitude; i < store::kActionColumnCount; ++i) {
    if (!kept[i] || kept[i]->empty()) kept[i] = other[i];
  }
}

Text JoinedMemo(const Span& first, const Span& second) {
  const Text former(TextOf(first.action, store::kMemo));
  const Text latter(TextOf(second.action, store::kMemo));
  const bool isBoth = !former.empty() && !latter.empty() && former != latter;
  return isBoth ? former + u"\r\n" + latter : Text();
}

}  // namespace

Outcome MoveBoundary(const DayChain& chain, int64_t from, int64_t to) {
  Outcome outcome;
  if (from == to) return outcome;
  const std::vector<Moved> all = MeetingAt(chain, from, to);
  for (const Moved& moved : all) {
    const Span& span = chain.spans[moved.at];
    const bool wasMoment = span.start == span.end;
    if (!wasMoment && moved.end <= moved.start) return RefuseEmpty(span);
    if (const Span* other = FindInTheWay(chain, moved, all)) {
      return Refuse(Quoted(*other) + u"に重なります。");
    }
    RowWrite write{WriteKind::kUpdate, span.action};
    if (moved.start != span.start) SetStart(chain, span, moved.start, write.action);
    if (moved.end != span.end) SetEnd(chain, moved.end, write.action);
    outcome.writes.push_back(std::move(write));
  }
  return outcome;
}

Outcome ExtendBefore(const DayChain& chain, const Link& gap) {
  if (gap.before == kNoAction) return Refuse(u"前のアクションがありません。");
  if (chain.spans[gap.before].runs) return RefuseRunning(chain.spans[gap.before]);
  return {{EndAt(chain, gap.before, gap.to)}, {}};
}

Outcome AdvanceAfter(const DayChain& chain, const Link& gap) {
  if (gap.after == kNoAction) return Refuse(u"後のアクションがありません。");
  return {{StartAt(chain, gap.after, gap.from)}, {}};
}

bool IsInside(const DayChain& chain, const Link& overlap) {
  const Span& first = chain.spans[overlap.before];
  const Span& second = chain.spans[overlap.after];
  return first.start < second.start && second.end < first.end;
}

Outcome TrimBefore(const DayChain& chain, const Link& overlap) {
  const Span& first = chain.spans[overlap.before];
  const Span& second = chain.spans[overlap.after];
  if (first.runs) return RefuseRunning(first);
  if (second.start == first.start && second.end == first.end) return RefuseSame(first, second);
  if (second.start <= first.start) return RefuseEmpty(first);
  if (IsInside(chain, overlap)) return Refuse(Quoted(first) + u"は後にも続きます。");
  return {{EndAt(chain, overlap.before, second.start)}, {}};
}

Outcome DelayAfter(const DayChain& chain, const Link& overlap) {
  const Span& first = chain.spans[overlap.before];
  const Span& second = chain.spans[overlap.after];
  if (first.runs) return RefuseRunning(first);
  if (second.end <= first.end) return RefuseEmpty(second);
  return {{StartAt(chain, overlap.after, first.end)}, {}};
}

Outcome SplitOuter(const DayChain& chain, const Link& overlap) {
  const Span& first = chain.spans[overlap.before];
  const Span& second = chain.spans[overlap.after];
  if (first.runs) return RefuseRunning(first);
  if (!IsInside(chain, overlap)) return RefuseEmpty(first);
  return {{EndAt(chain, overlap.before, second.start), CopyOf(chain, first, second.end, first.end)},
          {}};
}

Outcome Split(const DayChain& chain, size_t at, int64_t moment) {
  const Span& span = chain.spans[at];
  if (moment <= span.start || moment >= span.end) {
    return Refuse(u"分ける時刻は、始まりと終わりの間にしてください。");
  }
  if (span.runs) {
    return {{CopyOf(chain, span, span.start, moment), StartAt(chain, at, moment)}, {}};
  }
  return {{EndAt(chain, at, moment), CopyOf(chain, span, moment, span.end)}, {}};
}

size_t NextOf(const DayChain& chain, size_t at) {
  return at + 1 < chain.spans.size() ? at + 1 : kNoAction;
}

bool DiffersFromNext(const DayChain& chain, size_t at) {
  const size_t next = NextOf(chain, at);
  if (next == kNoAction) return false;
  const store::Action& action = chain.spans[at].action;
  const store::Action& other = chain.spans[next].action;
  return std::ranges::any_of(
      std::initializer_list<store::ActionColumn>{store::kPlace, store::kCategory1,
                                                 store::kCategory2},
      [&](store::ActionColumn column) { return TextOf(action, column) != TextOf(other, column); });
}

Outcome JoinWithNext(const DayChain& chain, size_t at) {
  const size_t next = NextOf(chain, at);
  if (next == kNoAction) return Refuse(u"次のアクションがありません。");
  const Span& first = chain.spans[at];
  const Span& second = chain.spans[next];
  if (first.runs) return RefuseRunning(first);
  const Text memo = JoinedMemo(first, second);
  if (memo.size() > kLongestMemo) return Refuse(u"つなぐとメモが長くなりすぎます。");
  const Span& gone = second.runs ? first : second;
  RowWrite kept = second.runs              ? StartAt(chain, next, first.start)
                  : second.end > first.end ? EndAt(chain, at, second.end)
                                           : RowWrite{WriteKind::kUpdate, first.action};
  FillFrom(gone.action, kept.action);
  if (!memo.empty()) kept.action[store::kMemo] = memo;
  return {{std::move(kept), {WriteKind::kDelete, gone.action}}, {}};
}

Outcome Delete(const DayChain& chain, size_t at) {
  return {{{WriteKind::kDelete, chain.spans[at].action}}, {}};
}

}  // namespace tidy
