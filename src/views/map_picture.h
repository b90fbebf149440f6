// What the map's pane shows, as lines and labels for a painter: the grid with its scale, the
// markers, the strip that zooms. Pixels of the pane.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "views/map_pane.h"

namespace views {

struct MapScale {
  int ScaleUnit = 1;  // metres of a cell of the grid: 1, 2 or 5 times a power of ten
  int GridPitch = 1;  // the same in pixels, at least 1
};

// At the latitude of the pane's centre, which a drag's end leaves as it is.
MapScale ScaleOf(const MapPane& pane);
std::u16string ScaleText(int scaleUnit);

// Colours are 0xRRGGBB.
struct MapLine {
  MapPoint from;
  MapPoint to;
  uint32_t color = 0;
  bool operator==(const MapLine&) const = default;
};

// A white text on a ground of its own.
struct MapLabel {
  MapPoint topLeft;
  std::u16string text;
  uint32_t ground = 0;
  bool staysInside = false;  // of the pane, also where the font is too large for its place
  bool operator==(const MapLabel&) const = default;
};

// On white, each on top of what stands before it: the strip, the lines, the labels.
struct MapPicture {
  Rect zoomStrip;
  uint32_t zoomStripColor = 0;
  std::vector<MapLine> lines;
  std::vector<MapLabel> labels;
  bool operator==(const MapPicture&) const = default;
};

MapPicture PictureOf(const MapPane& pane);

}  // namespace views
