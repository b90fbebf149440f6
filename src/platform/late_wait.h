// The wait cursor for what is mostly done before anybody would see one.
#pragma once

#include <cstdint>

#include "platform/host.h"

namespace platform {

// Shows the wait cursor from the first look on that comes 200 ms or more after it was made.
class LateWait {
 public:
  LateWait() : start_(host().TickCount()) {}
  ~LateWait() {
    if (isShown_) host().SetWaitCursor(false);
  }
  LateWait(const LateWait&) = delete;
  LateWait& operator=(const LateWait&) = delete;

  void Look() {
    constexpr uint32_t kPatience = 200;  // milliseconds
    if (isShown_ || host().TickCount() - start_ < kPatience) return;
    isShown_ = true;
    host().SetWaitCursor(true);
  }

 private:
  const uint32_t start_;
  bool isShown_ = false;
};

}  // namespace platform
