// A latitude or longitude between the store, which keeps degrees as decimal text, and its field.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace edit {

// What the field shows of a stored position; empty where there is none, or no number.
std::u16string ShownPosition(const std::optional<std::u16string>& stored);

// What the field's text stores. A field that still shows `stored` keeps it to the digit: the form
// that is shown loses the sign of a part of a degree. None for an empty field or no position.
std::optional<std::u16string> StoredPosition(std::u16string_view shown,
                                             const std::optional<std::u16string>& stored);

}  // namespace edit
