#include "edit/qt/own_screen_pickers.h"

#include <optional>
#include <string>

#include "core/date_time.h"
#include "edit/editor_table.h"
#include "pickers/qt/time_select_screen.h"
#include "pickers/qt/value_select_screen.h"

namespace edit {
namespace {

// The extra button of the start stands for a whole day.
std::optional<std::u16string> PickTime(QWidget* over, const CEditAction& edit) {
  int hour = pickers::kExtraHour, minute = 0, second = 0;
  core::ParseTime(edit.editorText, hour, minute, second);
  const auto picked =
      pickers::PickTime(over, {.title = edit.PickerTitle(),
                               .extraText = u"終日",
                               .showExtra = edit.editor == Editor::kStartTime ? 1 : 0,
                               .startHour = static_cast<uint16_t>(hour),
                               .startMinute = static_cast<uint16_t>(minute)});
  if (!picked) return {};
  if (picked->hour >= pickers::kExtraHour) return std::u16string(core::kAllDayMark);
  return core::FormatHourMinute(picked->hour, picked->minute);
}

}  // namespace

void PickOnOwnScreen(QWidget* over, CEditAction& edit) {
  const bool isTime = EntryOf(edit.editor).kind == EditorKind::kTime;
  const auto picked =
      isTime ? PickTime(over, edit)
             : pickers::PickValue(over, {edit.PickerTitle(), edit.editorText, edit.EditorRows()});
  if (!picked) return edit.DropEditor();
  edit.editorText = *picked;
  edit.ChooseEditor();
}

}  // namespace edit
