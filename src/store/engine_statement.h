// One prepared statement of the engine's. Only the engine's own files include this.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "store/column.h"

struct sqlite3_stmt;

namespace store {

// One prepared statement and the names of the columns that it yields. A value that couldn't be
// bound fails the steps that follow.
class Statement {
 public:
  // Takes `prepared` over.
  Statement(sqlite3_stmt* prepared, std::string_view sql);
  ~Statement();
  Statement(const Statement&) = delete;
  Statement& operator=(const Statement&) = delete;

  sqlite3_stmt* Get() const { return prepared_; }
  const std::string& Sql() const { return sql_; }

  // Position of a column, tried at `expected` first; -1 if the select has none of that name.
  int Find(std::u16string_view name, size_t expected) const;
  // An SQLite result code.
  int Step();
  // `bytes` need not live on.
  void BindText(int parameter, std::string_view bytes);
  // As the column's declaration wants it: cut to its length, or converted to a number.
  void BindValue(int parameter, const Column& column, std::u16string_view text);
  // A text that is longer than its column is cut to it, as a file that nobody vouches for may hold
  // one of any length. False if there is no memory for the value.
  bool Read(int column, std::optional<std::u16string>& text) const;
  void Reset();

 private:
  void NoteFault(int bound);

  sqlite3_stmt* prepared_;
  std::string sql_;
  std::vector<std::u16string> names_;
  std::vector<size_t> longest_;  // of a text in each column, in 16-bit units
  int fault_ = 0;                // of the first value that could not be bound
  std::string utf8_;             // of the text that is being bound; keeps its memory for the next
};

}  // namespace store
