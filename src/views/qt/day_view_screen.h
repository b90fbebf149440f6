// The day view on the shared list.
#pragma once

#include <array>

#include "views/qt/view_screen.h"

namespace views {

class DayViewScreen : public ViewScreen {
 public:
  using ViewScreen::ViewScreen;

  void Refill() override;
  void OnColumnDragged(int column, int width) override;

 private:
  void SetColumns();
  // The widths of the settings for the orientation of the window.
  std::array<int, 4>& Widths();
};

}  // namespace views
