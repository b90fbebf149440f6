#include "edit/qt/own_screen_pickers.h"

#include <optional>
#include <string>

#include "core/date_time.h"
#include "edit/editor_table.h"
#include "pickers/qt/time_select_screen.h"
#include "pickers/qt/value_select_screen.h"
#include "platform/qt/modal_screen.h"

namespace edit {
namespace {

// The extra button of the start stands for a whole day.
std::optional<std::u16string> PickTime(QWidget* over, const CEditAction& edit) {
  int hour = pickers::kExtraHour, minute = 0, second = 0;
  core::ParseTime(edit.editorText, hour, minute, second);
  pickers::TimeSelectParams params;
  params.title = edit.PickerTitle();
  params.extraText = u"終日";
  params.showExtra = edit.editor == Editor::kStartTime ? 1 : 0;
  params.startHour = static_cast<uint16_t>(hour);
  params.startMinute = static_cast<uint16_t>(minute);
  if (pickers::TimeSelectDlg(over, params).RunModal() != platform::qt::kResultOk) return {};
  if (params.hour >= pickers::kExtraHour) return std::u16string(core::kAllDayMark);
  return core::FormatHourMinute(params.hour, params.minute);
}

std::optional<std::u16string> PickValue(QWidget* over, const CEditAction& edit) {
  pickers::ValueSelectParams params{edit.PickerTitle(), edit.editorText, edit.EditorRows()};
  if (pickers::ValueSelectDlg(over, params).RunModal() != platform::qt::kResultOk) return {};
  return params.value;
}

}  // namespace

void PickOnOwnScreen(QWidget* over, CEditAction& edit) {
  const bool isTime = EntryOf(edit.editor).kind == EditorKind::kTime;
  const auto picked = isTime ? PickTime(over, edit) : PickValue(over, edit);
  if (!picked) return edit.DropEditor();
  edit.editorText = *picked;
  edit.ChooseEditor();
}

}  // namespace edit
