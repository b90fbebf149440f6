// How large a unit of the device's screen is drawn, and whether the window fills the screen.
#pragma once

namespace platform {

// The screen before any enlarging of ours: its size in pixels as the window system counts them, and
// in millimetres, 0 where that is unknown.
struct ScreenSize {
  int width = 0;
  int height = 0;
  int millimetresWide = 0;
  int millimetresHigh = 0;
};

struct ScreenPlan {
  double pixelsPerUnit = 1.0;  // at least 1
  bool fillsScreen = false;
  // Of the window as it opens, in units; without meaning where it fills the screen.
  int unitsWide = 240;
  int unitsHigh = 320;
};

// A hand-held screen is 240 units wide (its shorter side) and the window fills it. On a desktop a
// unit is two pixels, less where 320 units and the window's frame would not fit the screen.
ScreenPlan PlanScreen(const ScreenSize& screen);

// The same where the user has set the pixels of a unit. Larger ones are cut to what leaves 240 by
// 320 units on the screen; with smaller ones the window has more units, and its size in pixels.
ScreenPlan PlanScreen(const ScreenSize& screen, double usersPixelsPerUnit);

}  // namespace platform
