// The editors that open in place: what they offer, and what becomes of the text they hold.
#include <utility>

#include "core/date_time.h"
#include "core/settings_choices.h"
#include "core/time_list.h"
#include "edit/edit_action.h"
#include "edit/editor_table.h"
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

std::vector<std::u16string> CEditAction::EditorRows() const {
  const EditorEntry& entry = EntryOf(editor);
  std::vector<std::u16string> rows;
  if (entry.kind == EditorKind::kTime) {
    if (editor == Editor::kStartTime) rows.emplace_back(core::kAllDayMark);
    rows.insert(rows.end(), app_.HalfHourTable.begin(),
                app_.HalfHourTable.begin() + core::kHalfHoursOffered);
  } else if (entry.kind == EditorKind::kValue) {
    rows = (app_.*entry.history).Entries();
  } else if (editor == Editor::kMemoList) {
    rows.emplace_back(kMultiLineRow);
    for (const std::u16string& memo : app_.MemoHistory.Entries()) {
      rows.push_back(core::RemoveLineBreaks(memo));
    }
  }
  return rows;
}

int CEditAction::EditorRow() const {
  const bool isTime = EntryOf(editor).kind == EditorKind::kTime;
  return isTime ? core::RowOfTime(EditorRows(), editorText) : core::RowOf(EditorRows(), editorText);
}

size_t CEditAction::LongestEditorText() const {
  return editor == Editor::kMemoList ? kLongestMemo : kLongestText;
}

bool CEditAction::PicksOnOwnScreen() const {
  if (app_.ItmSelMode != core::kPickByLists || editor == Editor::kNone) return false;
  const EditorKind kind = EntryOf(editor).kind;
  return kind == EditorKind::kTime || kind == EditorKind::kValue;
}

std::u16string CEditAction::PickerTitle() const {
  const EditorEntry& entry = EntryOf(editor);
  return entry.name != nullptr ? app_.*entry.name + u"の選択" : std::u16string(entry.title);
}

Editor CEditAction::EditorOf(int controlId) const {
  if (controlId == kIdMemo && memoInput == MemoInput::kEdit) return Editor::kMemoEdit;
  for (const EditorEntry& entry : kEditors) {
    if (entry.controlId == controlId) return entry.editor;
  }
  return Editor::kNone;
}

void CEditAction::OpenEditor(Editor which) {
  const EditorEntry& entry = EntryOf(which);
  editor = which;
  editorText = entry.moment != nullptr ? fields.times.*entry.moment : fields.*entry.text;
  if (which == Editor::kMemoList) editorText = core::RemoveLineBreaks(editorText);
  if (entry.kind == EditorKind::kTime && editorText.empty()) editorText = kTimeOfEmptyField;
}

bool CEditAction::ChooseEditor() {
  if (editor == Editor::kMemoList && editorText == kMultiLineRow) {
    OpenEditor(Editor::kMemoEdit);
    return true;
  }
  return ApplyEditor();
}

void CEditAction::DropEditor() {
  editor = Editor::kNone;
}

bool CEditAction::ApplyEditor() {
  const Editor closed = std::exchange(editor, Editor::kNone);
  if (closed == Editor::kNone) return true;
  const EditorEntry& entry = EntryOf(closed);
  StartEnd times = fields.times;
  switch (entry.kind) {
    case EditorKind::kDate:
      entry.set(times, editorText);
      break;
    case EditorKind::kTime:
      if (!ReadTime(closed, times)) return false;
      break;
    case EditorKind::kValue:
      ApplyValue(closed);
      break;
    case EditorKind::kMemo:
      ApplyMemo(closed);
      break;
  }
  ChangeTimes(times);
  RunActionText();
  return true;
}

// Kept on purpose: 24:00 is refused here, though a find takes it.
bool CEditAction::ReadTime(Editor which, StartEnd& times) const {
  if (which == Editor::kStartTime && editorText == core::kAllDayMark) {
    SetStartTime(times, core::kAllDayMark);
    return true;
  }
  int hour = 0, minute = 0, second = 0;
  if (core::ParseTimeEntry(editorText, hour, minute, second) != 0) {
    core::ShowBadTime();
    return false;
  }
  EntryOf(which).set(times, core::FormatHourMinute(hour, minute));
  return true;
}

void CEditAction::ApplyValue(Editor which) {
  const EditorEntry& entry = EntryOf(which);
  std::u16string& field = fields.*entry.text;
  ChangeField(field, editorText, kLongestText);
  if (which == Editor::kPlace) {
    core::RememberPlace(app_, field);
  } else {
    (app_.*entry.history).Add(field);
  }
}

// A text that comes back as the editor got it leaves the memo with the line breaks that it has.
void CEditAction::ApplyMemo(Editor which) {
  const bool isList = which == Editor::kMemoList;
  if (isList && editorText == kMultiLineRow) return;
  const std::u16string typed = isList ? editorText : WithStoredLineEnds(editorText);
  const std::u16string shown =
      isList ? core::RemoveLineBreaks(fields.memo) : WithStoredLineEnds(fields.memo);
  if (typed != shown) ChangeField(fields.memo, typed, kLongestMemo);
  app_.MemoHistory.Add(fields.memo);
}

void CEditAction::SwitchMemoInput(Editor closed) {
  const bool isList =
      closed == Editor::kMemoEdit || (closed != Editor::kMemoList && memoInput == MemoInput::kEdit);
  memoInput = isList ? MemoInput::kList : MemoInput::kEdit;
  if (closed == Editor::kMemoList || closed == Editor::kMemoEdit) OpenEditor(EditorOf(kIdMemo));
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
