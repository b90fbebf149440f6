// Every command of the main window in one table: its number, text, menu, key and the views in which
// it is live. In the others it stands in the menus greyed.
#pragma once

#include <array>
#include <span>
#include <string_view>

#include "core/app_state.h"

namespace views {

// The numbers are also the object names of the controls that send them.
enum Command : int {
  kShellOk = 1,
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
  kToolNew = 5006,
  kToolDelete = 5007,
  kToolFind = 5012,
  kExport = 32771,
  kImport = 32772,
  kNew = 32781,
  kChange = 32782,
  kReference = 32783,
  kFollow = 32784,
  kDelete = 32785,
  kMove = 32787,
  kShowDay = 32791,  // to 32795, in the order of the views' numbers
  kShowWeek = 32792,
  kShowMonth = 32793,
  kShowList = 32794,
  kShowMap = 32795,
  kMenuToday = 32796,
  kSpanningMode = 32797,
  kToolBarMode = 32798,
  kRecorder = 32801,
  kFind = 32802,
  kFindClear = 32803,
  kOptions = 32804,
  kMonthOpen = 32850,
  kMonthShowDay = 32851,
  kWeekShowDay = 32852,
  kBoxChange = 32870,
  kBoxReference = 32871,
  kBoxFollow = 32872,
  kBoxDelete = 32873,
  kMarkerChange = 32881,
  kMarkerReference = 32882,
  kMarkerFollow = 32883,
  kMarkerDelete = 32884,
  kMapNew = 32885,
  kMapPointLink = 33880,
  kMapLink = 37786,
  kQuitKey = 40000,
  kSoftKeyNew = 40002,
  kAbout = 40101,
  kQuit = 40102,
};

// The menus of the soft key, and behind them those of tap and hold alone.
enum class Menu { kNone, kTop, kFile, kEdit, kView, kTools, kWeekBox, kWeekDay, kMonthDay, kMap };

struct CommandRow {
  int id;
  std::u16string_view text;
  Menu menu;  // the table's order is the menu's order
  std::string_view key;
  unsigned liveIn;  // bit 1 << view
};

std::span<const CommandRow> Commands();

// The toolbar's commands from left to right; 0 is the separator.
inline constexpr std::array<int, 10> kToolBarCommands = {
    kShowDay,   kShowWeek, kShowMonth, kShowList,   kShowMap,
    kMenuToday, 0,         kToolNew,   kToolDelete, kToolFind};

// The commands of a menu of tap and hold, in its order.
struct HoldMenu {
  Menu menu;
  std::array<int, 6> commands;  // 0 behind the last
};
inline constexpr std::array<HoldMenu, 4> kHoldMenus = {{
    {Menu::kWeekBox, {kNew, kBoxChange, kBoxReference, kBoxFollow, kBoxDelete}},
    {Menu::kWeekDay, {kNew, kWeekShowDay}},
    {Menu::kMonthDay, {kNew, kMonthOpen, kMonthShowDay}},
    {Menu::kMap,
     {kMapPointLink, kMarkerChange, kMarkerReference, kMarkerFollow, kMapNew, kMarkerDelete}},
}};

// Those that need a marker under the press.
inline constexpr std::array<int, 4> kMarkerCommands = {kMarkerChange, kMarkerReference,
                                                       kMarkerFollow, kMarkerDelete};

// nullptr if the table has it not: the header row's buttons are live in every view.
const CommandRow* FindCommand(int id);
bool IsLive(int id, core::View view);

// The command that switches to a view, and back.
constexpr int CommandOfView(int view) {
  return static_cast<int>(kShowDay) + view - core::kViewDay;
}
constexpr int ViewOfCommand(int id) {
  return id - static_cast<int>(kShowDay) + core::kViewDay;
}

// The view that `curView` shows: a number that is no view shows the day. The number itself stays as
// it is, for it goes back into the settings.
core::View ViewOnShow(int curView);

}  // namespace views
