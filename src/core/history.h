// A list of recently used texts, most recent first, with a fixed capacity.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace core {

class HistoryList {
 public:
  explicit HistoryList(size_t capacity) : capacity_(capacity) {}

  const std::vector<std::u16string>& Entries() const { return entries_; }

  // Moves an equal text (exact, case counts) to the front, or inserts `text` there; a full list
  // drops its last entry. An empty text does nothing.
  void Add(std::u16string_view text);
  // Puts `text` at a position, which is at most one past the last entry; dropped beyond the
  // capacity.
  void Set(size_t position, std::u16string_view text);
  void Clear() { entries_.clear(); }

 private:
  size_t capacity_;
  std::vector<std::u16string> entries_;
};

}  // namespace core
