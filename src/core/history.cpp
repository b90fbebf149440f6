// The most recent entry stands at position 0 of the vector.
#include "core/history.h"

#include <algorithm>
#include <utility>

namespace core {

void HistoryList::Add(std::u16string_view text) {
  if (text.empty()) return;
  const auto found = std::find(entries_.begin(), entries_.end(), text);
  if (found != entries_.end()) {
    std::rotate(entries_.begin(), found, found + 1);
    return;
  }
  std::u16string copy(text);  // first: `text` may lie in the entry that goes
  if (entries_.size() == capacity_) entries_.pop_back();
  entries_.insert(entries_.begin(), std::move(copy));
}

void HistoryList::Set(size_t position, std::u16string_view text) {
  if (position < entries_.size()) {
    entries_[position] = text;
  } else if (entries_.size() < capacity_) {
    entries_.emplace_back(text);
  }
}

}  // namespace core
