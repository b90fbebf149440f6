// Degrees, minutes and seconds out of a number, and the state machine that reads them back.
#include "position/coordinate.h"

#include <charconv>
#include <cmath>
#include <cstdint>
#include <limits>
#include <system_error>

#include "core/characters.h"
#include "core/text.h"
#include "platform/utf.h"

namespace position {
namespace {

constexpr double kDegreesOfMinute = 0.016666666666666666;
constexpr double kDegreesOfSecond = 0.0002777777777777778;

int32_t WrapToInt32(double whole) {
  const double turn = 4294967296.0;
  const double rest = std::fmod(whole, turn);
  return static_cast<int32_t>(static_cast<uint32_t>(rest < 0 ? rest + turn : rest));
}

// Kept on purpose: the sign stays with the degrees alone, -0.5 reads 0/30/0.
CoordinateParts Split(double value, double& secondsWithFraction) {
  if (!std::isfinite(value)) value = 0.0;
  const double degrees = std::trunc(value);
  const double minutes = (std::fabs(value) - std::fabs(degrees)) * 60;
  CoordinateParts parts;
  parts.degrees = WrapToInt32(degrees);
  parts.minutes = static_cast<int>(minutes);
  secondsWithFraction = (minutes - parts.minutes) * 60;
  parts.seconds = static_cast<int>(secondsWithFraction);
  parts.milliseconds = static_cast<int>((secondsWithFraction - parts.seconds) * 1000);
  return parts;
}

double ToSeconds(std::u16string_view digits) {
  const std::string ascii = platform::ToUtf8(digits);
  double seconds = 0.0;  // a point alone is 0
  const auto end = ascii.data() + ascii.size();
  if (std::from_chars(ascii.data(), end, seconds).ec == std::errc::result_out_of_range) {
    seconds = std::numeric_limits<double>::max();
  }
  return seconds;
}

}  // namespace

std::u16string FormatCoordinate(double value) {
  double seconds = 0.0;
  const CoordinateParts parts = Split(value, seconds);
  char secondsText[32];
  const auto end = std::to_chars(secondsText, secondsText + sizeof secondsText, seconds,
                                 std::chars_format::fixed, 6)
                       .ptr;
  std::string text = std::to_string(parts.degrees) + '/' + std::to_string(parts.minutes) + '/';
  text.append(secondsText, end);
  return platform::ToUtf16(text);
}

std::optional<std::u16string> DecimalDegrees(std::u16string_view coordinate) {
  double degrees = 0.0;
  if (ParseCoordinate(coordinate, degrees) != 0) return {};
  return core::FloatText(degrees);
}

std::optional<double> ReadDecimalDegrees(std::u16string_view text) {
  const std::string ascii = platform::ToUtf8(text);
  double degrees = 0.0;
  const auto end = ascii.data() + ascii.size();
  const auto result = std::from_chars(ascii.data(), end, degrees);
  if (result.ec != std::errc() || result.ptr != end || !std::isfinite(degrees)) return {};
  return degrees;
}

CoordinateParts SplitCoordinate(double value) {
  double seconds = 0.0;
  return Split(value, seconds);
}

int ParseCoordinate(std::u16string_view text, double& value) {
  int state = 100;
  double sign = 1.0;
  int32_t degrees = 0;
  int32_t minutes = 0;
  size_t begin = 0;  // of the number that is being read
  bool point = false;
  for (size_t i = 0; i < text.size(); i++) {
    const char16_t c = text[i];
    const bool digit = core::IsDigit(c);
    switch (state) {
      case 100:
        if (c == u'-') {
          sign = -1.0;
          begin = 1;
          state = 101;
          break;
        }
        [[fallthrough]];
      case 101:
        if (!digit) return -state;
        state = 102;
        break;
      case 102:
        if (digit) break;
        if (c != u'/') return -state;
        degrees = core::ToInt32(text.substr(begin, i - begin));
        state = 200;
        break;
      case 200:
        if (!digit) return -state;
        begin = i;
        state = 201;
        break;
      case 201:
        if (digit) break;
        if (c != u'/') return -state;
        minutes = core::ToInt32(text.substr(begin, i - begin));
        begin = i + 1;
        state = 300;
        break;
      case 300:
        if (!digit && c != u'.') return -state;
        point = c == u'.';
        state = 301;
        break;
      default:
        if (digit) break;
        if (c != u'.' || point) return -state;
        point = true;
    }
  }
  if (state != 301) return state;
  value =
      (ToSeconds(text.substr(begin)) * kDegreesOfSecond + minutes * kDegreesOfMinute + degrees) *
      sign;
  return 0;
}

}  // namespace position
