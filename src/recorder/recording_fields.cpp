// The six fields: their editors in place, what pickers bring, and the start-up choice.
#include <utility>

#include "core/date_time.h"
#include "core/settings_choices.h"
#include "core/time_list.h"
#include "platform/host.h"
#include "recorder/recording.h"

namespace recorder {
namespace {

// Of the editor, whose first row is the mark. Kept on purpose: 11:30, where a find opens at noon.
constexpr size_t kRowOfEmptyField = 24;

}  // namespace

int CRecorder::ValidateInlineEdit() {
  const InlineEditTarget closed = std::exchange(editor, InlineEditTarget::kNone);
  if (closed == InlineEditTarget::kTime && editorText != kCurrentTimeMark) {
    int hour = 0, minute = 0, second = 0;
    if (core::ParseTimeEntry(editorText, hour, minute, second) != 0) {
      core::ShowBadTime();
      return -1;
    }
    editorText = core::FormatHourMinute(hour, minute);
  }
  if (closed != InlineEditTarget::kNone) TakeValue(closed, editorText);
  return 0;
}

bool CRecorder::OpenEditor(InlineEditTarget which) {
  if (ValidateInlineEdit() != 0) return false;
  editor = which;
  editorText = FieldText(which);
  if (which == InlineEditTarget::kTime && editorText.empty())
    editorText = app_.HalfHourTable[kRowOfEmptyField - 1];
  return true;
}

const std::u16string& CRecorder::FieldText(InlineEditTarget which) const {
  switch (which) {
    case InlineEditTarget::kPlace:
      return fields.place;
    case InlineEditTarget::kCategory1:
      return fields.category1;
    case InlineEditTarget::kCategory2:
      return fields.category2;
    default:
      return fields.time;
  }
}

std::vector<std::u16string> CRecorder::EditorRows(InlineEditTarget which) const {
  std::vector<std::u16string> rows;
  switch (which) {
    case InlineEditTarget::kNone:
      break;
    case InlineEditTarget::kTime:
      rows.emplace_back(kCurrentTimeMark);
      rows.insert(rows.end(), app_.HalfHourTable.begin(),
                  app_.HalfHourTable.begin() + core::kHalfHoursOffered);
      break;
    case InlineEditTarget::kPlace:
      return app_.PlaceHistory.Entries();
    case InlineEditTarget::kCategory1:
      return app_.Category1History.Entries();
    case InlineEditTarget::kCategory2:
      return app_.Category2History.Entries();
  }
  return rows;
}

int CRecorder::EditorRow() const {
  const std::vector<std::u16string> rows = EditorRows(editor);
  return editor == InlineEditTarget::kTime ? core::RowOfTime(rows, editorText)
                                           : core::RowOf(rows, editorText);
}

void CRecorder::TakeValue(InlineEditTarget which, std::u16string_view text) {
  switch (which) {
    case InlineEditTarget::kNone:
      break;
    case InlineEditTarget::kTime:
      fields.time = text;
      break;
    case InlineEditTarget::kPlace:
      core::RememberPlace(app_, text);
      fields.place = text;
      break;
    case InlineEditTarget::kCategory1:
      app_.Category1History.Add(text);
      fields.category1 = text;
      break;
    case InlineEditTarget::kCategory2:
      app_.Category2History.Add(text);
      fields.category2 = text;
      break;
  }
}

void CRecorder::TakeTime(int hour, int minute) {
  TakeValue(InlineEditTarget::kTime, core::FormatHourMinute(hour, minute));
}

bool CRecorder::FieldTime(int& hour, int& minute) const {
  int second = 0;
  return core::ParseTime(fields.time, hour, minute, second) == 0;
}

void CRecorder::AskPosition() {
  if (ValidateInlineEdit() == 0) positionFields_.Request(window);
}

void CRecorder::OnPositionArrived() {
  positionFields_.OnArrived();
}

void CRecorder::ShowPosition() {
  if (ValidateInlineEdit() == 0) positionFields_.OfferLast();
}

void CRecorder::ClearPosition() {
  if (ValidateInlineEdit() == 0) positionFields_.Clear();
}

void CRecorder::OpenMapLink() {
  if (ValidateInlineEdit() == 0) positionFields_.OpenMap();
}

void CRecorder::OnBtnNow() {
  if (editor == InlineEditTarget::kTime) {
    DropEditor();
  } else if (ValidateInlineEdit() != 0) {
    return;
  }
  fields.time = core::ShortTimeOf(platform::host().Now());
}

void CRecorder::ReadStartChoice() {
  opensAtStart = app_.StartupMode == core::kStartRecorder;
  formerStartupMode_ = opensAtStart ? core::kStartBrowsing : app_.StartupMode;
}

void CRecorder::StoreStartChoice() {
  app_.StartupMode = opensAtStart ? core::kStartRecorder : formerStartupMode_;
}

}  // namespace recorder
