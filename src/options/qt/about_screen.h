// What this program is, and what the open data file holds.
#pragma once

#include <QPushButton>

#include "core/app_state.h"
#include "platform/qt/modal_screen.h"

namespace options {

class AboutDlg : public platform::qt::ModalScreen {
 public:
  AboutDlg(QWidget* over, const core::CAppState& app);

 protected:
  void paintEvent(QPaintEvent* event) override;
};

}  // namespace options
