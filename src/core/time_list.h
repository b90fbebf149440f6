// Lists of times that a user picks from or types over: where they open, and what is said of a text
// that is no time.
#pragma once

#include <span>
#include <string>
#include <string_view>

namespace core {

// The row that is `text`; -1 if none is.
int RowOf(std::span<const std::u16string> rows, std::u16string_view text);
// The row that is `text`, else the last time before it, so that the list opens where it belongs; -1
// if there is none. The times stand in order; a mark, "<終日>" for one, is no time.
int RowOfTime(std::span<const std::u16string> rows, std::u16string_view text);

void ShowBadTime();

}  // namespace core
