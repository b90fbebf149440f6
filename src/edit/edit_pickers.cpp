// The pickers that open in place: what they offer, and what becomes of the text they hold.
#include <utility>

#include "core/date_time.h"
#include "edit/edit_action.h"
#include "platform/conversion.h"
#include "platform/host.h"

namespace edit {
namespace {

constexpr std::u16string_view kMultiLineRow = u"<複数行枠で入力>";
constexpr std::u16string_view kTimeOfEmptyField = u"11:30";
constexpr size_t kHalfHoursOffered = 48;

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

bool IsTime(Picker picker) {
  return picker == Picker::kStartTime || picker == Picker::kEndTime;
}

}  // namespace

std::vector<std::u16string> CEditAction::PickerRows() const {
  std::vector<std::u16string> rows;
  switch (picker) {
    case Picker::kStartTime:
      rows.emplace_back(core::kAllDayMark);
      [[fallthrough]];
    case Picker::kEndTime:
      rows.insert(rows.end(), app_.HalfHourTable.begin(),
                  app_.HalfHourTable.begin() + kHalfHoursOffered);
      break;
    case Picker::kPlace:
      return app_.PlaceHistory.Entries();
    case Picker::kCategory1:
      return app_.Category1History.Entries();
    case Picker::kCategory2:
      return app_.Category2History.Entries();
    case Picker::kMemoList:
      rows.emplace_back(kMultiLineRow);
      for (const std::u16string& memo : app_.MemoHistory.Entries()) {
        rows.push_back(core::RemoveLineBreaks(memo));
      }
      break;
    default:
      break;
  }
  return rows;
}

// Of times the last one that is not behind the text, so that the list opens where it belongs.
int CEditAction::PickerRow() const {
  const std::vector<std::u16string> rows = PickerRows();
  int nearest = -1;
  for (size_t i = 0; i < rows.size(); i++) {
    if (rows[i] == pickerText) return static_cast<int>(i);
    if (IsTime(picker) && rows[i] < pickerText) nearest = static_cast<int>(i);
  }
  return nearest;
}

size_t CEditAction::LongestPickerText() const {
  return picker == Picker::kMemoList ? kLongestMemo : kLongestText;
}

Picker CEditAction::PickerOf(int controlId) const {
  switch (controlId) {
    case kIdStartDate:
      return Picker::kStartDate;
    case kIdStartTime:
      return Picker::kStartTime;
    case kIdEndDate:
      return Picker::kEndDate;
    case kIdEndTime:
      return Picker::kEndTime;
    case kIdPlace:
      return Picker::kPlace;
    case kIdCategory1:
      return Picker::kCategory1;
    case kIdCategory2:
      return Picker::kCategory2;
    case kIdMemo:
      return memoInput == MemoInput::kList ? Picker::kMemoList : Picker::kMemoEdit;
    default:
      return Picker::kNone;
  }
}

void CEditAction::OpenPicker(Picker which) {
  picker = which;
  switch (which) {
    case Picker::kStartDate:
      pickerText = fields.times.staDate;
      break;
    case Picker::kStartTime:
      pickerText = fields.times.staTime;
      break;
    case Picker::kEndDate:
      pickerText = fields.times.endDate;
      break;
    case Picker::kEndTime:
      pickerText = fields.times.endTime;
      break;
    case Picker::kPlace:
      pickerText = fields.place;
      break;
    case Picker::kCategory1:
      pickerText = fields.category1;
      break;
    case Picker::kCategory2:
      pickerText = fields.category2;
      break;
    case Picker::kMemoList:
      pickerText = core::RemoveLineBreaks(fields.memo);
      break;
    default:
      pickerText = fields.memo;
  }
  if (IsTime(which) && pickerText.empty()) pickerText = kTimeOfEmptyField;
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
  StartEnd times = fields.times;
  switch (closed) {
    case Picker::kNone:
      break;
    case Picker::kStartDate:
      SetStartDate(times, pickerText);
      break;
    case Picker::kEndDate:
      SetEndDate(times, pickerText);
      break;
    case Picker::kStartTime:
    case Picker::kEndTime:
      if (!ReadTime(closed, times)) return false;
      break;
    case Picker::kPlace:
      ApplyPlace();
      break;
    case Picker::kCategory1:
      ApplyCategory(fields.category1, app_.Category1History);
      break;
    case Picker::kCategory2:
      ApplyCategory(fields.category2, app_.Category2History);
      break;
    case Picker::kMemoList:
    case Picker::kMemoEdit:
      ApplyMemo(closed);
      break;
  }
  ChangeTimes(times);
  if (closed != Picker::kNone) RunActionText();
  return true;
}

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
  const std::u16string time = core::FormatHourMinute(hour, minute);
  if (which == Picker::kStartTime) {
    SetStartTime(times, time);
  } else {
    SetEndTime(times, time);
  }
  return true;
}

// With the recorder's movements kept out of the history, a place that holds the separator is one of
// them; with an empty separator every place is.
void CEditAction::ApplyPlace() {
  ChangeField(fields.place, pickerText, kLongestText);
  const bool isMovement =
      app_.PlaceSepaStr.empty() || fields.place.find(app_.PlaceSepaStr) != std::u16string::npos;
  if (app_.NoMemPlaceSepaStr != 1 || !isMovement) app_.PlaceHistory.Add(fields.place);
}

void CEditAction::ApplyCategory(std::u16string& field, core::HistoryList& history) {
  ChangeField(field, pickerText, kLongestText);
  history.Add(field);
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
