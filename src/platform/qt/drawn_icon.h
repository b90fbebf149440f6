// Pictures that are drawn in lines and not stored as pixels, so that they are sharp at any scale.
#pragma once

#include <QIcon>
#include <QPainter>
#include <functional>

namespace platform::qt {

// Draws a picture on a square grid whose corner is the painter's origin.
using IconDrawing = std::function<void(QPainter& painter, QIcon::Mode mode)>;

// An icon on a grid of `units` by `units`.
QIcon DrawnIcon(int units, IconDrawing draw);

// The notebook that stands for the program.
QIcon ProgramIcon();

}  // namespace platform::qt
