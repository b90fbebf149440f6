// A label of one line that ends in an ellipsis where its text is wider than itself.
#pragma once

#include <QLabel>

namespace platform::qt {

class ElidedLabel : public QLabel {
 public:
  explicit ElidedLabel(QWidget* parent);

 protected:
  void paintEvent(QPaintEvent* event) override;
};

}  // namespace platform::qt
