// The five tables of a data file, each with one ascending index that is not unique: names,
// statements that make them, statements that bring an older file up to date. docs/formats.md says
// what their rows hold.
#pragma once

#include <array>
#include <string_view>

#include "store/action.h"

namespace store {

inline constexpr std::u16string_view kUserDataTable = u"t_UserData";
inline constexpr std::u16string_view kSysInfoTable = u"t_SysInfo";
inline constexpr std::u16string_view kLongDataTable = u"t_LongData";
inline constexpr std::u16string_view kTextDataTable = u"t_TextData";
inline constexpr std::u16string_view kRcdrDataTable = u"t_RcdrData";

inline constexpr std::u16string_view kItemColumn = u"f_nvcItem";
inline constexpr std::u16string_view kTextValueColumn = u"f_nvcValue";
inline constexpr std::u16string_view kLongValueColumn = u"f_i4Value";
inline constexpr std::u16string_view kRcdrPositionColumn = u"f_i4SNo";
inline constexpr std::u16string_view kRcdrIdColumn = u"f_nchActId";

struct TableStatements {
  std::u16string_view drop;
  std::u16string_view create;
  std::u16string_view index;
};

// In the order in which a new file gets them.
inline constexpr std::array<TableStatements, 5> kTableStatements = {{
    {u"DROP TABLE t_UserData",
     u"CREATE TABLE t_UserData (f_nchActId NCHAR(18), f_dtLastUpdate datetime, "
     u"f_nchStaDateTime NCHAR(19), f_nchEndDateTime NCHAR(19), f_fltLatitude float null, "
     u"f_fltLongitude float null, f_nvcSubject NVARCHAR(100), f_nvcPlace NVARCHAR(500), "
     u"f_nvcCategory1 NVARCHAR(500), f_nvcCategory2 NVARCHAR(500), f_nvcMemo NVARCHAR(2000), "
     u"f_nvcExtItems NVARCHAR(2000))",
     u"CREATE INDEX i_UserData on t_UserData (f_nchActId ASC)"},
    {u"DROP TABLE t_SysInfo",
     u"CREATE TABLE t_SysInfo (f_nvcItem NVARCHAR(20),  f_nvcValue NVARCHAR(500))",
     u"CREATE INDEX i_SysInfo on t_SysInfo (f_nvcItem ASC)"},
    {u"DROP TABLE t_LongData", u"CREATE TABLE t_LongData (f_nvcItem NVARCHAR(20),  f_i4Value int)",
     u"CREATE INDEX i_LongData on t_LongData (f_nvcItem ASC)"},
    {u"DROP TABLE t_TextData",
     u"CREATE TABLE t_TextData (f_nvcItem NVARCHAR(20),  f_nvcValue NVARCHAR(500))",
     u"CREATE INDEX i_TextData on t_TextData (f_nvcItem ASC)"},
    {u"DROP TABLE t_RcdrData", u"CREATE TABLE t_RcdrData (f_i4SNo int, f_nchActId NCHAR(18))",
     u"CREATE INDEX i_RcdrData on t_RcdrData (f_i4SNo ASC)"},
}};

// Whether a statement declares these columns, in this order and no others. No declaration holds a
// comma.
template <size_t kCount>
constexpr bool Declares(std::u16string_view create,
                        const std::array<std::u16string_view, kCount>& columns) {
  create.remove_prefix(create.find(u'(') + 1);
  for (size_t i = 0; i < kCount; ++i) {
    if (!create.starts_with(columns[i]) || create[columns[i].size()] != u' ') return false;
    const size_t comma = create.find(u',');
    if (comma == create.npos) return i + 1 == kCount;
    create.remove_prefix(create.find_first_not_of(u' ', comma + 1));
  }
  return false;
}
static_assert(Declares(kTableStatements[0].create, kActionColumns));

// What can be taken back; store/undo_log.h. A file gets it with its first step, so most other
// programs never meet it. The columns of an Action have no types: its values stand as they stood.
inline constexpr std::u16string_view kCreateUndoData =
    u"CREATE TABLE t_UndoData (f_i4No INTEGER PRIMARY KEY, f_i4Head int, f_i4Step int, "
    u"f_i4Count int, f_i8Bytes int, f_i4Kind int, f_i4Undone int, f_nvcTitle NVARCHAR(100), "
    u"f_nvcRunning NVARCHAR(18), f_i4Row int, f_nchActId, f_dtLastUpdate, f_nchStaDateTime, "
    u"f_nchEndDateTime, f_fltLatitude, f_fltLongitude, f_nvcSubject, f_nvcPlace, f_nvcCategory1, "
    u"f_nvcCategory2, f_nvcMemo, f_nvcExtItems)";

// What a t_UserData of an older format lacks, in this order.
inline constexpr std::array<std::u16string_view, 2> kAlterStatements = {
    u"alter table t_UserData alter column f_nvcSubject nvarchar(100)",
    u"alter table t_UserData add f_nvcExtItems nvarchar(2000)"};

}  // namespace store
