// A drop-down list for a finger: high rows, a drag scrolls them, a tap chooses.
#pragma once

#include <QComboBox>

namespace platform::qt {

class ChoiceBox : public QComboBox {
 public:
  // A long text widens its rows, not the box.
  explicit ChoiceBox(QWidget* parent);

  void showPopup() override;

 protected:
  void wheelEvent(QWheelEvent* event) override;
};

}  // namespace platform::qt
