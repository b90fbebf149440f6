// What the text conversions share: the halves of surrogate pairs, and the quick way over ASCII.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>

namespace platform {

inline bool IsHighHalf(char16_t unit) {
  return (unit & 0xFC00) == 0xD800;
}
inline bool IsLowHalf(char16_t unit) {
  return (unit & 0xFC00) == 0xDC00;
}

inline constexpr size_t kAsciiRun = 8;

inline bool IsAsciiRun(const char* bytes) {
  uint64_t word;
  std::memcpy(&word, bytes, sizeof word);
  return (word & 0x8080808080808080u) == 0;
}

inline bool IsAsciiRun(const char16_t* units) {
  uint64_t words[2];
  std::memcpy(words, units, sizeof words);
  return ((words[0] | words[1]) & 0xFF80FF80FF80FF80u) == 0;
}

// Copies full runs as long as the text is ASCII and moves both cursors after them.
template <typename From, typename To>
void CopyAsciiRuns(const From*& from, const From* end, To*& to) {
  while (static_cast<size_t>(end - from) >= kAsciiRun && IsAsciiRun(from)) {
    for (size_t i = 0; i < kAsciiRun; ++i) to[i] = static_cast<To>(from[i]);
    from += kAsciiRun;
    to += kAsciiRun;
  }
}

}  // namespace platform
