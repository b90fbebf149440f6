// Rectangles of a window, in pixels, as the layouts give them to the screens.
#pragma once

namespace platform {

struct Rect {
  int x = 0;
  int y = 0;
  int width = 0;
  int height = 0;
  bool operator==(const Rect&) const = default;

  bool Contains(int pointX, int pointY) const {
    return pointX >= x && pointX < x + width && pointY >= y && pointY < y + height;
  }
};

// Where the control with this id stands.
struct PlacedControl {
  int id;
  Rect rect;
};

}  // namespace platform
