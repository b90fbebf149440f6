// Code page 932: ASCII and half-width katakana in one byte, the rest in pairs of a lead byte and a
// second byte. The table of the pairs is kept in the reading direction, as text; the other
// direction is made from it at first use.
#include "platform/code_page.h"

#include <array>
#include <cstddef>
#include <cstdint>

#include "platform/conversion.h"

namespace platform {
namespace {

constexpr char16_t kDefaultCharacter = 0x30FB;  // for bytes that mean nothing
constexpr unsigned kDefaultCode = 0x8145;       // and the bytes that mean it
constexpr size_t kCells = 188;                  // second bytes, and so characters in a row
constexpr unsigned kFirstUserLead = 0xF0;
constexpr unsigned kLastUserLead = 0xF9;
constexpr char16_t kFirstUserCharacter = 0xE000;

struct Row {
  unsigned char lead;
  char16_t cells[kCells + 1];  // and the literal's closing NUL
};

constexpr Row kRows[] = {
#include "platform/code_page_table.inc"
};

// Characters outside the code page, each followed by the one that is written in its place.
constexpr std::u16string_view kBestFits =
    u"¡!¢￠£￡¥\\¦|©cªa«≪¬￢\u00AD-®R¯￣²2³3µμ·・¸，¹1ºo»≫¿?ÀAÁAÂAÃAÄAÅAÆAÇCÈEÉEÊEËEÌIÍIÎIÏI"
    u"ÐDÑNÒOÓOÔOÕOÖOØOÙUÚUÛUÜUÝYÞTßsàaáaâaãaäaåaæaçcèeéeêeëeìiíiîiïiðdñnòoóoôoõoöoøoùuúuûuüuýyþt"
    u"ÿyゔヴ";

// Letters of the code page that may stand as two characters, each after its base.
constexpr struct {
  char16_t mark;
  std::u16string_view letters;
} kCompositions[] = {
    {0x3099,
     u"かがきぎくぐけげこごさざしじすずせぜそぞただちぢつづてでとどはばひびふぶへべほぼゝゞうゔ"
     u"カガキギクグケゲコゴサザシジスズセゼソゾタダチヂツヅテデトドハバヒビフブヘベホボヽヾウヴ"},
    {0x309A, u"はぱひぴふぷへぺほぽハパヒピフプヘペホポ"},
    {0x0306, u"ИЙий"},
    {0x0308, u"ЕЁеё"},
    {0x0338, u"=≠"},
};

constexpr bool IsLead(unsigned byte) {
  return (byte >= 0x81 && byte <= 0x9F) || (byte >= 0xE0 && byte <= 0xFC);
}

constexpr bool IsSecond(unsigned byte) {
  return byte >= 0x40 && byte <= 0xFC && byte != 0x7F;
}

constexpr size_t CellOf(unsigned second) {
  return second - (second < 0x7F ? 0x40 : 0x41);
}
constexpr unsigned SecondOf(size_t cell) {
  return static_cast<unsigned>(cell) + (cell < 0x3F ? 0x40 : 0x41);
}

char16_t DecodeSingle(unsigned byte) {
  if (byte >= 0xA1 && byte <= 0xDF) return static_cast<char16_t>(0xFF61 + (byte - 0xA1));
  if (byte == 0xA0) return 0xF8F0;
  if (byte >= 0xFD) return static_cast<char16_t>(0xF8F1 + (byte - 0xFD));
  return static_cast<char16_t>(byte);
}

constexpr auto kCellsByLead = [] {
  std::array<const char16_t*, 256> cells{};
  for (const Row& row : kRows) cells[row.lead] = row.cells;
  return cells;
}();

char16_t DecodePair(unsigned lead, unsigned second) {
  if (!IsSecond(second)) return kDefaultCharacter;
  const size_t cell = CellOf(second);
  if (const char16_t* cells = kCellsByLead[lead]) return cells[cell];
  if (lead < kFirstUserLead || lead > kLastUserLead) return kDefaultCharacter;
  return static_cast<char16_t>(kFirstUserCharacter + (lead - kFirstUserLead) * kCells + cell);
}

// The code of each character, the lead byte high; 0 for what the code page lacks, and for NUL.
using Codes = std::array<uint16_t, 0x10000>;

void AddRow(unsigned lead, Codes& codes) {
  for (size_t cell = 0; cell < kCells; ++cell) {
    const unsigned second = SecondOf(cell);
    uint16_t& code = codes[DecodePair(lead, second)];
    if (code == 0) code = static_cast<uint16_t>(lead << 8 | second);
  }
}

// Some characters stand in the code page two or three times. Windows writes the first of them, but
// never one of the rows ED and EE, which repeat the rows FA to FC.
Codes MakeCodes() {
  Codes codes{};
  for (unsigned byte = 0; byte <= 0xFF; ++byte) {
    if (!IsLead(byte)) codes[DecodeSingle(byte)] = static_cast<uint16_t>(byte);
  }
  for (const Row& row : kRows) {
    if (row.lead != 0xED && row.lead != 0xEE) AddRow(row.lead, codes);
  }
  for (unsigned lead = kFirstUserLead; lead <= kLastUserLead; ++lead) AddRow(lead, codes);
  return codes;
}

// What stands at the even positions of `pairs` gives what stands after it; NUL if it isn't there.
char16_t LookUp(std::u16string_view pairs, char16_t character) {
  for (size_t i = 0; i < pairs.size(); i += 2) {
    if (pairs[i] == character) return pairs[i + 1];
  }
  return 0;
}

char16_t Composed(char16_t base, char16_t mark) {
  for (const auto& composition : kCompositions) {
    if (composition.mark == mark) return LookUp(composition.letters, base);
  }
  return 0;
}

// The character that is written in place of one that the code page lacks.
char16_t Substitute(char16_t lacking) {
  const char16_t fit = LookUp(kBestFits, lacking);
  return fit == 0 ? u'?' : fit;
}

void AppendCode(uint16_t code, char*& to) {
  if (code > 0xFF) *to++ = static_cast<char>(code >> 8);
  *to++ = static_cast<char>(code & 0xFF);
}

}  // namespace

std::u16string DecodeCodePage(std::string_view bytes) {
  std::u16string text;
  DecodeCodePage(bytes, text);
  return text;
}

bool DecodeCodePage(std::string_view bytes, std::u16string& text) {
  bool allMean = true;
  text.resize(bytes.size());
  char16_t* to = text.data();
  const char* from = bytes.data();
  const char* const end = from + bytes.size();
  while (from != end) {
    CopyAsciiRuns(from, end, to);
    if (from == end) break;
    const unsigned byte = static_cast<unsigned char>(*from++);
    if (!IsLead(byte)) {
      *to++ = DecodeSingle(byte);
    } else if (from == end || *from == '\0') {
      *to++ = kDefaultCharacter;
      allMean = false;
    } else {
      const unsigned second = static_cast<unsigned char>(*from++);
      *to = DecodePair(byte, second);
      if (*to++ == kDefaultCharacter && (byte << 8 | second) != kDefaultCode) allMean = false;
    }
  }
  text.resize(static_cast<size_t>(to - text.data()));
  return allMean;
}

size_t WholeLength(std::string_view bytes) {
  size_t i = 0;
  while (i < bytes.size()) {
    if (bytes.size() - i >= kAsciiRun && IsAsciiRun(bytes.data() + i)) {
      i += kAsciiRun;
    } else if (!IsLead(static_cast<unsigned char>(bytes[i]))) {
      ++i;
    } else if (i + 1 == bytes.size()) {
      return i;
    } else {
      i += bytes[i + 1] == '\0' ? 1 : 2;
    }
  }
  return i;
}

std::string EncodeCodePage(std::u16string_view text) {
  std::string bytes;
  EncodeCodePage(text, bytes);
  return bytes;
}

bool EncodeCodePage(std::u16string_view text, std::string& bytes) {
  static const Codes codes = MakeCodes();
  bool hasAll = true;
  bytes.resize(text.size() * 2);
  char* to = bytes.data();
  const char16_t* from = text.data();
  const char16_t* const end = from + text.size();
  while (from != end) {
    CopyAsciiRuns(from, end, to);
    if (from == end) break;
    char16_t unit = *from++;
    if (codes[unit] == 0 && unit != 0) {
      const char16_t base = from - text.data() > 1 ? from[-2] : u'\0';
      if (const char16_t composed = Composed(base, unit)) {
        to -= codes[base] > 0xFF ? 2 : 1;
        unit = composed;
      } else if (IsHighHalf(unit) && from != end && IsLowHalf(*from)) {
        ++from;
      }
    }
    if (codes[unit] == 0 && unit != 0) {
      unit = Substitute(unit);
      hasAll = false;
    }
    AppendCode(codes[unit], to);
  }
  bytes.resize(static_cast<size_t>(to - bytes.data()));
  return hasAll;
}

}  // namespace platform
