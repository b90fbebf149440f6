// The physics are kept to the letter: steps of 20 ms, single precision for speed and deceleration,
// double precision for the way.
#include "touch/inertial_list.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace touch {
namespace {

constexpr int kStepMilliseconds = 20;
constexpr int kMaxSteps = 201;
constexpr float kDeceleration = 0.002f;  // pixels a millisecond, each millisecond
constexpr std::array<uint32_t, kListColourCount> kFirstColours = {
    0xE0E0E0, 0xFFFFFF, 0xC06040, 0x000000, 0xC06040, 0xF0F0F0,
    0x000000, 0xDCDCDC, 0x808080, 0xDCDCDC, 0x000000};

int Sign(int number) {
  return (number > 0) - (number < 0);
}

}  // namespace

RowTextFormat RowTextFormat::OfStyle(int windowStyle) {
  RowTextFormat format;
  if ((windowStyle & 1) != 0) format.across = Align::kCentre;
  if ((windowStyle & 2) != 0) format.across = Align::kEnd;
  if ((windowStyle & 4) != 0) format.down = Align::kCentre;
  if ((windowStyle & 8) != 0) format.down = Align::kEnd;
  format.breaksWords = (windowStyle & 16) != 0;
  format.cutsAnywhere = (windowStyle & 64) != 0;
  return format;
}

InertList::InertList(Window window, int style, int screenLength)
    : window_(std::move(window)),
      style_(style),
      threshold_(screenLength / 50),
      colours_(kFirstColours) {}

void InertList::Resize(int width, int height) {
  width_ = width;
  height_ = height;
  top_ = std::max(top_, 0);
  if (Wraps() || top_ <= LastTopRow()) return;
  top_ = LastTopRow();
  Repaint();
}

// A press on a coasting list only stops it.
void InertList::Press(ListPoint point, uint32_t tick) {
  if (coasting_) {
    stop_ = true;
    return;
  }
  dragging_ = false;
  pressed_ = true;
  int y = 0;
  pressRow_ = RowAtOffset(top_, -point.y, y);
  if (pressRow_ >= Count()) pressRow_ = Wraps() && Count() > 0 ? pressRow_ % Count() : -1;
  press_ = current_ = fling_ = point;
  direction_ = 0;
  flingTick_ = tick;
  Repaint();
}

// Kept on purpose: beyond the threshold the direction is taken against the press again, so that
// after a turn the fling is measured from the last move alone.
void InertList::Move(ListPoint point, uint32_t tick) {
  if (dragging_ && !coasting_) {
    const int direction = Sign(point.y - current_.y);
    if (direction != 0 && direction != direction_) {
      fling_ = current_;
      flingTick_ = tick;
      direction_ = direction;
    }
    current_ = point;
    Repaint();
  }
  if (!pressed_) return;
  if (std::abs(point.x - press_.x) < threshold_ && std::abs(point.y - press_.y) < threshold_) {
    return;
  }
  dragging_ = true;
  direction_ = Sign(point.y - press_.y);
  current_ = point;
  Repaint();
}

void InertList::Release(ListPoint point, uint32_t tick) {
  pressed_ = false;
  if (coasting_) return;  // the tap that stops a coast must not move it
  current_ = point;
  if (dragging_) {
    StartCoast(point.y - fling_.y, tick - flingTick_);
  } else {
    Repaint();
  }
}

// Two events in one millisecond count as one millisecond apart.
void InertList::StartCoast(int dy, uint32_t dt) {
  Notify(ILN_COASTSTART);
  coasting_ = true;
  stop_ = dy == 0;
  speed_ = static_cast<float>(dy) / static_cast<float>(std::max<uint32_t>(dt, 1));
  deceleration_ = speed_ > 0 ? -kDeceleration : kDeceleration;
  const float toRest = std::max(speed_ / deceleration_, -1.0e6f);  // milliseconds, below 0
  stepsToRest_ = static_cast<int>(toRest) / -kStepMilliseconds;
  step_ = lastWay_ = 0;
  if (stop_) {
    EndCoast();
  } else {
    CoastStep();
  }
}

void InertList::CoastStep() {
  const int t = (step_ + 1) * kStepMilliseconds;
  const double mean = static_cast<double>(speed_) + static_cast<double>(deceleration_) * t * 0.5;
  const int way = static_cast<int>(mean * t);
  current_.y += way - lastWay_;
  lastWay_ = way;
  ++step_;
  Repaint();
}

