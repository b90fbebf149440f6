// The command table.
#include "mainwindow/command_table.h"

#include <algorithm>

#include "mainwindow/main_window.h"
#include "undo/undo.h"
#include "views/navigation.h"

namespace mainwindow {

using namespace views;
using enum core::View;
using edit::OpenMode;
using exchange::ExchangeKind;
using store::Turn;

namespace {

// A member of the window, with its arguments, as a handler.
template <auto member, auto... arguments>
void Do(CMainWnd& window) {
  (window.*member)(arguments...);
}

template <core::View view>
bool IsOnShow(const core::CAppState& app) {
  return ViewOnShow(app.CurView) == view;
}

template <Turn turn>
std::optional<std::u16string> TextOf() {
  return undo::CommandText(turn);
}

constexpr bool HasTwice(std::span<const CommandRow> rows) {
  for (size_t k = 0; k < rows.size(); ++k) {
    if (std::ranges::count(rows, rows[k].id, &CommandRow::id) != 1) return true;
  }
  return false;
}

}  // namespace

std::span<const CommandRow> Commands() {
  using W = CMainWnd;
  static constexpr CommandRow kRows[] = {
      {32771, u"エクスポート...", kFileMenu, Do<&W::RunExchange, ExchangeKind::kExport>},
      {32772, u"インポート...", kFileMenu, Do<&W::RunExchange, ExchangeKind::kImport>},
      {33201, u"バックアップ...", kFileMenu, Do<&W::RunBackup>},
      {33202, u"復元...", kFileMenu, Do<&W::RunRestore>},

      {kNew, u"新規作成...", kEditMenu | kWeekBoxMenu | kWeekDayMenu | kMonthDayMenu, Do<&W::New>},
      {32782, u"変更...", kEditMenu, Do<&W::FxEditSelected, edit::kOpenChange>},
      {32783, u"参照...", kEditMenu, Do<&W::FxEditSelected, edit::kOpenReference>},
      {32784, u"後続...", kEditMenu, Do<&W::FxEditSelected, edit::kOpenFollow>},
      {37786, u"地図表示", kEditMenu, Do<&W::FxMapLink>},
      {32787, u"移動", kEditMenu, Do<&W::MoveMap>, kInMap},
      {32785, u"削除", kEditMenu, Do<&W::FxEditDelete>},
      {kTidy, u"一日の整理...", kEditMenu, Do<&W::RunTidy>},
      {.id = 33260,
       .text = u"元に戻す",
       .menus = kEditMenu,
       .run = Do<&W::TakeTurn, Turn::kUndo>,
       .key = "Ctrl+Z",
       .textNow = TextOf<Turn::kUndo>},
      {.id = 33261,
       .text = u"やり直す",
       .menus = kEditMenu,
       .run = Do<&W::TakeTurn, Turn::kRedo>,
       .key = "Ctrl+Shift+Z",
       .textNow = TextOf<Turn::kRedo>},
      {33262, u"元に戻す履歴を消去...", kEditMenu, Do<&W::ClearUndoHistory>},

      {kShowDay, u"1日", kViewMenu, Do<&W::ShowView, kViewDay>, kEverywhere, "",
       IsOnShow<kViewDay>},
      {kShowWeek, u"1週間", kViewMenu, Do<&W::ShowView, kViewWeek>, kEverywhere, "",
       IsOnShow<kViewWeek>},
      {kShowMonth, u"1ヶ月", kViewMenu, Do<&W::ShowView, kViewMonth>, kEverywhere, "",
       IsOnShow<kViewMonth>},
      {kShowList, u"一覧", kViewMenu, Do<&W::ShowView, kViewList>, kEverywhere, "",
       IsOnShow<kViewList>},
      {kShowMap, u"マップ", kViewMenu, Do<&W::ShowView, kViewMap>, kEverywhere, "",
       IsOnShow<kViewMap>},
      {kMenuToday, u"今日", kViewMenu, Do<&W::GoToToday>},
      {32797, u"日またがり", kViewMenu, Do<&W::ToggleSpanningMode>, kEverywhere, "", SpansDays},
      {32798, u"ツールバー", kViewMenu, Do<&W::ToggleToolBar>, kEverywhere, "", ShowsToolBar},

      {kRecorder, u"レコーダー...", kToolsMenu, Do<&W::RunRecorder>},
      {32802, u"検索...", kToolsMenu, Do<&W::RunFind>},
      {32803, u"検索解除", kToolsMenu, Do<&W::FxFindClear>},
      {33211, u"集計...", kToolsMenu, Do<&W::RunTotals>},
      {32804, u"オプション...", kToolsMenu, Do<&W::FxToolOption>},
      {33210, u"ヘルプ", kToolsMenu, Do<&W::ShowManual>},
      {40101, u"バージョン情報...", kToolsMenu, Do<&W::ShowAbout>, kEverywhere, "Ctrl+A"},

      {40102, u"終了", kTopMenu, Do<&W::close>},

      {kBoxChange, u"変更...", kWeekBoxMenu, Do<&W::FxEditTapItem, edit::kOpenChange>, kInWeek},
      {32871, u"参照...", kWeekBoxMenu, Do<&W::FxEditTapItem, edit::kOpenReference>, kInWeek},
      {32872, u"後続...", kWeekBoxMenu, Do<&W::FxEditTapItem, edit::kOpenFollow>, kInWeek},
      {kBoxDelete, u"削除", kWeekBoxMenu, Do<&W::FxDeleteTapItem>, kInWeek},

      {32852, u"1日表示", kWeekDayMenu, Do<&W::ShowPressedDay>, kInWeek},

      {kMonthOpen, u"開く", kMonthDayMenu, Do<&W::GoToPressedDay>, kInMonth},
      {kMonthShowDay, u"1日表示", kMonthDayMenu, Do<&W::ShowPressedDay>, kInMonth},

      {33880, u"地図表示", kMapMenu, Do<&W::OpenMapAtPress>, kInMap},
      {kMarkerChange, u"変更...", kMapMenu, Do<&W::FxEditTapItem, edit::kOpenChange>, kOnMarker},
      {32882, u"参照...", kMapMenu, Do<&W::FxEditTapItem, edit::kOpenReference>, kOnMarker},
      {32883, u"後続...", kMapMenu, Do<&W::FxEditTapItem, edit::kOpenFollow>, kOnMarker},
      {32885, u"新規作成...", kMapMenu, Do<&W::NewAtPress>, kInMap},
      {32884, u"削除", kMapMenu, Do<&W::FxDeleteTapItem>, kOnMarker},

      {.id = kSoftKeyNew, .text = u"新規作成", .run = Do<&W::New>},
      {.id = kToolNew, .text = u"新規作成", .run = Do<&W::New>},
      {.id = kToolDelete, .text = u"削除", .run = Do<&W::FxEditDelete>},
      {.id = kToolFind, .text = u"検索", .run = Do<&W::RunFind>},
      {.id = kShellOk, .run = Do<&W::close>},
      {.id = 40000, .run = Do<&W::close>, .key = "Ctrl+Q", .keepsPopups = true},

      {.id = kDateLabel, .run = Do<&W::OnDateLabel>, .keepsPopups = true},
      {.id = kSunday, .run = Do<&W::GoToWeekday, 1>},
      {.id = kMonday, .run = Do<&W::GoToWeekday, 2>},
      {.id = kTuesday, .run = Do<&W::GoToWeekday, 3>},
      {.id = kWednesday, .run = Do<&W::GoToWeekday, 4>},
      {.id = kThursday, .run = Do<&W::GoToWeekday, 5>},
      {.id = kFriday, .run = Do<&W::GoToWeekday, 6>},
      {.id = kSaturday, .run = Do<&W::GoToWeekday, 7>},
      {.id = kBigStepBack, .run = Do<&W::TakeStep, Step::kBigBack>},
      {.id = kStepBack, .run = Do<&W::TakeStep, Step::kBack>},
      {.id = kToday, .run = Do<&W::GoToToday>},
      {.id = kStepForward, .run = Do<&W::TakeStep, Step::kForward>},
      {.id = kBigStepForward, .run = Do<&W::TakeStep, Step::kBigForward>},
  };
  static_assert(!HasTwice(kRows), "two commands have the same number");
  return kRows;
}

const CommandRow* FindCommand(int id) {
  const auto row = std::ranges::find(Commands(), id, &CommandRow::id);
  return row == Commands().end() ? nullptr : &*row;
}

}  // namespace mainwindow
