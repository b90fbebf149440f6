// The numbers of the commands that the header and the views send to the window, which are also the
// object names of the controls that send them, and the menus that they have it open.
#pragma once

namespace views {

enum Command : int {
  kDateLabel = 1050,
  kSunday = 1051,
  kMonday = 1052,
  kTuesday = 1053,
  kWednesday = 1054,
  kThursday = 1055,
  kFriday = 1056,
  kSaturday = 1057,
  kToday = 1058,
  kStepForward = 1059,
  kBigStepForward = 1060,
  kStepBack = 1061,
  kBigStepBack = 1062,
  kNew = 32781,
  kMonthOpen = 32850,
  kMonthShowDay = 32851,
  kBoxChange = 32870,
  kBoxDelete = 32873,
  kMarkerChange = 32881,
  kTidy = 33263,
};

// The right soft key's menu and those in it, then those of tap and hold. A command can be in
// several.
enum Menu : unsigned {
  kTopMenu = 1,
  kFileMenu = 2,
  kEditMenu = 4,
  kViewMenu = 8,
  kToolsMenu = 16,
  kWeekBoxMenu = 32,
  kWeekDayMenu = 64,
  kMonthDayMenu = 128,
  kMapMenu = 256,
};

}  // namespace views
