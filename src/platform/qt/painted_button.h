// A button that its class paints. A screen reader knows it as a button all the same: by its
// accessible name or its text, with its accessible description as its value.
#pragma once

#include <QAbstractButton>

namespace platform::qt {

class PaintedButton : public QAbstractButton {
 public:
  explicit PaintedButton(QWidget* parent);

 protected:
  // The frame of the button that has the focus, within its edge. Drawn last.
  void PaintFocus(QPainter& painter) const;
};

}  // namespace platform::qt
