// An Action in memory: twelve texts in the order of the table's columns. None is a NULL column,
// which is another thing than an empty text.
#pragma once

#include <array>
#include <optional>
#include <string>
#include <string_view>

namespace store {

enum ActionColumn {
  kActId,        // 18 characters
  kLastUpdate,   // "yyyy/mm/dd hh:mm:ss", stamped by every write
  kStaDateTime,  // 19 characters, the time below 24:00:00
  kEndDateTime,  // 19 characters; "24:00:00" is the end of that day
  kLatitude,     // degrees as decimal text, or none
  kLongitude,
  kSubject,
  kPlace,
  kCategory1,
  kCategory2,
  kMemo,  // may hold line breaks
  kExtItems,
  kActionColumnCount
};

inline constexpr std::array<std::u16string_view, kActionColumnCount> kActionColumns = {
    u"f_nchActId",     u"f_dtLastUpdate", u"f_nchStaDateTime", u"f_nchEndDateTime",
    u"f_fltLatitude",  u"f_fltLongitude", u"f_nvcSubject",     u"f_nvcPlace",
    u"f_nvcCategory1", u"f_nvcCategory2", u"f_nvcMemo",        u"f_nvcExtItems"};

static_assert(!kActionColumns.back().empty(), "a name for each column");

// A column's name without the letters of its type, as the exchange files and the action texts know
// it: "ActId".
constexpr std::u16string_view TitleOf(ActionColumn column) {
  const std::u16string_view name = kActionColumns[column];
  return name.substr(name.find_first_of(u"ABCDEFGHIJKLMNOPQRSTUVWXYZ"));
}

using Action = std::array<std::optional<std::u16string>, kActionColumnCount>;

// A column's text, empty where it is NULL.
inline std::u16string_view TextOf(const Action& action, ActionColumn column) {
  return action[column] ? std::u16string_view(*action[column]) : std::u16string_view();
}

}  // namespace store
