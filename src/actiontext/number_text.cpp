// <charconv> reads and writes as the C library does in the "C" locale; it works on bytes.
#include "actiontext/number_text.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <limits>
#include <string>
#include <system_error>

#include "core/characters.h"
#include "core/text.h"

namespace actiontext {
namespace {

constexpr long long kFarExponent = 1'000'000'000'000'000'000;

std::u16string_view WithoutLeadingSpace(std::u16string_view text) {
  const size_t begin = text.find_first_not_of(u" \t\n\v\f\r");
  return begin == std::u16string_view::npos ? std::u16string_view() : text.substr(begin);
}

bool IsNumberCharacter(char16_t c) {
  return core::IsDigit(c) || c == u'.' || c == u'e' || c == u'E' || c == u'+' || c == u'-';
}

// Whether a number that no double holds is too large rather than too small: its exponent moves the
// first digit that isn't 0 before the point.
bool IsHuge(std::string_view number) {
  const size_t mark = std::min(number.find_first_of("eE"), number.size());
  const size_t point = std::min(number.find('.'), mark);
  const size_t first = number.find_first_of("123456789");
  const size_t digits = std::min(number.find_first_of("0123456789", mark), number.size());
  long long exponent = 0;
  const auto read =
      std::from_chars(number.data() + digits, number.data() + number.size(), exponent);
  if (read.ec == std::errc::result_out_of_range) exponent = kFarExponent;
  if (mark < number.size() && number[mark + 1] == '-') exponent = -exponent;
  return exponent + static_cast<long long>(point) - static_cast<long long>(first) > 0;
}

}  // namespace

int32_t ReadInt(std::u16string_view text) {
  return core::ToInt32(WithoutLeadingSpace(text));
}

double ReadFloat(std::u16string_view text) {
  text = WithoutLeadingSpace(text);
  const bool negative = text.starts_with(u'-');
  if (negative || text.starts_with(u'+')) text.remove_prefix(1);
  // from_chars would take a second sign here.
  if (text.empty() || (!core::IsDigit(text.front()) && text.front() != u'.')) return 0.0;
  const auto end = std::find_if_not(text.begin(), text.end(), IsNumberCharacter);
  const std::string bytes(text.begin(), end);
  double value = 0.0;
  const auto read = std::from_chars(bytes.data(), bytes.data() + bytes.size(), value);
  if (read.ec == std::errc::result_out_of_range) {
    const bool huge = IsHuge({bytes.data(), read.ptr});
    value = huge ? std::numeric_limits<double>::infinity() : 0.0;
  }
  return negative ? -value : value;
}

int32_t TruncateToInt(double value) {
  using Limits = std::numeric_limits<int32_t>;
  if (std::isnan(value)) return 0;
  if (value <= Limits::min()) return Limits::min();
  if (value >= Limits::max()) return Limits::max();
  return static_cast<int32_t>(value);
}

NumberText::NumberText(int32_t value) {
  char bytes[16];
  Widen(bytes, std::to_chars(bytes, bytes + sizeof bytes, value).ptr);
}

NumberText::NumberText(double value, Form form) {
  char bytes[kRoom];
  const auto format =
      form == Form::kSixDecimals ? std::chars_format::fixed : std::chars_format::general;
  Widen(bytes, std::to_chars(bytes, bytes + sizeof bytes, value, format, 6).ptr);
}

void NumberText::Widen(const char* begin, const char* end) {
  length_ = static_cast<size_t>(std::copy(begin, end, text_) - text_);
}

}  // namespace actiontext
