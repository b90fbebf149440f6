// Sums, and what belongs to each of them.
#include "totals/groups.h"

#include <algorithm>
#include <unordered_map>

#include "core/text.h"
#include "totals/visit.h"

namespace totals {
namespace {

// An Action that comes back to an hour on the next day counts once there.
struct Tally {
  Seconds time = 0;
  int count = 0;
  int lastRow = -1;
  bool runs = false;

  void Take(int row, Seconds more, bool isRunning) {
    time += more;
    count += lastRow != row;
    lastRow = row;
    runs |= isRunning;
  }
};

int KeyCount(const Rows& rows, By by) {
  switch (by) {
    case By::kCategory1:
      return rows.Categories1().Count();
    case By::kCategory2:
      return rows.Categories2().Count();
    case By::kPlace:
      return rows.Places().Count();
    case By::kWeekday:
      return kWeekdays;
    case By::kHour:
      return kHours;
    case By::kNothing:
      break;
  }
  return 0;
}

class Tallies {
 public:
  Tallies(const Rows& rows, const Choices& choices)
      : rows_(rows), choices_(choices), outer_(static_cast<size_t>(KeyCount(rows, choices.by))) {}

  void Take(int position, const Row& row, const Span& inside) {
    ForEachGroup(rows_, row, inside, choices_, [&](int outer, int inner, Seconds time) {
      outer_[static_cast<size_t>(outer)].Take(position, time, row.runs);
      if (inner == Key::kAny) return;
      inner_[uint64_t{static_cast<uint32_t>(outer)} << 32 | static_cast<uint32_t>(inner)].Take(
          position, time, row.runs);
    });
  }

  std::vector<Group> Groups() const;

 private:
  const Rows& rows_;
  const Choices& choices_;
  std::vector<Tally> outer_;
  std::unordered_map<uint64_t, Tally> inner_;
};

Group GroupOf(const Key& key, const Tally& tally) {
  return {key, tally.time, tally.count, tally.runs, {}};
}

// Names decide between equals, so that nothing depends on the order of the rows.
void Sort(const Rows& rows, By by, std::vector<Group>& groups) {
  const bool isInner = !groups.empty() && groups.front().key.inner != Key::kAny;
  const auto last = [isInner](const Group& group) {
    return isInner ? group.key.inner : group.key.outer;
  };
  std::ranges::sort(groups, [&](const Group& a, const Group& b) {
    if (IsClock(by)) return last(a) < last(b);
    if (a.time != b.time) return a.time > b.time;
    if (a.count != b.count) return a.count > b.count;
    return NameOf(rows, by, last(a)) < NameOf(rows, by, last(b));
  });
}

std::vector<Group> Tallies::Groups() const {
  std::vector<Group> groups;
  std::vector<size_t> places(outer_.size());  // of each outer key among the groups
  for (size_t key = 0; key < outer_.size(); ++key) {
    if (outer_[key].count == 0) continue;
    places[key] = groups.size();
    groups.push_back(GroupOf({static_cast<int>(key)}, outer_[key]));
  }
  for (const auto& [keys, tally] : inner_) {
    const auto outer = static_cast<int>(keys >> 32);
    const auto inner = static_cast<int>(static_cast<uint32_t>(keys));
    groups[places[static_cast<size_t>(outer)]].inner.push_back(GroupOf({outer, inner}, tally));
  }
  for (Group& group : groups) Sort(rows_, InnerLevel(choices_, group.key.outer), group.inner);
  Sort(rows_, choices_.by, groups);
  return groups;
}

// The time that lies in any of the spans. A diary is mostly in the order of time, where a span
// reaches on from the last one or begins another block.
class Union {
 public:
  void Take(const Span& span) {
    if (!blocks_.empty() && span.from < blocks_.back().from) {
      isSorted_ = false;
    } else if (!blocks_.empty() && span.from <= blocks_.back().to) {
      blocks_.back().to = std::max(blocks_.back().to, span.to);
      return;
    }
    blocks_.push_back(span);
  }
  Seconds Length() const {
    if (!isSorted_) return Sorted().Length();
    Seconds length = 0;
    for (const Span& block : blocks_) length += block.Length();
    return length;
  }

 private:
  Union Sorted() const {
    std::vector<Span> spans = blocks_;
    std::ranges::sort(spans, {}, &Span::from);
    Union sorted;
    for (const Span& span : spans) sorted.Take(span);
    return sorted;
  }

  std::vector<Span> blocks_;
  bool isSorted_ = true;
};

}  // namespace

Totals Sum(const Rows& rows, const Span& span, const Choices& choices) {
  Totals totals;
  totals.span = span;
  totals.leftOut = rows.LeftOut();
  Tallies tallies(rows, choices);
  Union written;
  int position = 0;
  for (const Row& row : rows.All()) {
    const std::optional<Span> inside = Cut(row, span);
    ++position;
    if (!inside) continue;
    ++totals.count;
    totals.sum += inside->Length();
    totals.runs |= row.runs;
    written.Take(*inside);
    tallies.Take(position, row, *inside);
  }
  totals.written = written.Length();
  totals.groups = tallies.Groups();
  return totals;
}

std::u16string NameOf(const Rows& rows, By by, int key) {
  constexpr std::u16string_view kLetters = u"日月火水木金土";
  switch (by) {
    case By::kWeekday:
      return kLetters[static_cast<size_t>(key)] + std::u16string(u"曜日");
    case By::kHour:
      return core::ZeroPadded(key, 1) + u"時";
    default:
      break;
  }
  if (key == Names::kMovement) return u"移動";
  const Names& names = by == By::kCategory1   ? rows.Categories1()
                       : by == By::kCategory2 ? rows.Categories2()
                                              : rows.Places();
  return key == Names::kNone ? u"(なし)" : std::u16string(names.At(key));
}

By LevelOf(const Choices& choices, const Key& key) {
  return key.inner == Key::kAny ? choices.by : InnerLevel(choices, key.outer);
}

std::vector<int> RowsOf(const Rows& rows, const Span& span, const Choices& choices,
                        const Key& key) {
  std::vector<int> found;
  const std::vector<Row>& all = rows.All();
  for (size_t position = 0; position < all.size(); ++position) {
    const std::optional<Span> inside = Cut(all[position], span);
    if (!inside) continue;
    bool belongs = false;
    ForEachGroup(rows, all[position], *inside, choices, [&](int outer, int inner, Seconds) {
      belongs |= outer == key.outer && (key.inner == Key::kAny || inner == key.inner);
    });
    if (belongs) found.push_back(static_cast<int>(position));
  }
  std::ranges::stable_sort(found, {}, [&](int at) { return all[static_cast<size_t>(at)].start; });
  return found;
}

}  // namespace totals
