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
  EXPECT_EQ((Rect{72, 0, 14, 24}), day.buttons.front());
  EXPECT_EQ((Rect{226, 0, 14, 24}), day.buttons.back());
  EXPECT_EQ((Rect{0, 0, 70, 24}), day.dateLabel);
  const HeaderLayout list = LayoutHeader(320, core::kViewList);
  EXPECT_EQ(320 - 70 - 2, list.dateLabel.width) << "up to the five buttons of the navigation";
  EXPECT_EQ((Rect{72 + 3 * 14 - 1, 0, 14, 24}), WeekdayLabelRect(day, 4));
}

TEST_F(Layouts, TheListTakesWhatIsLeft) {
  const struct {
    int width, height;
    bool toolBar, okButton;
    Rect list;
    const char* why;
  } rows[] = {
      {240, 320, false, false, {0, 25, 240, 269}, "portrait"},
      {320, 240, false, true, {0, 49, 320, 165}, "landscape, under the caption"},
      {240, 60, true, true, {0, 49, 240, 0}, "never negative"},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.why);
    const WindowLayout layout = LayoutWindow(row.width, row.height, row.toolBar, row.okButton);
    EXPECT_EQ(row.list, layout.content);
    EXPECT_EQ(row.toolBar ? 24 : 0, layout.toolBar.height);
    EXPECT_EQ(row.height, layout.softKeys.y + layout.softKeys.height);
  }
  EXPECT_FALSE(IsPortrait(240, 240)) << "a square counts as landscape";
}

}  // namespace
}  // namespace views
