// Every command of the main window in one table: the number that a control or menu item sends, and
// all that the menus, the toolbar and the window need to know of it.
#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "core/app_state.h"
#include "views/commands.h"

namespace mainwindow {

class CMainWnd;

// Numbers that something other than a menu sends, besides those of the views.
enum Command : int {
  kShellOk = 1,
  kToolNew = 5006,
  kToolDelete = 5007,
  kToolFind = 5012,
  kShowDay = 32791,
  kShowWeek = 32792,
  kShowMonth = 32793,
  kShowList = 32794,
  kShowMap = 32795,
  kMenuToday = 32796,
  kRecorder = 32801,
  kDailyCopyEnd = 33203,  // posted; no row of the table
  kSoftKeyNew = 40002,
};

// Where a command is live, as bits 1 << core::View. Elsewhere its menu item is greyed.
inline constexpr unsigned kInWeek = 1u << core::kViewWeek;
inline constexpr unsigned kInMonth = 1u << core::kViewMonth;
inline constexpr unsigned kInMap = 1u << core::kViewMap;
inline constexpr unsigned kEverywhere =
    (1u << core::kViewDay) | kInWeek | kInMonth | (1u << core::kViewList) | kInMap;
// In the map, if its menu was opened on a marker.
inline constexpr unsigned kOnMarker = kInMap | 1u;

struct CommandRow {
  int id;
  std::u16string_view text = {};
  unsigned menus = 0;  // of views::Menu; the table's order is the order in each menu
  void (*run)(CMainWnd& window);
  unsigned live = kEverywhere;
  std::string_view key = {};
  bool (*isChecked)(const core::CAppState& app) = nullptr;  // of an item with a check mark
  bool keepsPopups = false;  // an open calendar or list of pages is not closed first
  // What the open menu says in place of `text`; none: there is nothing to do, and it's greyed.
  std::optional<std::u16string> (*textNow)() = nullptr;
};

std::span<const CommandRow> Commands();

// nullptr if there is no such command.
const CommandRow* FindCommand(int id);

inline bool IsLive(const CommandRow& row, core::View view) {
  return (row.live >> view & 1u) != 0;
}

}  // namespace mainwindow
