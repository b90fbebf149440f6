// The program sends few kinds of statement, all written by itself; this reads those and nothing
// else.
#include "store/sql_text.h"

#include <algorithm>
#include <utility>

#include "core/characters.h"
#include "platform/utf.h"

namespace store {
namespace {

constexpr char kBlanks[] = " \t\r\n";

bool SameLetters(std::string_view a, std::string_view b) {
  return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                    [](char x, char y) { return core::FoldAscii(x) == core::FoldAscii(y); });
}

std::string_view WithoutLeadingBlanks(std::string_view text) {
  return text.substr(std::min(text.find_first_not_of(kBlanks), text.size()));
}

std::string_view TakeWord(std::string_view& text) {
  text = WithoutLeadingBlanks(text);
  const std::string_view word = text.substr(0, text.find_first_of(kBlanks));
  text.remove_prefix(word.size());
  return word;
}

// Does a column's definition begin at `position`, after "(" or ","?
bool BeginsDefinition(std::string_view createSql, size_t position) {
  const size_t before = createSql.substr(0, position).find_last_not_of(kBlanks);
  return before != std::string_view::npos && (createSql[before] == '(' || createSql[before] == ',');
}

}  // namespace

SelectShape LiftLiterals(std::u16string_view sql) {
  SelectShape shape;
  while (true) {
    const size_t quote = sql.find(u'\'');
    platform::AppendUtf8(sql.substr(0, quote), shape.sql);
    if (quote == std::u16string_view::npos) return shape;
    sql.remove_prefix(quote + 1);
    std::string literal;
    size_t end = sql.find(u'\'');
    while (end != std::u16string_view::npos && sql.substr(end + 1).starts_with(u'\'')) {
      platform::AppendUtf8(sql.substr(0, end + 1), literal);
      sql.remove_prefix(end + 2);
      end = sql.find(u'\'');
    }
    if (end == std::u16string_view::npos) {  // left open: the engine is to refuse it
      shape.sql += '\'';
      return shape;
    }
    platform::AppendUtf8(sql.substr(0, end), literal);
    sql.remove_prefix(end + 1);
    shape.sql += '?';
    shape.literals.push_back(std::move(literal));
  }
}

std::optional<ColumnChange> ReadColumnChange(std::string_view sql) {
  ColumnChange change;
  if (!SameLetters(TakeWord(sql), "alter") || !SameLetters(TakeWord(sql), "table")) return {};
  change.table = TakeWord(sql);
  if (!SameLetters(TakeWord(sql), "alter") || !SameLetters(TakeWord(sql), "column")) return {};
  change.column = TakeWord(sql);
  change.declaration = WithoutLeadingBlanks(sql);
  return change;
}

std::optional<std::string> WithDeclaration(std::string_view createSql, std::string_view column,
                                           std::string_view oldDeclaration,
                                           std::string_view newDeclaration) {
  for (size_t i = 0; i + column.size() <= createSql.size(); ++i) {
    if (!SameLetters(createSql.substr(i, column.size()), column)) continue;
    if (!BeginsDefinition(createSql, i)) continue;
    const std::string_view rest = createSql.substr(i + column.size());
    const std::string_view after = WithoutLeadingBlanks(rest);
    if (after.size() == rest.size()) continue;
    if (!SameLetters(after.substr(0, oldDeclaration.size()), oldDeclaration)) continue;
    std::string changed(createSql.substr(0, createSql.size() - after.size()));
    changed += newDeclaration;
    changed += after.substr(oldDeclaration.size());
    return changed;
  }
  return {};
}

}  // namespace store
