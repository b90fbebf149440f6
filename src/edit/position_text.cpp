#include "edit/position_text.h"

#include <cmath>

#include "core/text.h"
#include "position/coordinate.h"

namespace edit {

PositionText OfColumn(const std::optional<std::u16string>& stored) {
  const auto degrees = stored ? position::ReadDecimalDegrees(*stored) : std::nullopt;
  return {degrees ? position::FormatCoordinate(*degrees) : std::u16string(), stored};
}

PositionText OfDegrees(double degrees) {
  PositionText text{position::FormatCoordinate(degrees), {}};
  double shown = 0.0;
  if (position::ParseCoordinate(text.shown, shown) == 0) {
    text.stored = core::FloatText(std::copysign(shown, degrees));
  }
  return text;
}

std::optional<std::u16string> StoredPosition(std::u16string_view shown, const PositionText& kept) {
  if (shown == kept.shown) return kept.stored;
  return position::DecimalDegrees(shown);
}

}  // namespace edit
