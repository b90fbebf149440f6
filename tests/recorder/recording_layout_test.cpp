#include "recorder/recording_layout.h"

#include <gtest/gtest.h>

#include "support/fake_host.h"

namespace recorder {
namespace {

bool Overlap(const platform::Rect& a, const platform::Rect& b) {
  return a.x < b.x + b.width && b.x < a.x + a.width && a.y < b.y + b.height && b.y < a.y + a.height;
}

TEST(RecorderLayout, EverythingHasAPlaceOfItsOwnOnTheScreen) {
  const std::tuple<const char*, int, int, int, int> rows[] = {
      {"a phone upright", 240, 294, 40, 100},
      {"and turned", 320, 214, 90, 80},
      {"with an input panel", 240, 214, 40, 20},
      {"a desktop's window", 800, 574, 90, 300},
  };
  testing_support::FakeHost host;
  for (const auto& [why, width, height, labelWidth, listHeight] : rows) {
    SCOPED_TRACE(why);
    const RecorderLayout layout = LayOutRecorder(width, height, labelWidth);
    EXPECT_EQ(layout.controls.size(), 22u);
    for (size_t i = 0; i < layout.controls.size(); i++) {
      const auto& [id, a] = layout.controls[i];
      SCOPED_TRACE(id);
      EXPECT_TRUE(a.x >= 0 && a.y >= 0 && a.x + a.width <= width && a.y + a.height <= height);
      EXPECT_GE(a.width, id == kIdTime ? 68 : 20);
      EXPECT_GE(a.height, id == kIdList ? listHeight : 20);
      for (size_t k = 0; k < i; k++) EXPECT_FALSE(Overlap(a, layout.controls[k].rect));
    }
  }
}

}  // namespace
}  // namespace recorder
