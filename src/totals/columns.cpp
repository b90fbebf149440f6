#include "totals/columns.h"

#include <algorithm>
#include <numeric>

#include "totals/visit.h"

namespace totals {
namespace {

std::vector<int> GreatestGroups(const std::vector<Group>& groups) {
  std::vector<const Group*> greatest;
  greatest.reserve(groups.size());
  for (const Group& group : groups) greatest.push_back(&group);
  const size_t count = std::min(groups.size(), kMostSlots);
  std::ranges::stable_sort(greatest, std::greater(), &Group::time);
  greatest.resize(count);
  std::vector<int> keys;
  for (const Group& group : groups) {
    if (std::ranges::find(greatest, &group) != greatest.end()) keys.push_back(group.key.outer);
  }
  return keys;
}

// By outer key.
std::vector<size_t> SlotsByKey(const Columns& columns, const std::vector<Group>& groups) {
  std::vector<size_t> slots;
  for (const Group& group : groups) {
    const auto key = static_cast<size_t>(group.key.outer);
    if (slots.size() <= key) slots.resize(key + 1, columns.greatest.size());
    slots[key] = columns.SlotOf(group.key.outer);
  }
  return slots;
}

// The row's time in each column that it reaches into, by the slots of its outer keys.
void AddRow(const Rows& rows, const Row& row, const Choices& choices,
            const std::vector<size_t>& slots, Columns& columns) {
  const std::vector<DayNumber>& edges = columns.plan.edges;
  const auto after = std::ranges::upper_bound(edges, DayAt(row.start));
  const auto reached = static_cast<size_t>(after - edges.begin());
  for (size_t column = reached > 0 ? reached - 1 : 0;
       column < columns.times.size() && edges[column] * kDaySeconds < row.end; ++column) {
    const std::optional<Span> part =
        Cut(row, {edges[column] * kDaySeconds, edges[column + 1] * kDaySeconds});
    if (!part) continue;
    std::vector<Seconds>& times = columns.times[column];
    ForEachGroup(rows, row, *part, choices, [&](int outer, int, Seconds time) {
      times[slots[static_cast<size_t>(outer)]] += time;
    });
  }
}

}  // namespace

size_t Columns::SlotOf(int outer) const {
  return static_cast<size_t>(std::ranges::find(greatest, outer) - greatest.begin());
}

Columns Stack(const Rows& rows, const Period& period, const Choices& choices,
              const Totals& totals) {
  Columns columns;
  columns.plan = PlanColumns(period);
  columns.greatest = GreatestGroups(totals.groups);
  columns.hasOthers = totals.groups.size() > columns.greatest.size();
  if (columns.plan.edges.empty()) return columns;
  columns.times.assign(columns.plan.edges.size() - 1,
                       std::vector<Seconds>(columns.greatest.size() + 1));
  const std::vector<size_t> slots = SlotsByKey(columns, totals.groups);
  const Choices outerOnly{choices.by, By::kNothing, choices.movementsApart};
  for (const Row& row : rows.All()) AddRow(rows, row, outerOnly, slots, columns);
  for (const std::vector<Seconds>& times : columns.times) {
    columns.highest = std::max(columns.highest, std::reduce(times.begin(), times.end()));
  }
  return columns;
}

}  // namespace totals
