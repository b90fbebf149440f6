// Numbers in the edit screen's messages.
#pragma once

#include <cstdint>
#include <string>

namespace edit {

std::u16string Decimal(int32_t number);
// A result code as its 32 bits in lower-case hexadecimal.
std::u16string Hex(int32_t code);

}  // namespace edit
