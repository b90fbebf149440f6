// What a column's declaration says, and the text forms that its values have above the engine.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace store {

// Numbered as the messages about them count.
enum class ColumnType {
  kInteger = 3,
  kFloat = 5,
  kBytes = 128,  // anything that no table of ours declares
  kText = 130,
  kTimestamp = 135
};

struct Column {
  std::u16string name;
  ColumnType type = ColumnType::kBytes;
  size_t length = 0;  // of a text, in 16-bit units; 0 for no limit
};

// Reads "NVARCHAR(500)", "float", "datetime", without regard to case.
Column ReadDeclaration(std::u16string name, std::string_view declaration);

// By ASCII letters, without regard to case.
bool SameName(std::u16string_view a, std::u16string_view b);

// The decimal number at the beginning of `text`, after blanks; none if there is no number, or one
// that a double cannot hold.
std::optional<double> ParseFloat(std::u16string_view text);
// The same, or 0.0.
double ReadFloat(std::u16string_view text);

}  // namespace store
