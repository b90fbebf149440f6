// A growing list of many short texts, eight bytes each where they are ids or moments, as nearly all
// of them are. Copies share what they hold: one of a million texts costs some thousand pointers.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "core/number_list.h"

namespace core {

// What a text is kept as: an id ("ID" and 16 digits) or a moment ("yyyy/mm/dd hh:mm:ss", whatever
// its digits) as its digits, so that moments stand in their order; every other text is odd.
inline constexpr uint64_t kOddText = uint64_t{1} << 63;
// kOddText for an odd one.
uint64_t PackText(std::u16string_view text);

// Beyond its end stands nothing: an empty text, which can't be removed.
class TextList {
 public:
  TextList() = default;
  // Of what Packed and Odd gave. Each odd number must have its text.
  TextList(NumberList packed, std::vector<std::u16string> odd);

  size_t Count() const { return numbers_.Count(); }
  bool Empty() const { return Count() == 0; }

  // Its first `most` characters. Empty beyond the end.
  std::u16string At(size_t index, size_t most = std::u16string::npos) const;
  // Whether it's the text that stands there.
  bool Holds(size_t index, std::u16string_view text) const;
  // Whether it begins with a day, "yyyy/mm/dd".
  bool IsOnDay(size_t index, std::u16string_view day) const;
  // How the text stands to the one there, by their characters: below 0 for before, 0 for equal.
  int Compare(std::u16string_view text, size_t index) const;

  void Append(std::u16string_view text) { numbers_.Append(Keep(text)); }
  // Moves what stands there and after it up by one. Beyond the end it is the last.
  void InsertAt(size_t index, std::u16string_view text);
  // Closes the gap.
  void RemoveAt(size_t index);
  void Clear() { *this = {}; }

  // As PackText has them, at the same places; an odd one is kOddText and its place in Odd, which
  // may hold others besides.
  const NumberList& Packed() const { return numbers_; }
  std::span<const std::u16string> Odd() const;

 private:
  using Texts = std::vector<std::u16string>;

  uint64_t Keep(std::u16string_view text);
  const std::u16string* OddAt(uint64_t number) const;
  void DropUnused();

  NumberList numbers_;
  std::shared_ptr<Texts> odd_;  // none as long as there is none
  size_t unused_ = 0;           // odd texts that were removed
};

}  // namespace core
