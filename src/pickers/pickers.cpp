#include "pickers/pickers.h"

#include "core/text.h"

namespace pickers {
namespace {

constexpr int kRowsAboveValue = 3;
constexpr int kHours = 24;
constexpr int kMinutes = 60;

}  // namespace

std::vector<std::u16string> WheelRows(int count) {
  std::vector<std::u16string> rows;
  rows.reserve(static_cast<size_t>(count));
  for (int value = 0; value < count; ++value) rows.push_back(core::ZeroPadded(value, 2));
  return rows;
}

int WheelTop(int value, int count) {
  return (value % count - kRowsAboveValue + count) % count;
}

int WheelValue(int top, int count) {
  return (top + kRowsAboveValue) % count;
}

void TakeExtra(TimeSelectParams& params) {
  params.hour = kExtraHour;
  params.minute = params.second = 0;
}

void TakeWheels(TimeSelectParams& params, int hourTop, int minuteTop,
                std::optional<int> secondTop) {
  params.hour = static_cast<uint16_t>(WheelValue(hourTop, kHours));
  params.minute = static_cast<uint16_t>(WheelValue(minuteTop, kMinutes));
  params.second = static_cast<uint16_t>(secondTop ? WheelValue(*secondTop, kMinutes) : 0);
}

}  // namespace pickers
