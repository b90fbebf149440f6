// The pickers that open in place: what they offer, and what becomes of the text they hold.
#include <utility>

#include "core/date_time.h"
#include "core/settings_choices.h"
#include "edit/edit_action.h"
#include "edit/picker_table.h"
#include "platform/conversion.h"
#include "platform/host.h"

namespace edit {
namespace {

constexpr std::u16string_view kMultiLineRow = u"<複数行枠で入力>";
constexpr std::u16string_view kTimeOfEmptyField = u"11:30";  // kept on purpose: a find has noon

// `text` with every line end written as CR LF, the form in which memos are stored.
std::u16string WithStoredLineEnds(std::u16string_view text) {
  std::u16string out;
  for (size_t i = 0; i < text.size(); i++) {
    if (text[i] != u'\r' && text[i] != u'\n') {
      out += text[i];
      continue;
    }
    out += u"\r\n";
    if (text[i] == u'\r' && i + 1 < text.size() && text[i + 1] == u'\n') i++;
  }
  return out;
}

// The first `longest` units of `text`, but no half of a surrogate pair or of a line end.
std::u16string_view Cut(std::u16string_view text, size_t longest) {
  text = text.substr(0, longest);
  const bool isHalf =
      text.size() == longest && (platform::IsHighHalf(text.back()) || text.back() == u'\r');
  return isHalf ? text.substr(0, longest - 1) : text;
}

}  // namespace

std::vector<std::u16string> CEditAction::PickerRows() const {
  const PickerEntry& entry = EntryOf(picker);
  std::vector<std::u16string> rows;
  if (entry.kind == PickerKind::kTime) {
    if (picker == Picker::kStartTime) rows.emplace_back(core::kAllDayMark);
    rows.insert(rows.end(), app_.HalfHourTable.begin(),
                app_.HalfHourTable.begin() + core::kHalfHoursOffered);
  } else if (entry.kind == PickerKind::kValue) {
    rows = (app_.*entry.history).Entries();
  } else if (picker == Picker::kMemoList) {
    rows.emplace_back(kMultiLineRow);
    for (const std::u16string& memo : app_.MemoHistory.Entries()) {
      rows.push_back(core::RemoveLineBreaks(memo));
    }
  }
  return rows;
}

// Of times the last one that is not later than the text, so that the list opens where it belongs.
int CEditAction::PickerRow() const {
  const bool isTime = EntryOf(picker).kind == PickerKind::kTime;
  const std::vector<std::u16string> rows = PickerRows();
  int nearest = -1;
  for (size_t i = 0; i < rows.size(); i++) {
    if (rows[i] == pickerText) return static_cast<int>(i);
    if (isTime && rows[i] < pickerText) nearest = static_cast<int>(i);
  }
  return nearest;
}

size_t CEditAction::LongestPickerText() const {
  return picker == Picker::kMemoList ? kLongestMemo : kLongestText;
}

bool CEditAction::PicksOnOwnScreen() const {
  if (app_.ItmSelMode != core::kPickByLists || picker == Picker::kNone) return false;
  const PickerKind kind = EntryOf(picker).kind;
  return kind == PickerKind::kTime || kind == PickerKind::kValue;
}

std::u16string CEditAction::PickerTitle() const {
  const PickerEntry& entry = EntryOf(picker);
  return entry.name != nullptr ? app_.*entry.name + u"の選択" : std::u16string(entry.title);
}

Picker CEditAction::PickerOf(int controlId) const {
  if (controlId == kIdMemo && memoInput == MemoInput::kEdit) return Picker::kMemoEdit;
  for (const PickerEntry& entry : kPickers) {
    if (entry.controlId == controlId) return entry.picker;
  }
  return Picker::kNone;
}

void CEditAction::OpenPicker(Picker which) {
  const PickerEntry& entry = EntryOf(which);
  picker = which;
  pickerText = entry.moment != nullptr ? fields.times.*entry.moment : fields.*entry.text;
  if (which == Picker::kMemoList) pickerText = core::RemoveLineBreaks(pickerText);
  if (entry.kind == PickerKind::kTime && pickerText.empty()) pickerText = kTimeOfEmptyField;
}

bool CEditAction::ChoosePicker() {
  if (picker == Picker::kMemoList && pickerText == kMultiLineRow) {
    OpenPicker(Picker::kMemoEdit);
    return true;
  }
  return ApplyPicker();
}

void CEditAction::DropPicker() {
  picker = Picker::kNone;
}

bool CEditAction::ApplyPicker() {
  const Picker closed = std::exchange(picker, Picker::kNone);
  if (closed == Picker::kNone) return true;
  const PickerEntry& entry = EntryOf(closed);
  StartEnd times = fields.times;
  switch (entry.kind) {
    case PickerKind::kDate:
      entry.set(times, pickerText);
      break;
    case PickerKind::kTime:
      if (!ReadTime(closed, times)) return false;
      break;
    case PickerKind::kValue:
      ApplyValue(closed);
      break;
    case PickerKind::kMemo:
      ApplyMemo(closed);
      break;
  }
  ChangeTimes(times);
  RunActionText();
  return true;
}

// Kept on purpose: 24:00 is refused here, though a find takes it.
bool CEditAction::ReadTime(Picker which, StartEnd& times) const {
  if (which == Picker::kStartTime && pickerText == core::kAllDayMark) {
    SetStartTime(times, core::kAllDayMark);
    return true;
  }
  int hour = 0, minute = 0, second = 0;
  if (core::ParseTimeEntry(pickerText, hour, minute, second) != 0) {
    platform::ShowNotice(u"入力した時刻の値が不正です。入力値を見直してください。", u"入力値不正",
                         platform::Icon::kWarning);
    return false;
  }
  EntryOf(which).set(times, core::FormatHourMinute(hour, minute));
  return true;
}

void CEditAction::ApplyValue(Picker which) {
  const PickerEntry& entry = EntryOf(which);
  std::u16string& field = fields.*entry.text;
  ChangeField(field, pickerText, kLongestText);
  if (which == Picker::kPlace) {
    core::RememberPlace(app_, field);
  } else {
    (app_.*entry.history).Add(field);
  }
}

// A text that comes back as the picker got it leaves the memo with the line breaks that it has.
void CEditAction::ApplyMemo(Picker which) {
  const bool isList = which == Picker::kMemoList;
  if (isList && pickerText == kMultiLineRow) return;
  const std::u16string typed = isList ? pickerText : WithStoredLineEnds(pickerText);
  const std::u16string shown =
      isList ? core::RemoveLineBreaks(fields.memo) : WithStoredLineEnds(fields.memo);
  if (typed != shown) ChangeField(fields.memo, typed, kLongestMemo);
  app_.MemoHistory.Add(fields.memo);
}

void CEditAction::SwitchMemoInput(Picker closed) {
  const bool isList =
      closed == Picker::kMemoEdit || (closed != Picker::kMemoList && memoInput == MemoInput::kEdit);
  memoInput = isList ? MemoInput::kList : MemoInput::kEdit;
  if (closed == Picker::kMemoList || closed == Picker::kMemoEdit) OpenPicker(PickerOf(kIdMemo));
}

void CEditAction::ChangeField(std::u16string& field, std::u16string_view text, size_t longest) {
  if (field == text || field == Cut(text, longest)) return;
  field = Cut(text, longest);
  dirty = true;
}

void CEditAction::ChangeTimes(const StartEnd& times) {
  if (fields.times == times) return;
  fields.times = times;
  dirty = true;
}

}  // namespace edit
