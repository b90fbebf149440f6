// What the fuzz targets share: their random bytes as texts, and a claim that ends the run if it is
// wrong.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <string>
#include <string_view>

namespace fuzz {

inline void Require(bool claim) {
  if (!claim) std::abort();
}

inline std::string_view AsBytes(const uint8_t* data, size_t size) {
  return {reinterpret_cast<const char*>(data), size};
}

// Two bytes a character; an odd one at the end is left out.
inline std::u16string AsText(const uint8_t* data, size_t size) {
  std::u16string text(size / 2, u'\0');
  if (!text.empty()) std::memcpy(text.data(), data, text.size() * 2);
  return text;
}

}  // namespace fuzz
