// A latitude or longitude between the store, which keeps degrees as decimal text, and its field.
// The two forms keep different digits, and the field's loses the sign of a part of a degree: so
// what a field stands for is kept beside what it shows.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace edit {

struct PositionText {
  std::u16string shown;                  // degrees/minutes/seconds; empty where there is none
  std::optional<std::u16string> stored;  // what `shown` stores
};

// Of a column. Nothing is shown of a text that is no number, but it is kept.
PositionText OfColumn(const std::optional<std::u16string>& stored);
// Of degrees, north and east positive: what is stored is what is shown, with the sign.
PositionText OfDegrees(double degrees);

// What a field's text stores: as it was kept, as long as the field shows that. None for an empty
// field or no position.
std::optional<std::u16string> StoredPosition(std::u16string_view shown, const PositionText& kept);

}  // namespace edit