void InertList::CoastTick() {
  if (!coasting_) return;
  if (stop_ || step_ > stepsToRest_ || step_ >= kMaxSteps) {
    EndCoast();
  } else {
    CoastStep();
  }
}

void InertList::StopCoast() {
  if (coasting_) EndCoast();
}

void InertList::EndCoast() {
  dragging_ = false;
  int y = 0;
  const int reached = RowAtOffset(top_, current_.y - press_.y, y);
  top_ = Wraps() ? std::max(reached, 0) : std::clamp(reached, 0, LastTopRow());
  coasting_ = false;
  Repaint();
  Notify(ILN_COASTEND);
}

void InertList::Key(ListKey key) {
  switch (key) {
    case ListKey::kHome:
      top_ = 0;
      break;
    case ListKey::kEnd:
      top_ = LastTopRow();
      break;
    case ListKey::kUp:
      if (top_ > 0) {
        --top_;
      } else if (Wraps()) {
        top_ = std::max(Count() - 1, 0);
      }
      break;
    case ListKey::kDown:
      if (top_ < (Wraps() ? Count() - 1 : LastTopRow())) {
        ++top_;
      } else if (Wraps()) {
        top_ = 0;
      }
      break;
  }
  Repaint();
}

// Kept on purpose: a row whose lower edge lies exactly on the window's upper edge still counts as
// the row that covers it.
int InertList::RowAtOffset(int start, int offset, int& y) const {
  const int count = Count();
  int row = start;
  y = 0;
  if (offset > 0) {
    int sum = 0;
    while (sum < offset) {
      row = Wraps() && row <= 0 ? count - 1 : row - 1;
      sum += RowHeight(row);
    }
    y = offset - sum;
  } else if (offset < 0) {
    int sum = RowHeight(row);
    while (sum < -offset) {
      row = Wraps() && row + 1 >= count ? 0 : row + 1;
      sum += RowHeight(row);
    }
    y = offset + sum - RowHeight(row);
  }
  return row;
}

int InertList::LastTopRow() const {
  int row = Count() - 1;
  for (int sum = 0; row >= 0; --row) {
    sum += RowHeight(row);
    if (sum >= height_) break;
  }
  return std::min(row + 1, std::max(Count() - 1, 0));
}

// At least a pixel: a walk along rows without height would never end.
int InertList::RowHeight(int row) const {
  const int own = ops_.As<DeleteFunction>(kOpGetHeight)(store_, row);
  return std::max(own >= 0 ? own : defaultHeight_, 1);
}

void InertList::Paint(ListCanvas& canvas) {
  const int count = Count();
  const auto paintRow = ops_.As<PaintFunction>(kOpPaintRow);
  const auto paintEmptyRow = ops_.As<PaintFunction>(kOpPaintEmptyRow);
  bool sawData = false;
  int row = top_;
  int y = 0;
  if (dragging_) row = RowAtOffset(top_, current_.y - press_.y, y);
  while (y < height_) {
    const bool isData = row >= 0 && row < count;
    const int rowHeight = isData ? RowHeight(row) : std::max(defaultHeight_, 1);
    (isData ? paintRow : paintEmptyRow)(*this, canvas, row, {0, y, width_, y + rowHeight});
    sawData = sawData || isData;
    y += rowHeight;
    ++row;
    if (Wraps() && row >= count) row = 0;
  }
  if (dragging_ && !sawData) stop_ = true;  // a coast has run the rows away
}

void ListRow(InertList& list, ListCanvas& canvas, int row, const ListRect& area) {
  const bool pressed = list.ShowsPressed(row);
  const auto colour = [&](ListColour plain, ListColour underPress) {
    return list.Colour(pressed ? underPress : plain);
  };
  canvas.Fill(area, colour(kRowBack, kPressedBack));
  const std::u16string text = list.GetText(row);
  if ((list.Style() & ILS_SHADOW) != 0) {
    canvas.DrawText({area.left + 1, area.top + 1, area.right + 1, area.bottom + 1}, row, text,
                    colour(kRowShadow, kPressedShadow));
  }
  canvas.DrawText(area, row, text, colour(kRowText, kPressedText));
  canvas.Fill({area.left, area.bottom - 1, area.right, area.bottom},
              colour(kRowLine, kPressedLine));
}

void ListEmptyRow(InertList& list, ListCanvas& canvas, int, const ListRect& area) {
  canvas.Fill(area, list.Colour(kUnderRows));
}

}  // namespace touch
