// Where the week view's bands and boxes lie: pure functions from the size of its picture, in the
// units of platform::Scaled and counted from the picture's upper left corner.
#pragma once

#include <array>

#include "views/header_layout.h"
#include "views/week_view.h"

namespace views {

inline constexpr int kDivisions = 6;  // of a day, four hours each

struct WeekGrid {
  Rect strip;          // with the days of the month; as high as the seven bands
  int width = 0;       // of the whole picture
  int bandHeight = 0;  // at least 1
  std::array<int, kDivisions> divisions{};  // x of the end of each
};

WeekGrid LayoutWeek(int width, int height);
// The band's part of the strip.
Rect DayLabelRect(const WeekGrid& grid, int band);
// Empty for an item without a lane. A box is never too narrow to be seen.
Rect BoxRect(const WeekGrid& grid, const WeekItem& item);

// 0 to 6, or -1 outside the bands.
int BandAt(const WeekGrid& grid, int y);
// The position in `items` of the box on top at a point, or -1.
int BoxAt(const WeekGrid& grid, const std::vector<WeekItem>& items, int x, int y);

// The box to which an arrow leads from `box`: the one before or after it by band, start and lane,
// or the one nearest in time in the next band that has any. From -1 the first on or after `band`,
// or the first of all. `box` itself where there is no other, -1 where there is none at all.
enum class BoxStep { kBefore, kAfter, kUp, kDown };
int NextBox(const std::vector<WeekItem>& items, int box, BoxStep step, int band);

}  // namespace views
