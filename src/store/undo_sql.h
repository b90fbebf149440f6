// The statements of store/undo_log: Actions copied into t_UndoData and back. Only the log includes
// this.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>

namespace store::undo_sql {

// As a literal that shares its statement with others.
std::u16string Quoted(int64_t number);
std::u16string Quoted(std::u16string_view text);

// The head of a step, which follows row `former`.
std::u16string Head(int64_t former, int64_t step, int kind, std::u16string_view title,
                    std::u16string_view running);
// The first Action of an id, as it is now. No row changes if there is none. Its values are the
// row's number, its head's, the step, the count, the change and the id.
const std::string& Row();

// Many at once, by their row ids in rising order, numbered on from the newest row. Each gets the
// sum of bytes `before` and its own; what the newest one's then has to be, SumUpTo makes it.
std::u16string Rows(int64_t head, int64_t step, int64_t count, int64_t before, int change,
                    std::span<const int64_t> rows);
std::u16string SumUpTo(int64_t newest, int64_t before, int64_t count);

// Back into t_UserData, stamped with the clock's time. No row changes unless the Action is what row
// `former`, or row `number`, holds; or, to be added, unless there is none of its id.
std::u16string Replace(std::u16string_view id, int64_t former, int64_t latter);
std::u16string Remove(std::u16string_view id, int64_t number);
std::u16string Add(std::u16string_view id, int64_t number);

}  // namespace store::undo_sql
