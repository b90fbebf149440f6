// The day view's columns, title and rows on the shared list.
#include "views/qt/day_view_screen.h"

#include "platform/qt/qt_text.h"
#include "views/day_view.h"

namespace views {

using platform::qt::ToQt;

std::array<int, 4>& DayViewScreen::Widths() {
  const QWidget* window = controls_.list.window();
  return IsPortrait(window->width(), window->height()) ? app_.DayVwPrtColWdh : app_.DayVwLndColWdh;
}

void DayViewScreen::SetColumns() {
  const int quarter = controls_.list.width() / 4;
  const std::array<int, 5> widths = {quarter, quarter, quarter, 3 * quarter, platform::Scaled(100)};
  controls_.list.setHorizontalScrollBarPolicy(Qt::ScrollBarAsNeeded);
  controls_.list.SetColumns(
      platform::qt::SettingFont(app_.DayVwGrdFntName, app_.DayVwGrdFntSize),
      {QStringLiteral("日時"), ToQt(app_.PlaceName), ToQt(app_.Cate1Name), ToQt(app_.MemoName), {}},
      widths);
}

void DayViewScreen::Refill() {
  rows_ = SetDataDayView(app_);
  SetColumns();
  controls_.list.ShowRows(rows_, Widths());
  controls_.header.SetTitle(core::CurDate());
  controls_.header.MarkWeekday(core::WeekdayOf(core::CurrentDay()));
}

void DayViewScreen::OnColumnDragged(int column, int width) {
  std::array<int, 4>& widths = Widths();
  if (column < static_cast<int>(widths.size())) widths[static_cast<size_t>(column)] = width;
}

}  // namespace views
