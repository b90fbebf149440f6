// Rectangles between the program and Qt.
#pragma once

#include <QRect>

#include "platform/rect.h"

namespace platform::qt {

inline QRect ToQt(const Rect& rect) {
  return {rect.x, rect.y, rect.width, rect.height};
}

}  // namespace platform::qt
