// The wait cursor for what is mostly done before anybody would see one.
#pragma once

#include <cstdint>

#include "platform/host.h"

namespace totals {

// Shows the wait cursor from the first look on that comes 200 ms or more after it was made.
class LateWait {
 public:
  LateWait() : start_(platform::host().TickCount()) {}
  ~LateWait() {
    if (isShown_) platform::host().SetWaitCursor(false);
  }
  LateWait(const LateWait&) = delete;
  LateWait& operator=(const LateWait&) = delete;

  void Look() {
    constexpr uint32_t kPatience = 200;  // milliseconds
    if (isShown_ || platform::host().TickCount() - start_ < kPatience) return;
    isShown_ = true;
    platform::host().SetWaitCursor(true);
  }

 private:
  const uint32_t start_;
  bool isShown_ = false;
};

}  // namespace totals
