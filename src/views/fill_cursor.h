// The wait cursor of a fill that may last.
#pragma once

#include <cstddef>
#include <optional>

#include "platform/host.h"

namespace views {

// Shows the wait cursor from there on, until it goes: a slow device may need half a second for the
// next few thousand rows. At every tap it would flicker.
class FillCursor {
 public:
  static constexpr size_t kRowsWithout = 1000;

  explicit FillCursor(size_t rows = 0) { Add(rows); }
  void Add(size_t rows = 1) {
    rows_ += rows;
    if (rows_ > kRowsWithout && !cursor_) cursor_.emplace();
  }

 private:
  size_t rows_ = 0;
  std::optional<platform::WaitCursor> cursor_;
};

}  // namespace views
