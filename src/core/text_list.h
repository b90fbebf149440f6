// A growing list of texts in one block of memory: a million short texts cost no million
// allocations, and a copy of the list is two block copies.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace core {

// Holds at most 2^32 characters in all. Views of its texts live until the next change of the list.
class TextList {
 public:
  size_t Count() const { return spans_.size(); }
  bool Empty() const { return spans_.empty(); }

  std::u16string_view At(size_t index) const {
    const Span span = spans_[index];
    return std::u16string_view(characters_).substr(span.begin, span.length);
  }

  void Append(std::u16string_view text) {
    spans_.push_back(
        {static_cast<uint32_t>(characters_.size()), static_cast<uint32_t>(text.size())});
    characters_.append(text);
  }

  // Moves what stands there and after it up by one.
  void InsertAt(size_t index, std::u16string_view text) {
    Append(text);
    std::rotate(spans_.begin() + static_cast<ptrdiff_t>(index), spans_.end() - 1, spans_.end());
  }

  // Closes the gap; the characters themselves are given back by Clear.
  void RemoveAt(size_t index) { spans_.erase(spans_.begin() + static_cast<ptrdiff_t>(index)); }

  void Reserve(size_t texts, size_t characters) {
    spans_.reserve(texts);
    characters_.reserve(characters);
  }

  void Clear() {
    spans_.clear();
    characters_.clear();
  }

 private:
  struct Span {
    uint32_t begin;
    uint32_t length;
  };

  std::u16string characters_;
  std::vector<Span> spans_;
};

}  // namespace core
