// The three forms in which an Action is a line of an exchange file. The fields stand between tabs,
// and nothing is quoted or escaped but the memo of the third form: a tab or a line end inside
// another column breaks the line.
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
  kVer3 = 3   // a header line; all twelve columns in the table's order, the memo escaped and quoted
};

inline constexpr std::u16string_view kVer3Header =
    u"ActId\tLastUpdate\tStaDateTime\tEndDateTime\tLatitude\tLongitude\tSubject\tPlace\tCategory1\t"
    u"Category2\tMemo\tExtItems";

// An absent column is an empty field; an absent memo of kVer3 is two quotes.
std::u16string Ver1Line(const store::Action& action);
std::u16string Ver2Line(const store::Action& action);
std::u16string Ver3Line(const store::Action& action);

}  // namespace exchange
