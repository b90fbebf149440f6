#include "edit/position_text.h"

#include <charconv>
#include <cmath>

#include "platform/utf.h"
#include "position/coordinate.h"

namespace edit {
namespace {

std::optional<double> ToDegrees(const std::u16string& text) {
  const std::string ascii = platform::ToUtf8(text);
  double degrees = 0.0;
  const auto end = ascii.data() + ascii.size();
  const auto result = std::from_chars(ascii.data(), end, degrees);
  if (result.ec != std::errc() || result.ptr != end || !std::isfinite(degrees)) return {};
  return degrees;
}

}  // namespace

std::u16string ShownPosition(const std::optional<std::u16string>& stored) {
  const std::optional<double> degrees = stored ? ToDegrees(*stored) : std::nullopt;
  return degrees ? position::FormatCoordinate(*degrees) : std::u16string();
}

std::optional<std::u16string> StoredPosition(std::u16string_view shown,
                                             const std::optional<std::u16string>& stored) {
  if (shown == ShownPosition(stored)) return stored;
  double degrees = 0.0;
  if (position::ParseCoordinate(shown, degrees) != 0) return {};
  return position::DecimalDegrees(degrees);
}

}  // namespace edit
