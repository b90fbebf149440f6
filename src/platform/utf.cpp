// Every row that is read passes through here, and most of its bytes are ASCII: eight at a time as
// long as they are, then one character at a time.
#include "platform/utf.h"

#include <cstddef>

#include "platform/conversion.h"

namespace platform {
namespace {

constexpr char32_t kFirstHighHalf = 0xD800;
constexpr char32_t kFirstLowHalf = 0xDC00;
constexpr char32_t kFirstPair = 0x10000;
constexpr char32_t kLastCharacter = 0x10FFFF;
constexpr char16_t kReplacement = 0xFFFD;
constexpr size_t kLongest = 4;  // bytes of a character

struct Character {
  char32_t value;
  size_t length;  // in bytes; 0 if the bytes are malformed
};

// The character of two to four bytes that begins at `bytes`.
Character ReadLongCharacter(const char* bytes, size_t available) {
  const auto byteAt = [bytes](size_t i) { return static_cast<unsigned char>(bytes[i]); };
  const unsigned lead = byteAt(0);
  size_t length;
  char32_t smallest;  // a smaller value in as many bytes is malformed
  if ((lead & 0xE0) == 0xC0) {
    length = 2;
    smallest = 0x80;
  } else if ((lead & 0xF0) == 0xE0) {
    length = 3;
    smallest = 0x800;
  } else if ((lead & 0xF8) == 0xF0) {
    length = 4;
    smallest = kFirstPair;
  } else {
    return {0, 0};
  }
  if (available < length) return {0, 0};
  char32_t value = lead & (0x7Fu >> length);
  for (size_t i = 1; i < length; ++i) {
    if ((byteAt(i) & 0xC0) != 0x80) return {0, 0};
    value = value << 6 | (byteAt(i) & 0x3Fu);
  }
  if (value < smallest || value > kLastCharacter) return {0, 0};
  return {value, length};
}

char* WriteLongCharacter(char32_t value, char* out) {
  const auto tail = [value](int shift) {
    return static_cast<char>(0x80 | (value >> shift & 0x3F));
  };
  if (value < 0x800) {
    *out++ = static_cast<char>(0xC0 | value >> 6);
  } else {
    if (value < kFirstPair) {
      *out++ = static_cast<char>(0xE0 | value >> 12);
    } else {
      *out++ = static_cast<char>(0xF0 | value >> 18);
      *out++ = tail(12);
    }
    *out++ = tail(6);
  }
  *out++ = tail(0);
  return out;
}

}  // namespace

void AppendUtf8(std::u16string_view text, std::string& out) {
  const size_t before = out.size();
  out.resize(before + text.size() * 3);
  char* to = out.data() + before;
  const char16_t* from = text.data();
  const char16_t* const end = from + text.size();
  while (from != end) {
    CopyAsciiRuns(from, end, to);
    if (from == end) break;
    const char16_t unit = *from++;
    if (unit < 0x80) {
      *to++ = static_cast<char>(unit);
    } else if (IsHighHalf(unit) && from != end && IsLowHalf(*from)) {
      const char32_t high = unit - kFirstHighHalf;
      to = WriteLongCharacter(kFirstPair + (high << 10) + (*from++ - kFirstLowHalf), to);
    } else {
      to = WriteLongCharacter(unit, to);
    }
  }
  out.resize(static_cast<size_t>(to - out.data()));
}

bool AppendUtf16(std::string_view bytes, std::u16string& out) {
  bool wellFormed = true;
  const size_t before = out.size();
  out.resize(before + bytes.size());
  char16_t* to = out.data() + before;
  const char* from = bytes.data();
  const char* const end = from + bytes.size();
  while (from != end) {
    CopyAsciiRuns(from, end, to);
    if (from == end) break;
    if (static_cast<unsigned char>(*from) < 0x80) {
      *to++ = static_cast<char16_t>(*from++);
      continue;
    }
    const Character character = ReadLongCharacter(from, static_cast<size_t>(end - from));
    if (character.length == 0) {
      *to++ = kReplacement;
      ++from;
      wellFormed = false;
      continue;
    }
    from += character.length;
    if (character.value < kFirstPair) {
      *to++ = static_cast<char16_t>(character.value);
    } else {
      const char32_t pair = character.value - kFirstPair;
      *to++ = static_cast<char16_t>(kFirstHighHalf + (pair >> 10));
      *to++ = static_cast<char16_t>(kFirstLowHalf + (pair & 0x3FF));
    }
  }
  out.resize(static_cast<size_t>(to - out.data()));
  return wellFormed;
}

size_t WholeUtf8Length(std::string_view bytes) {
  for (size_t back = 1; back < kLongest && back <= bytes.size(); ++back) {
    const unsigned byte = static_cast<unsigned char>(bytes[bytes.size() - back]);
    if ((byte & 0xC0) == 0x80) continue;
    const size_t length = byte >= 0xF0 ? 4 : byte >= 0xE0 ? 3 : byte >= 0xC0 ? 2 : 1;
    return length > back ? bytes.size() - back : bytes.size();
  }
  return bytes.size();
}

}  // namespace platform
