// Grid, scale, labels and markers of the map.
#include "views/map_picture.h"

#include <algorithm>
#include <cmath>
#include <numbers>

#include "core/text.h"
#include "platform/metrics.h"
#include "position/coordinate.h"

namespace views {
namespace {

using platform::Scaled;

constexpr uint32_t kStrip = 0x8080FF;
constexpr uint32_t kStripLabel = 0xFF8080;
constexpr uint32_t kEmptyCross = 0xA0A0E0;
constexpr uint32_t kCross = 0x0000FF;
constexpr uint32_t kGrid = 0xA0A0A0;
constexpr uint32_t kMarker = 0x6464E0;
constexpr uint32_t kScaleLabel = 0x60C060;

constexpr double kDegree = std::numbers::pi / 180;

// Metres from the centre of the earth to the WGS-84 ellipsoid where `latitude` is the angle at the
// centre: a·b / √((b·cos)² + (a·sin)²), with the semi-axes' product and squares.
double RadiusAt(double latitude) {
  const double cosine = std::cos(latitude * kDegree);
  const double sine = std::sin(latitude * kDegree);
  return 40544237137075.65 /
         std::sqrt(cosine * cosine * 40408299988155.375 + sine * sine * 40680631590769.0);
}

// The length of a cell where Scaled(100) pixels cover `metres`: between a sixth and a half of them,
// or a metre where that is more.
int UnitFor(double metres) {
  int unit = 1;
  while (unit * 10.0 <= metres) unit *= 10;
  const int times = static_cast<int>(metres / unit);
  if (times >= 6) return unit * 2;
  return times < 2 ? std::max(unit / 2, 1) : unit;
}

// The first line of the grid at or right of the edge.
int FirstLine(int origin, int pitch) {
  return (origin % pitch + pitch) % pitch;
}

void AddGrid(const MapPane& pane, int pitch, std::vector<MapLine>& lines) {
  for (int x = FirstLine(pane.Ox, pitch); x < pane.Width(); x += pitch) {
    lines.push_back({{x, 0}, {x, pane.Height() - 1}, kGrid});
  }
  for (int y = FirstLine(pane.Oy, pitch); y < pane.Height(); y += pitch) {
    lines.push_back({{0, y}, {pane.Width() - 1, y}, kGrid});
  }
}

void AddCross(const MapPane& pane, uint32_t color, std::vector<MapLine>& lines) {
  const int x = pane.Width() / 2;
  const int y = pane.Height() / 2;
  lines.push_back({{0, y}, {pane.Width() - 1, y}, color});
  lines.push_back({{x, 0}, {x, pane.Height() - 1}, color});
}

// From the last to the first, which is the one that a tap hits. Those whose label lies wholly
// outside are left out.
void AddMarkers(const MapPane& pane, std::vector<MapLabel>& labels) {
  const int reach = Scaled(100);
  for (size_t i = pane.MapItems.size(); i-- > 0;) {
    const MapItem& item = pane.MapItems[i];
    const MapPoint at = pane.PixelOf({item.latitude, item.longitude});
    if (!item.valid || at.x < -reach || at.x > pane.Width() + reach || at.y < -reach ||
        at.y > pane.Height() + reach) {
      continue;
    }
    labels.push_back({{at.x - Scaled(kMarkerReach), at.y - Scaled(kMarkerReach)},
                      core::ZeroPadded(item.number, 2),
                      kMarker});
  }
}

// Degrees, minutes and seconds, each truncated.
std::u16string DegreesText(double degrees) {
  // Whole seconds must not fall to the one before by the last digit of a double: a tenth of a
  // millimetre more.
  const position::CoordinateParts parts =
      position::SplitCoordinate(degrees + std::copysign(1e-9, degrees));
  return core::ZeroPadded(parts.degrees, 1) + u"/" + core::ZeroPadded(parts.minutes, 2) + u"/" +
         core::ZeroPadded(parts.seconds, 2);
}

void AddScaleLabels(const MapPane& pane, int scaleUnit, std::vector<MapLabel>& labels) {
  const int bottom = pane.Height() - Scaled(12);
  const position::Position centre = pane.Centre();
  labels.push_back({{pane.Width() - Scaled(50), bottom}, ScaleText(scaleUnit), kScaleLabel, true});
  labels.push_back(
      {{0, pane.Height() / 2 - Scaled(5)}, DegreesText(centre.latitude), kScaleLabel, true});
  labels.push_back(
      {{pane.Width() / 2 - Scaled(30), bottom}, DegreesText(centre.longitude), kScaleLabel, true});
}

}  // namespace

MapScale ScaleOf(const MapPane& pane) {
  const double radius = RadiusAt(pane.Centre().latitude);
  MapScale scale;
  scale.ScaleUnit = UnitFor(static_cast<double>(Scaled(100)) / pane.Scl * radius * kDegree);
  scale.GridPitch = std::max(static_cast<int>(scale.ScaleUnit / radius * pane.Scl / kDegree), 1);
  return scale;
}

std::u16string ScaleText(int scaleUnit) {
  if (scaleUnit < 1000) return core::ZeroPadded(scaleUnit, 1) + u"m";
  if (scaleUnit < 1000000) return core::ZeroPadded(scaleUnit / 1000, 1) + u"km";
  return core::ZeroPadded(scaleUnit / 1000000, 1) + u"Mm";
}

MapPicture PictureOf(const MapPane& pane) {
  MapPicture picture;
  picture.zoomStrip = pane.ZoomStrip();
  picture.zoomStripColor = kStrip;
  const int stripTextX = picture.zoomStrip.x + Scaled(4);
  picture.labels.push_back({{stripTextX, 0}, u"+", kStripLabel, true});
  picture.labels.push_back({{stripTextX, pane.Height() - Scaled(15)}, u"--", kStripLabel, true});
  if (pane.MapItems.empty()) {
    AddCross(pane, kEmptyCross, picture.lines);
    return picture;
  }
  const MapScale scale = ScaleOf(pane);
  AddGrid(pane, scale.GridPitch, picture.lines);
  AddCross(pane, kCross, picture.lines);
  AddMarkers(pane, picture.labels);
  AddScaleLabels(pane, scale.ScaleUnit, picture.labels);
  return picture;
}

}  // namespace views
