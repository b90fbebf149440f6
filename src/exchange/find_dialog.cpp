#include "exchange/find_dialog.h"

#include <algorithm>
#include <utility>

#include "core/date_time.h"
#include "core/settings_choices.h"
#include "core/text.h"
#include "core/time_list.h"
#include "exchange/find.h"
#include "platform/host.h"

namespace exchange {
namespace {

using platform::Icon;
using platform::ShowNotice;

constexpr std::u16string_view kNoon = u"12:00";
constexpr uint32_t kPatience = 300;  // milliseconds until a find counts as long
constexpr int kStartRefused = -1;
constexpr int kEndRefused = -2;

// What the user typed as hh:mm, empty for empty. False if it is no time.
bool ReadTime(std::u16string_view typed, std::u16string& time) {
  int hour = 0, minute = 0, second = 0;
  if (typed.empty()) {
    time.clear();
  } else if (core::ParseTimeEntry(typed, hour, minute, second) == 0) {
    time = core::FormatHourMinute(hour, minute);
  } else if (core::IsEndOfDayEntry(typed) == 0) {
    time = u"24:00";
  } else {
    return false;
  }
  return true;
}

// The bounds of the find step. The end's minute counts as a whole: no time of it sorts after
// ":60". Kept on purpose: an empty time gives ":60" too, which sorts after every time of the date.
FindSpan SpanOf(const CFind::Fields& fields) {
  const bool allDay = fields.endTime == core::kAllDayMark;
  const std::u16string start = allDay ? u"00:00" : fields.staTime;
  const std::u16string end = allDay ? u"24:00" : fields.endTime;
  return {fields.staDate, start.empty() ? start : start + u":00", fields.endDate,
          end + (end == u"24:00" ? u":00" : u":60")};
}

}  // namespace

CFind::CFind(core::CAppState& app)
    : fields{{},
             app.FindInPlace != 0,
             app.FindInCategory1 != 0,
             app.FindInCategory2 != 0,
             app.FindInMemo != 0,
             app.FindStaDate,
             app.FindStaTime,
             app.FindEndDate,
             app.FindEndTime,
             app.DispListAfterFind == core::kOn},
      app_(app) {}

bool CFind::IsEndTimeEnabled() const {
  return fields.endTime != core::kAllDayMark;
}

std::vector<std::u16string> CFind::EditorRows() const {
  std::vector<std::u16string> rows(1);
  if (editor == FindEditor::kStartTime) rows.emplace_back(core::kAllDayMark);
  rows.insert(rows.end(), app_.HalfHourTable.begin(), app_.HalfHourTable.end());
  return rows;
}

// Noon for an empty field.
int CFind::EditorRow() const {
  return core::RowOfTime(EditorRows(), editorText.empty() ? kNoon : editorText);
}

void CFind::PickerTime(FindEditor which, int& hour, int& minute) const {
  const std::u16string& field = which == FindEditor::kStartTime ? fields.staTime : fields.endTime;
  hour = 12;
  minute = 0;
  int second = 0;
  if (field == core::kAllDayMark) {
    hour = kAllDayHour;
  } else if (core::IsEndOfDayEntry(field) == 0) {
    hour = 24;
  } else {
    core::ParseTimeEntry(field, hour, minute, second);
  }
}

bool CFind::OpenEditor(FindEditor which) {
  if (!ApplyEditor()) return false;
  editor = which;
  editorText = which == FindEditor::kStartDate   ? fields.staDate
               : which == FindEditor::kStartTime ? fields.staTime
               : which == FindEditor::kEndDate   ? fields.endDate
                                                 : fields.endTime;
  return true;
}

int CFind::CloseFindEditor() {
  switch (std::exchange(editor, FindEditor::kNone)) {
    case FindEditor::kStartTime:
      return ReadStartTime();
    case FindEditor::kEndTime:
      return ReadEndTime();
    default:
      return 0;  // of a calendar only a day that was tapped counts
  }
}

int CFind::ReadStartTime() {
  if (editorText == core::kAllDayMark) {
    SetAllDay();
    return 0;
  }
  std::u16string time;
  if (!ReadTime(editorText, time)) return kStartRefused;
  SetStartTime(time);
  return 0;
}

int CFind::ReadEndTime() {
  return ReadTime(editorText, fields.endTime) ? 0 : kEndRefused;
}

void CFind::SetAllDay() {
  fields.staTime = fields.endTime = core::kAllDayMark;
}

void CFind::SetStartTime(std::u16string_view time) {
  fields.staTime = time;
  if (!IsEndTimeEnabled()) fields.endTime.clear();
}

bool CFind::ApplyEditor() {
  if (CloseFindEditor() == 0) return true;
  core::ShowBadTime();
  return false;
}

bool CFind::ChooseEditor() {
  if (editor == FindEditor::kStartDate) fields.staDate = editorText;
  if (editor == FindEditor::kEndDate) fields.endDate = editorText;
  return ApplyEditor();
}

// Kept on purpose: a start that was picked empties the end's time, a typed one leaves it.
void CFind::TakeTime(FindEditor which, int hour, int minute) {
  if (which == FindEditor::kEndTime) {
    fields.endTime = core::FormatHourMinute(hour, minute);
  } else if (hour >= kAllDayHour) {
    SetAllDay();
  } else {
    fields.staTime = core::FormatHourMinute(hour, minute);
    fields.endTime.clear();
  }
}

// Kept on purpose: of the editors only that of the start's time goes unread.
void CFind::TakeToday(std::u16string& date) {
  if (editor == FindEditor::kStartTime) DropEditor();
  if (!ApplyEditor()) return;
  date = core::DateOf(platform::host().Now());
}

void CFind::OnBtnStartToday() {
  TakeToday(fields.staDate);
}

void CFind::OnBtnEndToday() {
  TakeToday(fields.endDate);
}

void CFind::ResetFindDialog() {
  fields = {{}, true, true, true, true, {}, {}, {}, {}, fields.dispListAfterFind};
  DropEditor();
}

int CFind::Mask() const {
  return (fields.inPlace ? kFindInPlace : 0) | (fields.inCategory1 ? kFindInCategory1 : 0) |
         (fields.inCategory2 ? kFindInCategory2 : 0) | (fields.inMemo ? kFindInMemo : 0);
}

void CFind::Store() const {
  app_.FindStaDate = fields.staDate;
  app_.FindStaTime = fields.staTime;
  app_.FindEndDate = fields.endDate;
  app_.FindEndTime = fields.endTime;
  app_.FindInPlace = fields.inPlace ? 1 : 0;
  app_.FindInCategory1 = fields.inCategory1 ? 1 : 0;
  app_.FindInCategory2 = fields.inCategory2 ? 1 : 0;
  app_.FindInMemo = fields.inMemo ? 1 : 0;
  app_.DispListAfterFind = fields.dispListAfterFind ? core::kOn : core::kOff;
}

int CFind::Find() {
  const platform::WaitCursor waiting;
  const uint32_t begun = platform::host().TickCount();
  bool isLong = false;
  const int found = FindActions(app_, SpanOf(fields), fields.text, Mask(), [&](int hundredths) {
    isLong = showLong_ && platform::host().TickCount() - begun >= kPatience;
    return !isLong || showLong_(hundredths);
  });
  if (isLong) showLong_(kFindIsThrough);
  return found;
}

bool CFind::OnFind() {
  if (!ApplyEditor()) return false;
  app_.FindHistory.Add(fields.text);
  Store();
  const int found = Find();
  if (found == kFindStopped) return false;
  if (found < 0) {
    ShowNotice(u"検索中にエラーが発生しました。", u"検索エラー", Icon::kWarning);
    return false;
  }
  ShowNotice(found == 0 ? u"該当するアクションはありません。"
                        : core::ZeroPadded(found, 1) + u" 個のアクションが見つかりました。",
             u"検索結果", Icon::kInformation);
  return true;
}

bool CFind::OnClose() {
  if (!ApplyEditor()) return false;
  Keep();
  return true;
}

// Kept on purpose: without a find the memo is looked into again the next time.
void CFind::Keep() {
  app_.FindHistory.Add(fields.text);
  Store();
  app_.FindInMemo = 1;
}

}  // namespace exchange
