// A small box for one text.
#pragma once

#include <QFrame>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

#include "pickers/pickers.h"
#include "platform/qt/modal_screen.h"

namespace pickers {

class ValueInputDlg : public platform::qt::ModalScreen {
 public:
  // `params` is written on OK and outlives the screen.
  ValueInputDlg(QWidget* over, ValueInputParams& params);

 protected:
  void resizeEvent(QResizeEvent* event) override;

 private:
  void Accept();

  ValueInputParams& params_;
  QFrame* box_;
  QLabel* label_;
  QLineEdit* line_;
  QPushButton* ok_;
  QPushButton* cancel_;
};

}  // namespace pickers
