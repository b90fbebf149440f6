// Where the main window's parts lie: pure functions from the window's size to rectangles, in the
// units of platform::Scaled.
#pragma once

#include <array>

#include "core/app_state.h"
#include "core/settings_choices.h"
#include "platform/rect.h"

namespace views {

using platform::Rect;

inline constexpr int kHeaderButtons = 12;

// The header's buttons from left to right: Sunday to Saturday, then the five of the navigation.
extern const std::array<int, kHeaderButtons> kHeaderButtonIds;

struct HeaderLayout {
  std::array<Rect, kHeaderButtons> buttons;
  Rect dateLabel;  // fills what the visible buttons leave
};

// The header row of a window, in its own coordinates.
HeaderLayout LayoutHeader(int width, core::View view);
bool ShowsWeekdays(core::View view);
// The label that stands in the place of the current weekday's button, slightly to the left.
Rect WeekdayLabelRect(const HeaderLayout& header, int weekday);

struct WindowLayout {
  Rect caption;  // title and (ok) button; empty where the button is hidden
  Rect header;
  Rect content;  // of the view on show
  Rect toolBar;  // empty where it is hidden
  Rect softKeys;
};

WindowLayout LayoutWindow(int width, int height, bool showsToolBar, bool showsOkButton);

// The map's pane, and the list under it or, in landscape, beside it.
struct MapLayout {
  Rect pane;
  Rect list;
  Rect blank;  // what landscape leaves under the pane
};

MapLayout LayoutMap(const Rect& content, bool portrait);

inline bool ShowsToolBar(const core::CAppState& app) {
  return app.ToolBarVwMode == core::kToolBarShown;
}

inline bool IsPortrait(int width, int height) {
  return height > width;
}

}  // namespace views
