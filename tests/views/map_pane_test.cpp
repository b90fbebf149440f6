// The map without a window: drags, zooms, hits, and the picture that comes of them.
#include "views/map_pane.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "support/fake_host.h"
#include "views/map_picture.h"

namespace views {
namespace {

class Map : public testing::Test {
 protected:
  Map() { pane.Resize(240, 160); }
  void Place(double latitude, double longitude) {
    const int number = static_cast<int>(pane.MapItems.size()) + 1;
    pane.MapItems.push_back({number, true, latitude, longitude, u""});
  }
  testing_support::FakeHost host;
  MapPane pane;
};

TEST_F(Map, TheEndOfADragLeavesThePictureAsItIs) {
  const struct {
    double latitude, longitude;
    int scl;
    const char* why;
  } rows[] = {{35.68, 139.76, 100, "the first scale"},
              {-33.87, -70.65, 4321, "southern and western"},
              {62.3, 25.5, 10, "the pitch depends on the latitude, here a drag is many degrees"},
              {89.9, -179.9, 10, "beyond the pole"},
              {0.0, 0.0, 1000, "on the equator"},
              {35.681236, 139.767125, kLargestScl, "a pixel is a centimetre"}};
  for (const auto& row : rows) {
    SCOPED_TRACE(row.why);
    pane.Scl = row.scl;
    pane.MapItems.clear();
    pane.MoveTo({row.latitude, row.longitude});
    for (int k = -20; k <= 20; ++k) {
      Place(row.latitude + k * 2.0 / row.scl, row.longitude - k * 3.3 / row.scl);
    }
    for (int drag = 0; drag < 60; ++drag) {
      pane.Press(100, 80);
      const int x = 100 + drag * 37 % 200 - 95, y = 80 + drag * 53 % 150 - 70;
      pane.Move(x, 200);
      pane.Move(x, y);
      const MapPicture dragged = PictureOf(pane);
      EXPECT_FALSE(pane.Release(x, y));
      ASSERT_EQ(dragged, PictureOf(pane)) << drag;
      ASSERT_LE(std::abs(pane.Ox - 120), ScaleOf(pane).GridPitch);
    }
  }
}

TEST_F(Map, AZoomKeepsTheCentreAndReachesBothEnds) {
  pane.Press(50, 80);
  pane.Move(90, 50);
  pane.Move(90, 50);
  pane.Release(90, 50);
  const position::Position centre = pane.Centre();
  const auto drag = [&](int step) {
    for (int k = 0; k < 2000; ++k) {
      pane.Press(230, 80);
      pane.Move(230, 80 + 9);  // leaves the press, and does no more
      pane.Move(230, 80 + step);
      pane.Release(230, 80 + step);
    }
  };
  drag(-1);
  EXPECT_EQ(kLargestScl, pane.Scl);
  EXPECT_NEAR(centre.latitude, pane.Centre().latitude, 1e-9);
  EXPECT_NEAR(centre.longitude, pane.Centre().longitude, 1e-9);
  drag(3);
  EXPECT_EQ(kSmallestScl, pane.Scl);
  drag(-1);
  EXPECT_EQ(kLargestScl, pane.Scl);
  EXPECT_NEAR(centre.longitude, pane.Centre().longitude, 1e-9);
}

TEST_F(Map, AMoveMeansWhatItsPressBegan) {
  const struct {
    int pressX, moveX, moveY, releaseY, scl, ox;
    MapMode mode;
    const char* why;
  } rows[] = {{225, 229, 84, 84, 100, 120, MapMode::kPressed, "4 off is still a tap"},
              {225, 225, 85, 85, 100, 125, MapMode::kDragging, "left of the strip"},
              {226, 226, 60, 60, 150, 120, MapMode::kZooming, "half of 40 up"},
              {226, 226, 120, 120, 10, 120, MapMode::kZooming, "all of 40 down and below 10"},
              {226, 226, 60, 50, 75, 120, MapMode::kZooming, "the release goes the other way"}};
  for (const auto& row : rows) {
    SCOPED_TRACE(row.why);
    pane.Scl = 100;
    pane.MoveTo({35, 139});
    pane.Press(row.pressX, 80);
    EXPECT_FALSE(pane.Move(row.moveX, row.moveY)) << "changes the mode at most";
    EXPECT_EQ(row.mode, pane.scmode);
    if (row.mode != MapMode::kPressed) {
      EXPECT_TRUE(pane.Move(row.pressX + 5, row.moveY));
    }
    EXPECT_EQ(row.mode == MapMode::kPressed, pane.Release(row.pressX + 5, row.releaseY));
    EXPECT_EQ(row.scl, pane.Scl);
    EXPECT_EQ(row.ox, pane.Ox);
  }
}

TEST_F(Map, TheScaleIsARoundNumberOfMetres) {
  const struct {
    int scl;
    double latitude;
    const char16_t* text;
    int pitch;
  } rows[] = {{100, 36.5, u"50km", 44},      {10, 36.5, u"500km", 44}, {60, 36.5, u"50km", 26},
              {30, 0.0, u"100km", 26},       {12, 0.0, u"200km", 21},  {100000, 36.5, u"50m", 44},
              {kLargestScl, 0.0, u"1m", 77}, {100, 89.0, u"50km", 45}};
  for (const auto& row : rows) {
    SCOPED_TRACE(row.scl);
    pane.Scl = row.scl;
    pane.mLat = row.latitude;
    EXPECT_EQ(row.text, ScaleText(ScaleOf(pane).ScaleUnit));
    EXPECT_EQ(row.pitch, ScaleOf(pane).GridPitch);
  }
  EXPECT_EQ(u"2Mm", ScaleText(2000000));
}

TEST_F(Map, ATapHitsTheFirstOfTheMarkersUnderIt) {
  pane.MoveTo({35, 139});
  Place(35.5, 139);
  Place(35, 139);
  Place(35, 139.03);
  EXPECT_EQ(1, pane.HitTest({125, 85})) << "and not the third, which is as near";
  EXPECT_EQ(2, pane.HitTest({128, 80}));
  EXPECT_EQ(-1, pane.HitTest({114, 80}));
  pane.MapItems[1].valid = false;
  EXPECT_EQ(-1, pane.HitTest({117, 80}));
  pane.Press(130, 70);
  EXPECT_DOUBLE_EQ(139.1, pane.PositionOf(-1).longitude);
  EXPECT_DOUBLE_EQ(35.1, pane.PositionOf(-1).latitude);
}

TEST_F(Map, AbsurdPositionsLieFarOutside) {
  const double kAbsurd[] = {1e300, -1e300, std::numeric_limits<double>::infinity(), NAN};
  for (const double degrees : kAbsurd) Place(degrees, degrees);
  pane.Scl = kLargestScl;
  pane.Ox = pane.Oy = 1 << 28;
  EXPECT_EQ(5u, PictureOf(pane).labels.size()) << "the strip's two and the scale's three";
  pane.MoveTo({1e300, -1e300});
  pane.Zoom(-0.5);
  EXPECT_EQ(-1, pane.HitTest({10, 10}));
}

TEST_F(Map, ThePictureTellsTheCentre) {
  pane.MoveTo({-35.68, -139.76});
  EXPECT_EQ(2u, PictureOf(pane).lines.size()) << "a day without Actions shows the cross alone";
  pane.MapItems.push_back({1, false, 0, 0, u""});
  pane.Resize(480, 160);
  const std::vector<MapLabel> labels = PictureOf(pane).labels;
  EXPECT_EQ((MapLabel{{0, 75}, u"-35/40/48", 0x60C060, true}), labels[3]);
  EXPECT_EQ((MapLabel{{210, 148}, u"-139/45/36", 0x60C060, true}), labels[4]);
}

}  // namespace
}  // namespace views
