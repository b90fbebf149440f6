// What a finger means on the shared list: a tap opens a row, a drag selects rows, a tap below the
// rows is a new Action. The machine knows row numbers only, -1 for a point on no row.
#pragma once

namespace views {

// The rows first .. last; none if last < first.
struct RowRange {
  int first = 0;
  int last = -1;
  bool operator==(const RowRange&) const = default;
};

class RowGesture {
 public:
  enum class Tap { kNone, kOpenRow, kNewAction };

  struct Drag {
    bool selects = false;  // `selection` holds what is to be selected now
    RowRange selection;
    int row = -1;      // takes the focus with it
    int scrollBy = 0;  // lines: -1, 0 or 1
  };

  // A press that only closed a popup opens nothing when it is released.
  void Press(int row, bool closedPopup);
  // The press has become a tap and hold.
  void Hold() { rowTap_ = false; }
  // `visible`: the rows that are wholly in sight.
  Drag Move(int row, RowRange visible);
  Tap Release(int row);

 private:
  bool rowTap_ = false;  // a press on a row that may still open it
  bool closedPopup_ = false;
  bool pressed_ = false;
  int pressRow_ = -1;
  int lastDragRow_ = -1;
};

}  // namespace views
