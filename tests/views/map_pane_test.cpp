// The map without a window: drags, zooms, hits, and the picture that comes of them.
#include "views/map_pane.h"

#include <gtest/gtest.h>

#include <cmath>

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
  const std::tuple<double, double, int, const char*> rows[] = {
      {35.68, 139.76, 100, "the first scale"},
      {-33.87, -70.65, 4321, "southern and western"},
      {62.3, 25.5, 10, "the pitch depends on the latitude, here a drag is many degrees"},
      {89.9, -179.9, 10, "beyond the pole"},
      {35.681236, 139.767125, kLargestScl, "a pixel is a centimetre"}};
  for (const auto& [latitude, longitude, scl, why] : rows) {
    SCOPED_TRACE(why);
    pane.Scl = scl;
    pane.MapItems.clear();
    pane.MoveTo({latitude, longitude});
    for (int k = -20; k <= 20; ++k) {
      Place(latitude + k * 2.0 / scl, longitude - k * 3.3 / scl);
    }
    for (int drag = 0; drag < 60; ++drag) {
      pane.Press(100, 80);
      const int x = 100 + drag * 37 % 200 - 95, y = 80 + drag * 53 % 150 - 70;
      pane.Move(x, 200);
      pane.Move(x, y);
      const MapPicture dragged = PictureOf(pane);
      EXPECT_FALSE(pane.Release(x, y));
      ASSERT_EQ(PictureOf(pane), dragged) << drag;
      ASSERT_LE(std::abs(pane.Ox - 120), ScaleOf(pane).GridPitch);
    }
  }
}

TEST_F(Map, AZoomKeepsTheCentreAndReachesBothEnds) {
  pane.Ox += 40;
  pane.Oy -= 30;
  const position::Position centre = pane.Centre();
  for (const int step : {-1, 3, -1}) {
    SCOPED_TRACE(step);
    for (int k = 0; k < 2000; ++k) {
      pane.Press(230, 80);
      pane.Move(230, 80 + 9);  // leaves the press, and does no more
      pane.Move(230, 80 + step);
      pane.Release(230, 80 + step);
    }
    EXPECT_EQ(pane.Scl, step < 0 ? kLargestScl : kSmallestScl);
    EXPECT_NEAR(centre.latitude, pane.Centre().latitude, 1e-9);
    EXPECT_NEAR(centre.longitude, pane.Centre().longitude, 1e-9);
  }
}

TEST_F(Map, AMoveMeansWhatItsPressBegan) {
  pane.Press(226, 80);
  EXPECT_FALSE(pane.Move(226, 60)) << "leaves the press, and does no more";
  EXPECT_TRUE(pane.Move(226, 60));
  EXPECT_EQ(pane.Scl, 150) << "half of 40 up";
  EXPECT_FALSE(pane.Release(226, 50));
  EXPECT_EQ(pane.Scl, 75) << "the release goes the other way, twice as fast";
  pane.Press(225, 80);
  pane.Move(229, 84);
  EXPECT_TRUE(pane.Release(229, 84)) << "4 off is still a tap";
}

TEST_F(Map, TheScaleIsARoundNumberOfMetres) {
  const std::tuple<int, double, const char16_t*, int> rows[] = {
      {100, 36.5, u"50km", 44},      {10, 36.5, u"500km", 44}, {60, 36.5, u"50km", 26},
      {30, 0.0, u"100km", 26},       {12, 0.0, u"200km", 21},  {100000, 36.5, u"50m", 44},
      {kLargestScl, 0.0, u"1m", 77}, {100, 89.0, u"50km", 45}};
  for (const auto& [scl, latitude, text, pitch] : rows) {
    SCOPED_TRACE(testing::Message() << scl << " at " << latitude);
    pane.Scl = scl;
    pane.mLat = latitude;
    EXPECT_EQ(ScaleText(ScaleOf(pane).ScaleUnit), text);
    EXPECT_EQ(ScaleOf(pane).GridPitch, pitch);
  }
}

TEST_F(Map, ATapHitsTheFirstOfTheMarkersUnderIt) {
  pane.MoveTo({35, 139});
  for (const double longitude : {138.0, 139.0, 139.03}) Place(35, longitude);
  EXPECT_EQ(pane.HitTest({125, 85}), 1) << "and not the third, which is as near";
  EXPECT_EQ(pane.HitTest({128, 80}), 2);
  EXPECT_EQ(pane.HitTest({114, 80}), -1);
  pane.MapItems[1].valid = false;
  EXPECT_EQ(pane.HitTest({117, 80}), -1);
}

TEST_F(Map, AbsurdPositionsLieFarOutside) {
  for (const double degrees : {1e300, -1e300, double(INFINITY), double(NAN)}) {
    Place(degrees, degrees);
  }
  pane.MoveTo({-35.68, -139.76});
  const std::vector<MapLabel> labels = PictureOf(pane).labels;
  ASSERT_EQ(labels.size(), 5u) << "the strip's two and the scale's three";
  EXPECT_EQ(labels[3], (MapLabel{{0, 75}, u"-35/40/48", 0x60C060, true}));
  EXPECT_EQ(labels[4], (MapLabel{{90, 148}, u"-139/45/36", 0x60C060, true}));
  pane.Scl = kLargestScl;
  pane.Ox = pane.Oy = 1 << 28;
  EXPECT_EQ(PictureOf(pane).labels.size(), 5u);
  pane.MoveTo({1e300, -1e300});
  pane.Zoom(-0.5);
  EXPECT_EQ(pane.HitTest({10, 10}), -1);
}

}  // namespace
}  // namespace views
