// The forms in which an Action is a line of an exchange file. The fields stand between tabs,
// and nothing is quoted or escaped but the memo of the third form: a tab or a line end inside
// another column breaks the line. docs/formats.md shows each form byte for byte.
#pragma once

#include <string>
#include <string_view>

#include "store/action.h"

namespace exchange {

// What separates the fields in every form, whatever the file's extension.
inline constexpr char16_t kExchangeSeparator = u'\t';

enum FormatVer {
  kVer1 = 1,  // no id: start date, start time hh:mm, end date, end time, place, categories, memo
  kVer2 = 2,  // the id first, times hh:mm:ss
  kVer3 = 3,  // a header line; all twelve columns in the table's order, the memo escaped and quoted
  kVer3Utf8 = 4  // the same after a byte order mark, in UTF-8; the others are in the code page
};

// Fields of a line, in the order of the versions.
inline constexpr int kFieldCounts[] = {8, 9, store::kActionColumnCount, store::kActionColumnCount};

// What stands before the first Action's line; empty for the first two versions.
std::string HeaderBytes(int version);

// One Action as a line with its end, in place of `bytes`. An absent column is an empty field; an
// absent memo of kVer3 is two quotes. What is escaped is the text that the file will give back.
// False if the file can't give back every character of these fields: its encoding lacks one, or a
// tab or a line end in one of them breaks the line.
bool LineBytes(const store::Action& action, int version, std::string& bytes);

}  // namespace exchange
