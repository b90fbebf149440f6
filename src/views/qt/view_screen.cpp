// What a view on the shared list does unless it says otherwise.
#include "views/qt/view_screen.h"

namespace views {

void ViewScreen::SetShown(bool shown) {
  controls_.list.setVisible(shown);
}

void ViewScreen::Place(const Rect& content) {
  controls_.list.setGeometry(platform::qt::ToQt(content));
}

int ViewScreen::SelectedRow() const {
  return controls_.list.FocusedRow();
}

std::vector<int> ViewScreen::SelectedRows() const {
  return controls_.list.SelectedRows();
}

}  // namespace views
