// Numbers out of texts and texts out of numbers, as the action text converts them. Reading takes
// what it can from the front of a text and gives 0 for nothing: white space, a sign, ASCII digits.
// Integers have 32 bits and wrap. Nothing depends on the user's locale.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace actiontext {

int32_t ReadInt(std::u16string_view text);
// With a point and an exponent ("1e5"). Infinite beyond the largest double.
double ReadFloat(std::u16string_view text);

// Truncated toward zero; what doesn't fit becomes the nearest int, what is no number 0.
int32_t TruncateToInt(double value);

// A number in characters, for as long as the object lives.
class NumberText {
 public:
  enum class Form { kSixDecimals, kSixDigits };  // "%f" and "%g"

  explicit NumberText(int32_t value);
  NumberText(double value, Form form);

  std::u16string_view View() const { return {text_, length_}; }

 private:
  static constexpr size_t kRoom = 320;  // "%f" of the lowest double has 317 characters

  void Widen(const char* begin, const char* end);

  size_t length_ = 0;
  char16_t text_[kRoom];
};

}  // namespace actiontext
