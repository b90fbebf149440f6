// The statements of store/undo_log: Actions copied into t_UndoData and back. Only the log includes
// this.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace store::undo_sql {

// As a literal that shares its statement with others.
std::u16string Quoted(int64_t number);
std::u16string Quoted(std::u16string_view text);

// The head of a step, which follows row `former`.
std::u16string Head(int64_t former, int64_t step, int kind, std::u16string_view title,
                    std::u16string_view running);
// The first Action of an id, as it is now. No row changes if there is none. One statement for all,
// as an import needs it for each of its Actions; its values are the row's number, its head's, the
// step, the count, the change and the id.
const std::string& Row();

// Back into t_UserData, stamped with the clock's time. No row changes unless the Action is what row
// `former`, or row `number`, holds; or, to be added, unless there is none of its id.
std::u16string Replace(std::u16string_view id, int64_t former, int64_t latter);
std::u16string Remove(std::u16string_view id, int64_t number);
std::u16string Add(std::u16string_view id, int64_t number);

}  // namespace store::undo_sql
