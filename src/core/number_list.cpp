// What is asked of every block lies beside the blocks, so that a search of a million numbers looks
// into one or two of them.
#include "core/number_list.h"

#include <algorithm>
#include <utility>

namespace core {

uint64_t NumberList::At(size_t index) const {
  const size_t block = BlockOf(index);
  return (*blocks_[block])[index - begins_[block]];
}

// A list that was only appended to has full blocks, and most others nearly so.
size_t NumberList::BlockOf(size_t index) const {
  const size_t guess = std::min(index / kBlockSize, blocks_.size() - 1);
  const size_t end = guess + 1 < begins_.size() ? begins_[guess + 1] : count_;
  if (begins_[guess] <= index && index < end) return guess;
  const auto after = std::upper_bound(begins_.begin(), begins_.end(), index);
  return static_cast<size_t>(after - begins_.begin()) - 1;
}

void NumberList::Append(uint64_t number) {
  if (blocks_.empty() || blocks_.back()->size() == kBlockSize) {
    AppendBlock({&number, 1});
    blocks_.back()->reserve(kBlockSize);
    return;
  }
  Own(blocks_.size() - 1).push_back(number);
  greatest_.back() = std::max(greatest_.back(), number);
  ++count_;
}

void NumberList::InsertAt(size_t index, uint64_t number) {
  if (index == count_) {
    Append(number);
    return;
  }
  if (const size_t full = BlockOf(index); blocks_[full]->size() == kBlockSize) Split(full);
  const size_t block = BlockOf(index);
  Numbers& numbers = Own(block);
  numbers.insert(numbers.begin() + static_cast<ptrdiff_t>(index - begins_[block]), number);
  greatest_[block] = std::max(greatest_[block], number);
  MoveBegins(block + 1, 1);
  ++count_;
}

void NumberList::RemoveAt(size_t index) {
  const size_t block = BlockOf(index);
  --count_;
  MoveBegins(block + 1, -1);
  const auto place = static_cast<ptrdiff_t>(block);
  if (blocks_[block]->size() == 1) {
    blocks_.erase(blocks_.begin() + place);
    begins_.erase(begins_.begin() + place);
    greatest_.erase(greatest_.begin() + place);
    return;
  }
  Numbers& numbers = Own(block);
  numbers.erase(numbers.begin() + static_cast<ptrdiff_t>(index - begins_[block]));
  greatest_[block] = *std::max_element(numbers.begin(), numbers.end());
}

void NumberList::AppendBlock(std::span<const uint64_t> numbers) {
  blocks_.push_back(std::make_shared<Numbers>(numbers.begin(), numbers.end()));
  begins_.push_back(count_);
  greatest_.push_back(*std::max_element(numbers.begin(), numbers.end()));
  count_ += numbers.size();
}

// Where the number would stand is searched as if the list were sorted; from there both ways.
size_t NumberList::Find(uint64_t number) const {
  const auto after =
      std::upper_bound(blocks_.begin(), blocks_.end(), number,
                       [](uint64_t wanted, const auto& block) { return wanted < block->front(); });
  auto below = static_cast<size_t>(after - blocks_.begin());
  size_t above = below;
  const auto findIn = [&](size_t block) {
    if (greatest_[block] < number) return count_;
    const Numbers& numbers = *blocks_[block];
    const auto found = std::find(numbers.begin(), numbers.end(), number);
    if (found == numbers.end()) return count_;
    return begins_[block] + static_cast<size_t>(found - numbers.begin());
  };
  size_t found = count_;
  while (found == count_ && (below > 0 || above < blocks_.size())) {
    if (below > 0) found = findIn(--below);
    if (found == count_ && above < blocks_.size()) found = findIn(above++);
  }
  return found;
}

NumberList::Numbers& NumberList::Own(size_t block) {
  if (blocks_[block].use_count() > 1) blocks_[block] = std::make_shared<Numbers>(*blocks_[block]);
  return *blocks_[block];
}

void NumberList::Split(size_t block) {
  const std::span<const uint64_t> all = *blocks_[block];
  const auto first = all.first(kBlockSize / 2), second = all.subspan(kBlockSize / 2);
  const auto next = static_cast<ptrdiff_t>(block) + 1;
  begins_.insert(begins_.begin() + next, begins_[block] + first.size());
  greatest_[block] = *std::max_element(first.begin(), first.end());
  greatest_.insert(greatest_.begin() + next, *std::max_element(second.begin(), second.end()));
  const auto whole =
      std::exchange(blocks_[block], std::make_shared<Numbers>(first.begin(), first.end()));
  blocks_.insert(blocks_.begin() + next, std::make_shared<Numbers>(second.begin(), second.end()));
}

void NumberList::MoveBegins(size_t fromBlock, int by) {
  for (size_t block = fromBlock; block < begins_.size(); ++block) {
    begins_[block] += static_cast<size_t>(by);
  }
}

}  // namespace core
