// Whether the parts of an extended item have their form. Shapes alone are checked: "2010/13/45" is
// a date. `position` is always written: the index at which the scan stopped, which is the first
// character that was refused, or the length of a text that ended too soon or passed.
#pragma once

#include <cstddef>
#include <string_view>

#include "extitems/ext_item.h"

namespace extitems {

inline constexpr int kBadName = -1000;
inline constexpr int kBadLabel = -2000;
inline constexpr int kBadInt = -4000;
inline constexpr int kBadFloat = -5000;
inline constexpr int kBadDate = -7000;
inline constexpr int kBadTime = -8000;
inline constexpr int kBadDateTime = -9000;
inline constexpr int kBadFile = -10000;
inline constexpr int kBadType = -12000;

// 0, kBadName, kBadLabel or the code of CheckItemValue. An absent value is checked as an empty one.
int CheckExtItem(const ExtItem& item, size_t& position);
// 0 or one of the codes from kBadInt to kBadType. Every text is a good "string" and "mlstring".
int CheckItemValue(std::u16string_view type, std::u16string_view value, size_t& position);

// 0 or -1.
int CheckItemName(std::u16string_view text, size_t& position);   // a letter; letters, digits, "_"
int CheckItemLabel(std::u16string_view text, size_t& position);  // no ":", no blank
int CheckIntText(std::u16string_view text, size_t& position);    // "12", "- 12"
// An exponent needs a small "e" and a sign: "1e+5". "1." and "+.5" pass, ".5" does not.
int CheckFloatText(std::u16string_view text, size_t& position);
int CheckDateText(std::u16string_view text, size_t& position);  // "2010/1/2", "2010 . 1 . 2"
int CheckTimeText(std::u16string_view text, size_t& position);  // "7:5:0", the seconds too
int CheckDateTimeText(std::u16string_view text, size_t& position);
int CheckFileText(std::u16string_view text, size_t& position);  // "\folder\name", no blank last

}  // namespace extitems
