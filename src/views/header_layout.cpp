// The main window's rectangles.
#include "views/header_layout.h"

#include <algorithm>

#include "platform/metrics.h"
#include "views/commands.h"

namespace views {
namespace {

using platform::Scaled;

constexpr int kButtonStep = 14;
constexpr int kButtonRowHeight = 25;
constexpr int kCaptionHeight = 24;
constexpr int kToolBarHeight = 24;
constexpr int kFirstNavButton = 7;
constexpr int kMapPaneWidth = 240;
constexpr int kMapPaneHeight = 160;

}  // namespace

const std::array<int, kHeaderButtons> kHeaderButtonIds = {
    kSunday,   kMonday,      kTuesday,  kWednesday, kThursday,    kFriday,
    kSaturday, kBigStepBack, kStepBack, kToday,     kStepForward, kBigStepForward};

bool ShowsWeekdays(core::View view) {
  return view == core::kViewDay || view == core::kViewWeek || view == core::kViewMap;
}

HeaderLayout LayoutHeader(int width, core::View view) {
  HeaderLayout layout;
  const int step = Scaled(kButtonStep);
  const int height = Scaled(kButtonRowHeight - 1);
  for (int k = 0; k < kHeaderButtons; ++k) {
    layout.buttons[static_cast<size_t>(k)] = {width - (kHeaderButtons - k) * step, 0, step, height};
  }
  const Rect& firstVisible = layout.buttons[ShowsWeekdays(view) ? 0 : kFirstNavButton];
  layout.dateLabel = {0, 0, std::max(0, firstVisible.x - Scaled(2)), firstVisible.height};
  return layout;
}

Rect WeekdayLabelRect(const HeaderLayout& header, int weekday) {
  Rect rect = header.buttons[static_cast<size_t>(weekday - 1)];
  rect.x -= Scaled(1);
  return rect;
}

WindowLayout LayoutWindow(int width, int height, bool showsToolBar, bool showsOkButton) {
  WindowLayout layout;
  const int softKeysTop = height - core::MenuBarHeight;
  const int toolBarTop = softKeysTop - (showsToolBar ? Scaled(kToolBarHeight) : 0);
  const int headerTop = showsOkButton ? Scaled(kCaptionHeight) : 0;
  const int contentTop = headerTop + Scaled(kButtonRowHeight);
  layout.caption = {0, 0, width, headerTop};
  layout.header = {0, headerTop, width, Scaled(kButtonRowHeight)};
  layout.content = {0, contentTop, width, std::max(0, toolBarTop - contentTop)};
  layout.toolBar = {0, toolBarTop, width, softKeysTop - toolBarTop};
  layout.softKeys = {0, softKeysTop, width, core::MenuBarHeight};
  return layout;
}

MapLayout LayoutMap(const Rect& content, bool portrait) {
  // A low window has no room for the whole pane beside its bars.
  const int height = std::min(Scaled(kMapPaneHeight), content.height);
  const int rest = content.height - height;
  if (portrait) {
    return {{content.x, content.y, content.width, height},
            {content.x, content.y + height, content.width, rest},
            {}};
  }
  const int width = std::min(Scaled(kMapPaneWidth), content.width);
  return {{content.x, content.y, width, height},
          {content.x + width, content.y, content.width - width, content.height},
          {content.x, content.y + height, width, rest}};
}

}  // namespace views
