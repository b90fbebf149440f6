// The texts of a latitude or longitude. The screen form is degrees/minutes/seconds, the seconds
// with six decimals ("35/41/22.200000"); the store and links have degrees with six decimals
// ("35.689500"). No form checks a range.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace position {

// Degrees, north and east positive.
struct Position {
  double latitude = 0.0;
  double longitude = 0.0;
};

struct CoordinateParts {
  int degrees = 0;
  int minutes = 0;
  int seconds = 0;
  int milliseconds = 0;
};

// The sign stands on the degrees alone, so that a value between -1 and 0 loses it. A value that is
// no number reads as 0; degrees beyond 32 bits wrap.
std::u16string FormatCoordinate(double value);

// What the store holds for a screen form: core::FloatText of its degrees; none for a text that
// isn't one.
std::optional<std::u16string> DecimalDegrees(std::u16string_view coordinate);
// Reads that back as a number; none for a text that is empty or no finite number.
std::optional<double> ReadDecimalDegrees(std::u16string_view text);

// The parts of the screen form in integers, what is left over truncated.
CoordinateParts SplitCoordinate(double value);

// Reads the screen form; minutes and seconds are not limited to 59. 0, or the code of the state
// that failed, below 0 at a wrong character, above 0 at the end of the text; `value` is written on
// success only.
int ParseCoordinate(std::u16string_view text, double& value);

}  // namespace position
