// What the engine layer reads out of SQL texts before it hands them on.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace store {

// A select with its quoted literals taken out: selects that differ in nothing else have one shape
// and share one prepared statement. Both in UTF-8.
struct SelectShape {
  std::string sql;                    // "?" in place of every literal
  std::vector<std::string> literals;  // without quotes, doubled quotes made single
};

SelectShape LiftLiterals(std::u16string_view sql);

// "alter table <table> alter column <column> <declaration>", which the engine itself lacks.
struct ColumnChange {
  std::string table;
  std::string column;
  std::string declaration;
};

std::optional<ColumnChange> ReadColumnChange(std::string_view sql);

// A table's create statement with another declaration in place of `oldDeclaration` after
// `column`. None if the statement does not declare the column so.
std::optional<std::string> WithDeclaration(std::string_view createSql, std::string_view column,
                                           std::string_view oldDeclaration,
                                           std::string_view newDeclaration);

}  // namespace store
