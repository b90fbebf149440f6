// The map without its picture: where it lies under the pane, what a finger does to it, and which
// marker a tap hits. Degrees map linearly to pixels, the same for latitude and longitude. Pixels
// are those of the pane, from its top left corner, in the units of platform::Scaled.
#pragma once

#include <string>
#include <vector>

#include "position/coordinate.h"
#include "views/header_layout.h"

namespace views {

// A row of the list as a marker.
struct MapItem {
  int number = 0;         // of its row, from 1
  bool valid = false;     // it has a position
  double latitude = 0.0;  // degrees; the largest double if it has none
  double longitude = 0.0;
  std::u16string place;
};

struct MapPoint {
  int x = 0;
  int y = 0;
  bool operator==(const MapPoint&) const = default;
};

enum class MapMode { kIdle = 0, kPressed = 1, kDragging = 2, kZooming = 3 };

// Of a marker from its middle, in units.
inline constexpr int kMarkerReach = 5;

// Pixels per degree.
inline constexpr int kSmallestScl = 10;
inline constexpr int kLargestScl = 8589934;

class MapPane {
 public:
  // The reference point, and the pixel on which it lies.
  double mLat;
  double mLon;
  int Ox = 0;
  int Oy = 0;
  int Scl = 100;
  bool MapCentred = false;  // the reference point has been taken from the Actions once
  MapMode scmode = MapMode::kIdle;
  int Px = 0;  // the press
  int Py = 0;
  std::vector<MapItem> MapItems;  // one for each row of the list

  MapPane() { SetDefaultReference(); }
  void SetDefaultReference();

  int Width() const { return width_; }
  int Height() const { return height_; }
  // The pane takes another size. What lies in its centre stays there.
  void Resize(int width, int height);
  // The strip at the right edge in which a drag zooms.
  Rect ZoomStrip() const;

  // Rounded down, and where it would leave the integers, far outside the pane.
  MapPoint PixelOf(position::Position position) const;
  position::Position PositionAt(MapPoint pixel) const;
  position::Position Centre() const { return PositionAt({width_ / 2, height_ / 2}); }
  // The first item, in their order, whose marker lies under the point; -1 if none does.
  int HitTest(MapPoint pixel) const;
  // The item's position; that of the press if there is no such item.
  position::Position PositionOf(int item) const;

  // A pointer goes down, moves, becomes a tap and hold, goes up. Move answers whether the picture
  // has changed, Release whether it was a tap.
  void Press(int x, int y);
  bool Move(int x, int y);
  void Hold() { scmode = MapMode::kIdle; }
  bool Release(int x, int y);

  // The scale grows by `rate` of itself, as far as it may, round the pane's centre.
  void Zoom(double rate);
  // The position comes to the pane's centre.
  void MoveTo(position::Position position);

 private:
  void EndDrag();

  int width_ = 0;
  int height_ = 0;
  int prevX_ = 0;  // where the pointer was last
  int prevY_ = 0;
};

}  // namespace views
