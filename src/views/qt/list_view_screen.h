// The list view on the shared list.
#pragma once

#include "views/qt/view_screen.h"

namespace views {

class ListViewScreen : public ViewScreen {
 public:
  using ViewScreen::ViewScreen;

  void Enter() override;
  void Refill() override;

 private:
  void SetColumns();
};

}  // namespace views
