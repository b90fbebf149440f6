// The pickers of the edit screen as one table: the control that each stands for, the field that it
// fills, and what it offers.
#pragma once

#include <string>
#include <string_view>

#include "core/app_state.h"
#include "edit/edit_action.h"

namespace edit {

enum class PickerKind { kDate, kTime, kValue, kMemo };

struct PickerEntry {
  using Setter = void (*)(StartEnd& times, std::u16string_view text);

  Picker picker;
  PickerKind kind;
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

inline constexpr PickerEntry kPickers[] = {
    {Picker::kStartDate, PickerKind::kDate, kIdStartDate, &StartEnd::staDate, SetStartDate},
    {Picker::kStartTime, PickerKind::kTime, kIdStartTime, &StartEnd::staTime, SetStartTime, nullptr,
     nullptr, u"開始時刻"},
    {Picker::kEndDate, PickerKind::kDate, kIdEndDate, &StartEnd::endDate, SetEndDate},
    {Picker::kEndTime, PickerKind::kTime, kIdEndTime, &StartEnd::endTime, SetEndTime, nullptr,
     nullptr, u"終了時刻"},
    {Picker::kPlace,
     PickerKind::kValue,
     kIdPlace,
     nullptr,
     nullptr,
     &Fields::place,
     &App::PlaceHistory,
     {},
     &App::PlaceName},
    {Picker::kCategory1,
     PickerKind::kValue,
     kIdCategory1,
     nullptr,
     nullptr,
     &Fields::category1,
     &App::Category1History,
     {},
     &App::Cate1Name},
    {Picker::kCategory2,
     PickerKind::kValue,
     kIdCategory2,
     nullptr,
     nullptr,
     &Fields::category2,
     &App::Category2History,
     {},
     &App::Cate2Name},
    {Picker::kMemoList, PickerKind::kMemo, kIdMemo, nullptr, nullptr, &Fields::memo,
     &App::MemoHistory},
    {Picker::kMemoEdit, PickerKind::kMemo, kIdMemo, nullptr, nullptr, &Fields::memo,
     &App::MemoHistory},
};

// Of any picker but kNone.
constexpr const PickerEntry& EntryOf(Picker picker) {
  const PickerEntry* entry = kPickers;
  while (entry->picker != picker) ++entry;
  return *entry;
}

}  // namespace edit
