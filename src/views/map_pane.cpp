// Projection, pointer and hit test of the map.
#include "views/map_pane.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>

#include "platform/metrics.h"
#include "views/map_picture.h"

namespace views {
namespace {

using platform::Scaled;

constexpr double kDefaultLatitude = 36.5626;
constexpr double kDefaultLongitude = 136.362305;

// Where pixels end: farther than any pane, and the sum of four is still an int.
constexpr double kFarPixel = 1 << 28;
// A marker whose exact place is a whole pixel must not fall to the one before it by the last digit
// of a double, or it would jump when the reference point moves.
constexpr double kPixelSliver = 1.0 / 1024;

int ToPixels(double value) {
  if (!(value > -kFarPixel)) return static_cast<int>(-kFarPixel);
  return static_cast<int>(std::floor(std::min(value, kFarPixel) + kPixelSliver));
}

}  // namespace

void MapPane::SetDefaultReference() {
  mLat = kDefaultLatitude;
  mLon = kDefaultLongitude;
}

void MapPane::Resize(int width, int height) {
  Ox += width / 2 - width_ / 2;
  Oy += height / 2 - height_ / 2;
  width_ = width;
  height_ = height;
}

Rect MapPane::ZoomStrip() const {
  const int width = Scaled(14);
  return {width_ - width, 0, width, height_};
}

MapPoint MapPane::PixelOf(position::Position position) const {
  return {Ox + ToPixels((position.longitude - mLon) * Scl),
          Oy - ToPixels((position.latitude - mLat) * Scl)};
}

position::Position MapPane::PositionAt(MapPoint pixel) const {
  return {mLat - static_cast<double>(pixel.y - Oy) / Scl,
          mLon + static_cast<double>(pixel.x - Ox) / Scl};
}

int MapPane::HitTest(MapPoint pixel) const {
  const int reach = Scaled(kMarkerReach);
  const auto isHit = [&](const MapItem& item) {
    const MapPoint marker = PixelOf({item.latitude, item.longitude});
    return item.valid && std::abs(marker.x - pixel.x) <= reach &&
           std::abs(marker.y - pixel.y) <= reach;
  };
  const auto hit = std::ranges::find_if(MapItems, isHit);
  return hit == MapItems.end() ? -1 : static_cast<int>(hit - MapItems.begin());
}

position::Position MapPane::PositionOf(int item) const {
  if (item < 0 || item >= std::ssize(MapItems)) return PositionAt({Px, Py});
  const MapItem& marker = MapItems[static_cast<size_t>(item)];
  return {marker.latitude, marker.longitude};
}

void MapPane::Press(int x, int y) {
  scmode = MapMode::kPressed;
  Px = prevX_ = x;
  Py = prevY_ = y;
}

bool MapPane::Move(int x, int y) {
  switch (scmode) {
    case MapMode::kIdle:
      return false;
    case MapMode::kPressed:
      if (std::abs(x - Px) > Scaled(4) || std::abs(y - Py) > Scaled(4)) {
        scmode = Px < ZoomStrip().x ? MapMode::kDragging : MapMode::kZooming;
      }
      return false;
    case MapMode::kDragging:
      Ox += x - prevX_;
      Oy += y - prevY_;
      break;
    case MapMode::kZooming:
      Zoom(-static_cast<double>(y - prevY_) / Scaled(40));
      break;
  }
  prevX_ = x;
  prevY_ = y;
  return true;
}

bool MapPane::Release(int x, int y) {
  const MapMode mode = scmode;
  scmode = MapMode::kIdle;
  if (mode == MapMode::kDragging) {
    Ox += x - prevX_;
    Oy += y - prevY_;
    EndDrag();
  }
  // Kept on purpose: the last stretch goes the other way, twice as fast.
  if (mode == MapMode::kZooming) Zoom(static_cast<double>(y - prevY_) / Scaled(20));
  return mode == MapMode::kPressed;
}

// The reference point follows the drag by whole cells of the grid, so that its pixel stays within
// one cell of the centre and the picture stays where it is.
void MapPane::EndDrag() {
  const int pitch = ScaleOf(*this).GridPitch;
  const int x = (Ox - width_ / 2) % pitch + width_ / 2;
  const int y = (Oy - height_ / 2) % pitch + height_ / 2;
  mLon -= static_cast<double>(Ox - x) / Scl;
  mLat += static_cast<double>(Oy - y) / Scl;
  Ox = x;
  Oy = y;
}

void MapPane::Zoom(double rate) {
  const position::Position centre = Centre();
  const int former = Scl;
  Scl = static_cast<int>(std::clamp((rate + 1) * Scl, 1.0 * kSmallestScl, 1.0 * kLargestScl));
  // A slow drag would not get off the smallest scales, where a pixel's share is rounded away.
  if (rate > 0 && Scl == former) Scl = std::min(Scl + 1, kLargestScl);
  const double grown = static_cast<double>(Scl) / former - 1;
  const int middle = width_ / 2;
  const int centreLine = height_ / 2;
  Ox = ToPixels(Ox + std::trunc((Ox - middle) * grown));
  Oy = ToPixels(Oy + std::trunc((Oy - centreLine) * grown));
  // What the rounding took would grow with the next steps: the reference point makes up for it.
  mLat += centre.latitude - Centre().latitude;
  mLon += centre.longitude - Centre().longitude;
}

void MapPane::MoveTo(position::Position position) {
  Ox = width_ / 2;
  Oy = height_ / 2;
  mLat = position.latitude;
  mLon = position.longitude;
}

}  // namespace views
