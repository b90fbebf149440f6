// Numbers go through <charconv> because the C library's functions follow the user's locale, in
// which a point may be a comma.
#include "store/column.h"

#include <algorithm>
#include <charconv>

#include "core/characters.h"

namespace store {
namespace {

struct TypeName {
  std::string_view name;
  ColumnType type;
};

constexpr TypeName kTypeNames[] = {
    {"int", ColumnType::kInteger},        {"float", ColumnType::kFloat},
    {"nchar", ColumnType::kText},         {"nvarchar", ColumnType::kText},
    {"datetime", ColumnType::kTimestamp},
};

bool IsBlank(char16_t c) {
  return c == u' ' || (c >= u'\t' && c <= u'\r');
}

}  // namespace

Column ReadDeclaration(std::u16string name, std::string_view declaration) {
  Column column{std::move(name), ColumnType::kBytes, 0};
  const size_t paren = declaration.find('(');
  std::string word(declaration.substr(0, paren));
  std::transform(word.begin(), word.end(), word.begin(), core::FoldAscii<char>);
  word.erase(word.find_last_not_of(' ') + 1);
  for (const TypeName& known : kTypeNames) {
    if (known.name == word) column.type = known.type;
  }
  if (paren != std::string_view::npos) {
    const char* const end = declaration.data() + declaration.size();
    std::from_chars(declaration.data() + paren + 1, end, column.length);
  }
  return column;
}

bool SameName(std::u16string_view a, std::u16string_view b) {
  return a == b || std::equal(a.begin(), a.end(), b.begin(), b.end(), [](char16_t x, char16_t y) {
           return core::FoldAscii(x) == core::FoldAscii(y);
         });
}

std::optional<double> ParseFloat(std::u16string_view text) {
  while (!text.empty() && IsBlank(text.front())) text.remove_prefix(1);
  const bool negative = text.starts_with(u'-');
  if (negative || text.starts_with(u'+')) text.remove_prefix(1);
  // A letter or a second sign would be a number to from_chars ("inf", "-1").
  if (text.empty() || !(text.front() == u'.' || (text.front() >= u'0' && text.front() <= u'9'))) {
    return {};
  }
  std::string digits;
  for (const char16_t c : text) {
    if (c >= 0x80) break;
    digits += static_cast<char>(c);
  }
  double value = 0.0;
  const auto end = digits.data() + digits.size();
  if (std::from_chars(digits.data(), end, value).ec != std::errc()) return {};
  return negative ? -value : value;
}

double ReadFloat(std::u16string_view text) {
  return ParseFloat(text).value_or(0.0);
}

}  // namespace store
