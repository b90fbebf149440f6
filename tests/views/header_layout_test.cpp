#include "views/header_layout.h"

#include <gtest/gtest.h>

#include "support/fake_host.h"

namespace views {
namespace {

class Layouts : public testing::Test {
 protected:
  testing_support::FakeHost host;
  Layouts() { core::MenuBarHeight = 26; }
};

TEST_F(Layouts, TheHeaderHangsOnTheRightEdge) {
  const HeaderLayout day = LayoutHeader(240, core::kViewDay);
  EXPECT_EQ(day.buttons.front(), (Rect{72, 0, 14, 24}));
  EXPECT_EQ(day.buttons.back(), (Rect{226, 0, 14, 24}));
  EXPECT_EQ(day.dateLabel, (Rect{0, 0, 70, 24}));
  const HeaderLayout list = LayoutHeader(320, core::kViewList);
  EXPECT_EQ(list.dateLabel.width, 320 - 70 - 2) << "up to the five buttons of the navigation";
  EXPECT_EQ(WeekdayLabelRect(day, 4), (Rect{72 + 3 * 14 - 1, 0, 14, 24}));
}

TEST_F(Layouts, TheListTakesWhatIsLeft) {
  const std::tuple<int, int, bool, bool, Rect, const char*> rows[] = {
      {240, 320, false, false, {0, 25, 240, 269}, "portrait"},
      {320, 240, false, true, {0, 49, 320, 165}, "landscape, under the caption"},
      {240, 60, true, true, {0, 49, 240, 0}, "never negative"},
  };
  for (const auto& [width, height, toolBar, okButton, list, why] : rows) {
    SCOPED_TRACE(why);
    const WindowLayout layout = LayoutWindow(width, height, toolBar, okButton);
    EXPECT_EQ(layout.content, list);
    EXPECT_EQ(layout.toolBar.height, toolBar ? 24 : 0);
    EXPECT_EQ(layout.softKeys.y + layout.softKeys.height, height);
  }
  EXPECT_FALSE(IsPortrait(240, 240)) << "a square counts as landscape";
}

}  // namespace
}  // namespace views
