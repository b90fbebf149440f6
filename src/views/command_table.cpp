// The command table and what is read from it.
#include "views/command_table.h"

#include <algorithm>

namespace views {
namespace {

constexpr unsigned kInWeek = 1u << core::kViewWeek;
constexpr unsigned kInMonth = 1u << core::kViewMonth;
constexpr unsigned kInMap = 1u << core::kViewMap;
constexpr unsigned kEverywhere =
    (1u << core::kViewDay) | kInWeek | kInMonth | (1u << core::kViewList) | kInMap;

constexpr CommandRow kCommands[] = {
    {kExport, u"エクスポート...", Menu::kFile, "", kEverywhere},
    {kImport, u"インポート...", Menu::kFile, "", kEverywhere},
    {kNew, u"新規作成...", Menu::kEdit, "", kEverywhere},
    {kChange, u"変更...", Menu::kEdit, "", kEverywhere},
    {kReference, u"参照...", Menu::kEdit, "", kEverywhere},
    {kFollow, u"後続...", Menu::kEdit, "", kEverywhere},
    {kMapLink, u"地図表示", Menu::kEdit, "", kEverywhere},
    {kMove, u"移動", Menu::kEdit, "", kInMap},
    {kDelete, u"削除", Menu::kEdit, "", kEverywhere},
    {kShowDay, u"1日", Menu::kView, "", kEverywhere},
    {kShowWeek, u"1週間", Menu::kView, "", kEverywhere},
    {kShowMonth, u"1ヶ月", Menu::kView, "", kEverywhere},
    {kShowList, u"一覧", Menu::kView, "", kEverywhere},
    {kShowMap, u"マップ", Menu::kView, "", kEverywhere},
    {kMenuToday, u"今日", Menu::kView, "", kEverywhere},
    {kSpanningMode, u"日またがり", Menu::kView, "", kEverywhere},
    {kToolBarMode, u"ツールバー", Menu::kView, "", kEverywhere},
    {kRecorder, u"レコーダー...", Menu::kTools, "", kEverywhere},
    {kFind, u"検索...", Menu::kTools, "", kEverywhere},
    {kFindClear, u"検索解除", Menu::kTools, "", kEverywhere},
    {kOptions, u"オプション...", Menu::kTools, "", kEverywhere},
    {kAbout, u"バージョン情報...", Menu::kTools, "Ctrl+A", kEverywhere},
    {kQuit, u"終了", Menu::kTop, "", kEverywhere},
    {kMonthOpen, u"開く", Menu::kNone, "", kInMonth},
    {kMonthShowDay, u"1日表示", Menu::kNone, "", kInMonth},
    {kWeekShowDay, u"1日表示", Menu::kNone, "", kInWeek},
    {kBoxChange, u"変更...", Menu::kNone, "", kInWeek},
    {kBoxReference, u"参照...", Menu::kNone, "", kInWeek},
    {kBoxFollow, u"後続...", Menu::kNone, "", kInWeek},
    {kBoxDelete, u"削除", Menu::kNone, "", kInWeek},
    {kMapPointLink, u"地図表示", Menu::kNone, "", kInMap},
    {kMarkerChange, u"変更...", Menu::kNone, "", kInMap},
    {kMarkerReference, u"参照...", Menu::kNone, "", kInMap},
    {kMarkerFollow, u"後続...", Menu::kNone, "", kInMap},
    {kMapNew, u"新規作成...", Menu::kNone, "", kInMap},
    {kMarkerDelete, u"削除", Menu::kNone, "", kInMap},
    {kQuitKey, u"終了", Menu::kNone, "Ctrl+Q", kEverywhere},
    {kSoftKeyNew, u"新規作成", Menu::kNone, "", kEverywhere},
    {kToolNew, u"新規作成", Menu::kNone, "", kEverywhere},
    {kToolDelete, u"削除", Menu::kNone, "", kEverywhere},
    {kToolFind, u"検索", Menu::kNone, "", kEverywhere},
};

}  // namespace

std::span<const CommandRow> Commands() {
  return kCommands;
}

const CommandRow* FindCommand(int id) {
  const auto* row = std::ranges::find(kCommands, id, &CommandRow::id);
  return row == std::end(kCommands) ? nullptr : row;
}

bool IsLive(int id, core::View view) {
  const CommandRow* row = FindCommand(id);
  return row == nullptr || (row->liveIn >> view & 1u) != 0;
}

core::View ViewOnShow(int curView) {
  const bool isView = curView >= core::kViewDay && curView <= core::kViewMap;
  return isView ? static_cast<core::View>(curView) : core::kViewDay;
}

}  // namespace views
