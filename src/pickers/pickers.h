// What the finger's pickers are given and give back, and how a wheel's position stands for a value.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace pickers {

inline constexpr int kWithSeconds = 1;      // flag: a third wheel
inline constexpr uint16_t kExtraHour = 25;  // the extra button was chosen

struct TimeSelectParams {
  int flags = 0;
  std::optional<std::u16string> title;  // none: "値の選択"
  std::u16string extraText;
  int showExtra = 0;  // above 0: there is an extra button
  uint16_t startHour = 0;
  uint16_t startMinute = 0;
  uint16_t startSecond = 0;
  uint16_t hour = 0;  // the results, written on OK only
  uint16_t minute = 0;
  uint16_t second = 0;
};

struct ValueSelectParams {
  std::optional<std::u16string> title;  // none: "値の選択"
  std::u16string value;                 // the first value; on OK the result
  std::vector<std::u16string> history;
  int longest = 32767;  // that the line takes, in 16-bit units
};

struct ValueInputParams {
  std::optional<std::u16string> title;  // none: "値の入力"
  std::u16string value;                 // the first value; on OK the result
};

// The rows of a wheel: "00" to `count` - 1.
std::vector<std::u16string> WheelRows(int count);
// A wheel shows seven rows; its value stands in the fourth. A value that the wheel lacks counts
// from its beginning again.
int WheelTop(int value, int count);
int WheelValue(int top, int count);

// The extra button: hour 25, minute and second 0.
void TakeExtra(TimeSelectParams& params);
// The wheels' top rows; `secondTop` is none without a seconds wheel.
void TakeWheels(TimeSelectParams& params, int hourTop, int minuteTop, std::optional<int> secondTop);

}  // namespace pickers
