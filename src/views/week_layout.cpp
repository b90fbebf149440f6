// Bands and boxes of the week view.
#include "views/week_layout.h"

#include <algorithm>
#include <cstdlib>
#include <tuple>

#include "platform/metrics.h"

namespace views {
namespace {

using platform::Scaled;

constexpr int kStripWidth = 20;
constexpr int kThinnestBox = 2;  // an Action without a length, as the one that runs now
constexpr int kSecondsPerDay = 86400;

int SecondsSinceMidnight(const core::CalendarValue& moment) {
  core::CalendarParts parts;
  core::CalendarToParts(moment, parts);
  return (parts.hour * 60 + parts.minute) * 60 + parts.second;
}

int XOf(const WeekGrid& grid, const core::CalendarValue& moment) {
  const int64_t room = grid.width - grid.strip.width;
  return grid.strip.width + static_cast<int>(SecondsSinceMidnight(moment) * room / kSecondsPerDay);
}

bool IsShown(const WeekItem& item) {
  return item.dup > 0 && item.row >= 0 && item.row < kWeekDays;
}

std::vector<int> ShownInOrder(const std::vector<WeekItem>& items) {
  std::vector<int> order;
  for (size_t k = 0; k < items.size(); ++k) {
    if (IsShown(items[k])) order.push_back(static_cast<int>(k));
  }
  std::ranges::stable_sort(order, {}, [&](int k) {
    const WeekItem& item = items[static_cast<size_t>(k)];
    return std::tuple(item.row, item.start.dt, item.col);
  });
  return order;
}

// `direction` is 1 down, -1 up.
int NearestInOtherBand(const std::vector<WeekItem>& items, const std::vector<int>& order, int box,
                       int direction) {
  const WeekItem& from = items[static_cast<size_t>(box)];
  const int time = SecondsSinceMidnight(from.start);
  int nearest = box;
  std::pair<int, int> least{kWeekDays, 0};  // bands and seconds away
  for (const int k : order) {
    const WeekItem& item = items[static_cast<size_t>(k)];
    const std::pair away{(item.row - from.row) * direction,
                         std::abs(SecondsSinceMidnight(item.start) - time)};
    if (away.first < 1 || away >= least) continue;
    nearest = k;
    least = away;
  }
  return nearest;
}

}  // namespace

WeekGrid LayoutWeek(int width, int height) {
  WeekGrid grid;
  grid.width = width;
  grid.bandHeight = std::max(1, height / kWeekDays);
  grid.strip = {0, 0, Scaled(kStripWidth), grid.bandHeight * kWeekDays};
  const int room = width - grid.strip.width;
  for (int k = 1; k <= kDivisions; ++k) {
    grid.divisions[static_cast<size_t>(k - 1)] = grid.strip.width + k * room / kDivisions;
  }
  return grid;
}

Rect DayLabelRect(const WeekGrid& grid, int band) {
  return {0, band * grid.bandHeight, grid.strip.width, grid.bandHeight};
}

Rect BoxRect(const WeekGrid& grid, const WeekItem& item) {
  if (item.dup < 1) return {};
  const int left = XOf(grid, item.start);
  const int height = grid.bandHeight / item.dup;
  return {left, item.row * grid.bandHeight + item.col * height,
          std::max(XOf(grid, item.end) - left, Scaled(kThinnestBox)), height};
}

int NextBox(const std::vector<WeekItem>& items, int box, BoxStep step, int band) {
  const std::vector<int> order = ShownInOrder(items);
  if (order.empty()) return -1;
  const auto at = std::ranges::find(order, box);
  if (at == order.end()) {
    const auto isFrom = [&](int k) { return items[static_cast<size_t>(k)].row >= band; };
    const auto first = std::ranges::find_if(order, isFrom);
    return first == order.end() ? order.front() : *first;
  }
  switch (step) {
    case BoxStep::kBefore:
      return at == order.begin() ? box : *(at - 1);
    case BoxStep::kAfter:
      return at + 1 == order.end() ? box : *(at + 1);
    case BoxStep::kUp:
      return NearestInOtherBand(items, order, box, -1);
    case BoxStep::kDown:
      return NearestInOtherBand(items, order, box, 1);
  }
  return box;
}

int BandAt(const WeekGrid& grid, int y) {
  return y < 0 || y >= grid.strip.height ? -1 : y / grid.bandHeight;
}

int BoxAt(const WeekGrid& grid, const std::vector<WeekItem>& items, int x, int y) {
  if (BandAt(grid, y) < 0) return -1;
  for (size_t k = items.size(); k > 0; --k) {
    if (BoxRect(grid, items[k - 1]).Contains(x, y)) return static_cast<int>(k) - 1;
  }
  return -1;
}

}  // namespace views
