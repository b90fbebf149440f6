// The built-in functions: LocalTime, Rand, Length, Substring, IndexOf.
#pragma once

#include <cstddef>
#include <string_view>

#include "actiontext/run.h"

namespace actiontext {

// The number of a function's name, -1 for any other name.
int IsFunc(std::u16string_view name);

// Calls a function with the topmost `count` items, which are taken off before any is looked at. 0
// with the result pushed, or a negative code; then nothing is pushed, except by IndexOf of an empty
// text. kTooMuchText is such a code.
int CallBuiltin(ActionTextContext& context, int number, size_t count);

}  // namespace actiontext
