#include "platform/screen_plan.h"

#include <gtest/gtest.h>

using platform::PlanScreen;
using platform::ScreenSize;

TEST(ScreenPlan, EnlargesByTheScreenItFinds) {
  const std::tuple<const char*, ScreenSize, double, bool> rows[] = {
      {"a desktop has two pixels a unit", {1920, 1080, 530, 300}, 2.0, false},
      {"a desktop turned upright is no phone", {1080, 1920, 300, 530}, 2.0, false},
      {"a low laptop keeps the window's frame on the screen", {1024, 600, 220, 130}, 1.5, false},
      {"a phone's X server counts its pixels", {720, 1440, 65, 130}, 3.0, true},
      {"a phone whose X server does not know its millimetres", {720, 1440, 190, 381}, 3.0, true},
      {"a phone held sideways", {1440, 720, 130, 65}, 3.0, true},
      {"a pocket screen of two pixels a unit", {480, 640, 127, 169}, 2.0, true},
      {"a watch is drawn no smaller", {200, 200, 35, 35}, 1.0, true},
      {"millimetres that a driver made up", {1280, 1024, 16, 9}, 2.0, false},
      {"no screen at all", {0, 0, 0, 0}, 1.0, true},
  };
  for (const auto& [why, screen, pixelsPerUnit, fillsScreen] : rows) {
    SCOPED_TRACE(why);
    EXPECT_DOUBLE_EQ(PlanScreen(screen).pixelsPerUnit, pixelsPerUnit);
    EXPECT_EQ(PlanScreen(screen).fillsScreen, fillsScreen);
  }
}

TEST(ScreenPlan, AUsersScaleNeitherShrinksNorCutsTheWindow) {
  const ScreenSize laptop{1366, 768, 310, 174};
  const std::tuple<ScreenSize, double, double, int, int> rows[] = {
      {laptop, 1.0, 1.0, 480, 640},
      {laptop, 1.25, 1.25, 384, 512},
      {laptop, 3.0, 2.15, 240, 320},
      {{3840, 2160, 600, 340}, 3.0, 3.0, 240, 320},
      {{720, 1440, 65, 130}, 4.0, 3.0, 240, 320},
  };
  for (const auto& [screen, users, pixelsPerUnit, unitsWide, unitsHigh] : rows) {
    SCOPED_TRACE(testing::Message() << screen.width << " times " << users);
    const platform::ScreenPlan plan = PlanScreen(screen, users);
    EXPECT_DOUBLE_EQ(plan.pixelsPerUnit, pixelsPerUnit);
    EXPECT_EQ(plan.unitsWide, unitsWide);
    EXPECT_EQ(plan.unitsHigh, unitsHigh);
  }
}
