#include "edit/messages.h"

#include <charconv>

#include "platform/utf.h"

namespace edit {

std::u16string Decimal(int32_t number) {
  return platform::ToUtf16(std::to_string(number));
}

std::u16string Hex(int32_t code) {
  char digits[8];
  const auto end =
      std::to_chars(digits, digits + sizeof digits, static_cast<uint32_t>(code), 16).ptr;
  return platform::ToUtf16({digits, end});
}

}  // namespace edit
