#include "edit/edit_layout.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "edit/edit_action.h"
#include "support/fake_host.h"

namespace edit {
namespace {

bool Overlap(const Rect& a, const Rect& b) {
  return a.x < b.x + b.width && b.x < a.x + a.width && a.y < b.y + b.height && b.y < a.y + a.height;
}

TEST(EditLayout, FitsEveryControlForAFinger) {
  const testing_support::FakeHost host;
  const std::tuple<const char*, int, int, int, int, Orientation> rows[] = {
      {"a phone", 240, 320, 240, 242, Orientation::kPortrait},
      {"a phone on its side", 320, 240, 320, 162, Orientation::kLandscape},
      {"beside an input panel", 240, 200, 227, 0, Orientation::kPortrait},
      {"a flat window", 320, 160, 307, 0, Orientation::kLandscape},
      {"a large window", 900, 700, 900, 622, Orientation::kLandscape},
  };
  for (const auto& [why, screenWidth, screenHeight, width, formHeight, orientation] : rows) {
    SCOPED_TRACE(why);
    ASSERT_EQ(ChooseOrientation(screenWidth, screenHeight), orientation);
    const int height = std::max(formHeight, MinimumHeight(orientation));
    const EditLayout layout = LayOutFields(orientation, width, height, 64);
    EXPECT_EQ(layout.controls.size(), 21u);
    for (size_t i = 0; i < layout.controls.size(); i++) {
      const auto& [id, rect] = layout.controls[i];
      SCOPED_TRACE(id);
      EXPECT_GE(rect.height, 24);
      EXPECT_GE(rect.width, id == kIdStartDate ? 60 : 26) << "beside labels of the longest names";
      EXPECT_LE(rect.x + rect.width, width);
      EXPECT_LE(rect.y + rect.height, height);
      for (size_t k = 0; k < i; k++) {
        EXPECT_FALSE(Overlap(rect, layout.controls[k].rect)) << "with " << layout.controls[k].id;
      }
      for (const Rect& separator : layout.separators) EXPECT_FALSE(Overlap(rect, separator));
    }
  }
}

}  // namespace
}  // namespace edit
