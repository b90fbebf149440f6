// The list view's column, title and rows on the shared list.
#include "views/qt/list_view_screen.h"

#include <array>

#include "platform/qt/qt_text.h"
#include "views/list_view.h"
#include "views/navigation.h"

namespace views {

void ListViewScreen::SetColumns() {
  const std::array<int, 2> widths = {2 * controls_.list.width(), platform::Scaled(100)};
  // Always there: a bar that came later would take a row that the page has counted.
  controls_.list.setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
  controls_.list.SetColumns(platform::qt::SettingFont(app_.LstVwGrdFntName, app_.LstVwGrdFntSize),
                            {QStringLiteral("アクション"), {}}, widths);
  app_.ListRowsPerScreen = controls_.list.RowsPerScreen();
}

void ListViewScreen::Enter() {
  SetColumns();
  GoToPageOfCurDate(app_);
}

void ListViewScreen::Refill() {
  SetColumns();
  rows_ = SetDataListView(app_);
  controls_.list.ShowRows(rows_);
  controls_.header.SetTitle(ListTitle(app_));
}

}  // namespace views
