// What shows the focus on whatever the program paints itself.
#pragma once

#include <QPainter>
#include <QRegion>
#include <QWidget>

#include "platform/metrics.h"

namespace platform::qt {

inline constexpr int kFocusFrame = 2;  // units

// Along the inner edge of the widget.
inline void PaintFocusFrame(QPainter& painter, const QWidget& widget) {
  const QRect all = widget.rect();
  const QRect inside = all.marginsRemoved(QMargins() + Scaled(kFocusFrame));
  painter.setClipping(false);
  for (const QRect& side : QRegion(all) - inside) {
    painter.fillRect(side, widget.palette().highlight());
  }
}

}  // namespace platform::qt
