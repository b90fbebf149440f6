#include "platform/late_wait.h"

#include <gtest/gtest.h>

#include "support/fake_host.h"

namespace platform {
namespace {

TEST(LateWaitTest, ShowsTheCursorOnceItLasts) {
  testing_support::FakeHost host;
  host.ticks = 0xFFFFFFFF;  // about to wrap
  host.ticksPerLook = 150;
  {
    LateWait wait;
    for (const int depth : {0, 1, 1}) {
      wait.Look();
      EXPECT_EQ(host.waitDepth, depth);
    }
  }
  EXPECT_EQ(host.waitDepth, 0);
}

}  // namespace
}  // namespace platform
