// The press, the moves and the release on the shared list.
#include "views/row_gesture.h"

#include <algorithm>

namespace views {

void RowGesture::Press(int row, bool closedPopup) {
  pressed_ = true;
  rowTap_ = row >= 0;
  closedPopup_ = closedPopup;
  pressRow_ = row;
  lastDragRow_ = row;
}

RowGesture::Drag RowGesture::Move(int row, RowRange visible) {
  Drag drag;
  if (!rowTap_ || row == lastDragRow_) return drag;
  if (row < 0) {
    rowTap_ = false;
    return drag;
  }
  lastDragRow_ = row;
  drag.selects = true;
  drag.selection = {std::min(row, pressRow_), std::max(row, pressRow_)};
  drag.row = row;
  if (visible.last > visible.first) {
    if (row <= visible.first) drag.scrollBy = -1;
    if (row >= visible.last) drag.scrollBy = 1;
  }
  return drag;
}

RowGesture::Tap RowGesture::Release(int row) {
  const bool rowTap = rowTap_;
  const bool opens = pressed_ && !closedPopup_ && row == pressRow_;
  pressed_ = false;
  rowTap_ = false;
  if (!opens) return Tap::kNone;
  if (row < 0) return Tap::kNewAction;
  return rowTap ? Tap::kOpenRow : Tap::kNone;
}

}  // namespace views
