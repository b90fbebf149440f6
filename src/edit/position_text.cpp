#include "edit/position_text.h"

#include "position/coordinate.h"

namespace edit {

std::u16string ShownPosition(const std::optional<std::u16string>& stored) {
  const auto degrees = stored ? position::ReadDecimalDegrees(*stored) : std::nullopt;
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
