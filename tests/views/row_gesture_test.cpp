#include "views/row_gesture.h"

#include <gtest/gtest.h>

namespace views {
namespace {

constexpr RowRange kTenRows = {0, 9};
constexpr int kNoRow = -1;

TEST(RowGesture, WhatAPressAndItsReleaseMean) {
  using Tap = RowGesture::Tap;
  const std::tuple<int, bool, int, Tap, const char*> rows[] = {
      {3, false, 3, Tap::kOpenRow, "a tap opens its row"},
      {3, false, 4, Tap::kNone, "a drag opens nothing"},
      {3, true, 3, Tap::kNone, "the tap only closed the popup"},
      {kNoRow, false, kNoRow, Tap::kNewAction, "below the rows: a new Action"},
      {4, false, kNoRow, Tap::kNone, "the other way round"},
  };
  for (const auto& [press, closedPopup, release, tap, why] : rows) {
    SCOPED_TRACE(why);
    RowGesture gesture;
    gesture.Press(press, closedPopup);
    gesture.Move(release, kTenRows);
    EXPECT_EQ(gesture.Release(release), tap);
    EXPECT_EQ(gesture.Release(release), Tap::kNone) << "a release without a press";
  }
}

TEST(RowGesture, AHeldRowIsNotOpened) {
  RowGesture gesture;
  gesture.Press(3, false);
  gesture.Hold();
  EXPECT_FALSE(gesture.Move(4, kTenRows).selects);
  EXPECT_EQ(gesture.Release(3), RowGesture::Tap::kNone);
}

TEST(RowGesture, ADragCoversTheRowsFromThePressOn) {
  RowGesture gesture;
  gesture.Press(5, false);
  EXPECT_FALSE(gesture.Move(5, kTenRows).selects) << "still on the row";
  EXPECT_EQ(gesture.Move(7, kTenRows).selection, (RowRange{5, 7}));
  EXPECT_EQ(gesture.Move(6, kTenRows).selection, (RowRange{5, 6})) << "turned back";
  EXPECT_EQ(gesture.Move(3, kTenRows).selection, (RowRange{3, 5})) << "over the pressed row";
  EXPECT_FALSE(gesture.Move(kNoRow, kTenRows).selects);
  EXPECT_FALSE(gesture.Move(8, kTenRows).selects) << "leaving the rows has ended the drag";
}

TEST(RowGesture, TheEdgesScroll) {
  const std::tuple<int, RowRange, int> rows[] = {
      {20, {20, 29}, -1}, {29, {20, 29}, 1}, {24, {20, 29}, 0},
      {20, {20, 20}, 0},  {30, {20, 29}, 1},
  };
  for (const auto& [to, visible, scrollBy] : rows) {
    RowGesture gesture;
    gesture.Press(25, false);
    EXPECT_EQ(gesture.Move(to, visible).scrollBy, scrollBy) << to;
  }
}

}  // namespace
}  // namespace views
