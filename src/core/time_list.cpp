#include "core/time_list.h"

#include <algorithm>

#include "platform/host.h"

namespace core {

int RowOf(std::span<const std::u16string> rows, std::u16string_view text) {
  const auto row = std::ranges::find(rows, text);
  return row == rows.end() ? -1 : static_cast<int>(row - rows.begin());
}

int RowOfTime(std::span<const std::u16string> rows, std::u16string_view text) {
  int nearest = -1;
  for (size_t i = 0; i < rows.size(); ++i) {
    if (rows[i] == text) return static_cast<int>(i);
    const bool isMark = rows[i].starts_with(u'<');
    if (!isMark && rows[i] < text) nearest = static_cast<int>(i);
  }
  return nearest;
}

void ShowBadTime() {
  platform::ShowNotice(u"入力した時刻の値が不正です。入力値を見直してください。", u"入力値不正",
                       platform::Icon::kWarning);
}

}  // namespace core
