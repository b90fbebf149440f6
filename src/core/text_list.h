// A growing list of texts in one block of memory: a million short texts cost no million
// allocations, and a copy of the list is two block copies.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace core {

// Holds at most 2^32 characters in all. Views of its texts live until the next change of the list.
// Beyond its end stands nothing: an empty text, which can't be removed.
class TextList {
 public:
  size_t Count() const { return spans_.size(); }
  bool Empty() const { return spans_.empty(); }

  // Empty beyond the end.
  std::u16string_view At(size_t index) const {
    if (index >= spans_.size()) return {};
    const Span span = spans_[index];
    return std::u16string_view(characters_).substr(span.begin, span.length);
  }

  void Append(std::u16string_view text) {
    spans_.push_back(
        {static_cast<uint32_t>(characters_.size()), static_cast<uint32_t>(text.size())});
    characters_.append(text);
  }

  // Moves what stands there and after it up by one. Beyond the end it is the last.
  void InsertAt(size_t index, std::u16string_view text) {
    index = std::min(index, spans_.size());
    Append(text);
    std::rotate(spans_.begin() + static_cast<ptrdiff_t>(index), spans_.end() - 1, spans_.end());
  }

  // Closes the gap. The text's characters go once most of the block belongs to no text any more.
  void RemoveAt(size_t index) {
    if (index >= spans_.size()) return;
    unused_ += spans_[index].length;
    spans_.erase(spans_.begin() + static_cast<ptrdiff_t>(index));
    if (unused_ > characters_.size() / 2) Pack();
  }

  void Reserve(size_t texts, size_t characters) {
    spans_.reserve(texts);
    characters_.reserve(characters);
  }

  void Clear() {
    spans_.clear();
    characters_.clear();
    unused_ = 0;
  }

 private:
  struct Span {
    uint32_t begin;
    uint32_t length;
  };

  void Pack() {
    TextList packed;
    packed.Reserve(Count(), characters_.size() - unused_);
    for (size_t i = 0; i < Count(); ++i) packed.Append(At(i));
    *this = std::move(packed);
  }

  std::u16string characters_;
  std::vector<Span> spans_;
  size_t unused_ = 0;  // characters of removed texts
};

}  // namespace core
