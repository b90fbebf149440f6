// The editors of the edit screen as one table: the control that each stands for, the field that it
// fills, and what it offers.
#pragma once

#include <string>
#include <string_view>

#include "core/app_state.h"
#include "edit/edit_action.h"

namespace edit {

enum class EditorKind { kDate, kTime, kValue, kMemo };

struct EditorEntry {
  using Setter = void (*)(StartEnd& times, std::u16string_view text);

  Editor editor;
  EditorKind kind;
  int controlId;
  // Of dates and times: the field, and how it is set.
  std::u16string StartEnd::*moment = nullptr;
  Setter set = nullptr;
  // Of texts: the field; and of values what was chosen before.
  std::u16string CEditAction::Fields::*text = nullptr;
  core::HistoryList core::CAppState::*history = nullptr;
  // Of a screen of its own: its title, which for values is what the field is called.
  std::u16string_view title = {};
  std::u16string core::CAppState::*name = nullptr;
};

using Fields = CEditAction::Fields;
using App = core::CAppState;

inline constexpr EditorEntry kEditors[] = {
    {Editor::kStartDate, EditorKind::kDate, kIdStartDate, &StartEnd::staDate, SetStartDate},
    {Editor::kStartTime, EditorKind::kTime, kIdStartTime, &StartEnd::staTime, SetStartTime, nullptr,
     nullptr, u"開始時刻"},
    {Editor::kEndDate, EditorKind::kDate, kIdEndDate, &StartEnd::endDate, SetEndDate},
    {Editor::kEndTime, EditorKind::kTime, kIdEndTime, &StartEnd::endTime, SetEndTime, nullptr,
     nullptr, u"終了時刻"},
    {Editor::kPlace,
     EditorKind::kValue,
     kIdPlace,
     nullptr,
     nullptr,
     &Fields::place,
     &App::PlaceHistory,
     {},
     &App::PlaceName},
    {Editor::kCategory1,
     EditorKind::kValue,
     kIdCategory1,
     nullptr,
     nullptr,
     &Fields::category1,
     &App::Category1History,
     {},
     &App::Cate1Name},
    {Editor::kCategory2,
     EditorKind::kValue,
     kIdCategory2,
     nullptr,
     nullptr,
     &Fields::category2,
     &App::Category2History,
     {},
     &App::Cate2Name},
    {Editor::kMemoList, EditorKind::kMemo, kIdMemo, nullptr, nullptr, &Fields::memo,
     &App::MemoHistory},
    {Editor::kMemoEdit, EditorKind::kMemo, kIdMemo, nullptr, nullptr, &Fields::memo,
     &App::MemoHistory},
};

// Of any editor but kNone.
constexpr const EditorEntry& EntryOf(Editor editor) {
  const EditorEntry* entry = kEditors;
  while (entry->editor != editor) ++entry;
  return *entry;
}

}  // namespace edit
