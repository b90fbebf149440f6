// The find dialog without its widgets: the state that it shows and what each of its commands does.
// Interface thread.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "core/app_state.h"
#include "exchange/find.h"

namespace exchange {

// What is open in place; the numbers say nothing beyond the order of the fields.
enum class FindEditor { kNone, kStartDate, kStartTime, kEndDate, kEndTime };

// An hour from which on the time picker's answer means the whole day.
inline constexpr int kAllDayHour = 25;

class CFind {
 public:
  // With what the dialog showed when it was last left.
  explicit CFind(core::CAppState& app);

  struct Fields {
    std::u16string text;
    bool inPlace, inCategory1, inCategory2, inMemo;
    std::u16string staDate, staTime;  // yyyy/mm/dd and hh:mm; empty, or kAllDayMark in both times
    std::u16string endDate, endTime;
    bool dispListAfterFind;
  };
  Fields fields;
  FindEditor editor = FindEditor::kNone;
  // What the open editor holds: a date of the calendar, or the typed time. The screen keeps it up
  // to date while its user types.
  std::u16string editorText;

  // The all-day mark stands for both times: the end has no time of its own.
  bool IsEndTimeEnabled() const;
  // What the open time editor offers, and the row that it opens at.
  std::vector<std::u16string> EditorRows() const;
  int EditorRow() const;
  // The time at which the picker of a time field opens: that of the field, 24:00 included, or noon.
  // kAllDayHour for the all-day mark.
  void PickerTime(FindEditor which, int& hour, int& minute) const;

  // The user is done with the open editor: the day of a calendar is taken, a time as by
  // ApplyEditor.
  bool ChooseEditor();
  // Opens an editor in place. False, after a message, if the one that was open is refused.
  bool OpenEditor(FindEditor which);
  // CloseFindEditor as every command does it, with its message. False if the time was refused; the
  // editor is closed all the same and its field stays as it was.
  bool ApplyEditor();
  // Closes the open editor and leaves its field as it was.
  void DropEditor() { editor = FindEditor::kNone; }
  // The answer of the picker of a time field.
  void TakeTime(FindEditor which, int hour, int minute);

  void OnBtnStartToday();
  void OnBtnEndToday();
  void ResetFindDialog();
  // The find step. True if the dialog is to close.
  bool OnFind();
  // What shows a find that lasts, with the hundredths that it has gone through, kFindIsThrough at
  // its end. False stops it: it has changed nothing then, and the dialog stays.
  void OnLongFind(FindProgress show) { showLong_ = std::move(show); }
  // The dialog closes without a find. False, after a message, if the open editor is refused.
  bool OnClose();
  // The dialog ends from outside, as the whole program does: what the fields hold is kept.
  void Keep();

 private:
  int Find();
  int CloseFindEditor();
  int ReadStartTime();
  int ReadEndTime();
  void SetAllDay();
  void SetStartTime(std::u16string_view time);
  void TakeToday(std::u16string& date);
  void Store() const;
  int Mask() const;

  core::CAppState& app_;
  FindProgress showLong_;
};

}  // namespace exchange
