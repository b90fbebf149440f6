// What is asked of every block lies beside the blocks, so that a search of a million numbers looks
// into one or two of them.
#include "core/number_list.h"

#include <algorithm>
#include <utility>

#include "core/text.h"

namespace core {

uint64_t NumberList::At(size_t index) const {
  const size_t block = BlockOf(index);
  return Read(block)[index - begins_[block]];
}

// A list that was only appended to has full blocks, and most others nearly so.
size_t NumberList::BlockOf(size_t index) const {
  const size_t guess = std::min(index / kBlockSize, blocks_.size() - 1);
  if (begins_[guess] <= index && index < End(guess)) return guess;
  const auto after = std::upper_bound(begins_.begin(), begins_.end(), index);
  return static_cast<size_t>(after - begins_.begin()) - 1;
}

void NumberList::Append(uint64_t number) {
  if (blocks_.empty() || count_ - begins_.back() == kBlockSize) {
    AppendBlock({&number, 1});
    blocks_.back()->numbers.reserve(kBlockSize);
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
  if (const size_t full = BlockOf(index); End(full) - begins_[full] == kBlockSize) Split(full);
  const size_t block = BlockOf(index);
  Numbers& numbers = Own(block);
  numbers.insert(numbers.begin() + static_cast<ptrdiff_t>(index - begins_[block]), number);
  greatest_[block] = std::max(greatest_[block], number);
  MoveBegins(block + 1, 1);
  ++count_;
}

void NumberList::RemoveAt(size_t index) {
  const size_t block = BlockOf(index);
  const auto place = static_cast<ptrdiff_t>(block);
  if (End(block) - begins_[block] == 1) {
    blocks_.erase(blocks_.begin() + place);
    begins_.erase(begins_.begin() + place);
    greatest_.erase(greatest_.begin() + place);
    MoveBegins(block, -1);
  } else {
    Numbers& numbers = Own(block);
    numbers.erase(numbers.begin() + static_cast<ptrdiff_t>(index - begins_[block]));
    greatest_[block] = *std::max_element(numbers.begin(), numbers.end());
    MoveBegins(block + 1, -1);
  }
  --count_;
}

void NumberList::AppendBlock(std::span<const uint64_t> numbers) {
  AppendBlock({{numbers.begin(), numbers.end()}, nullptr}, numbers.size(),
              *std::max_element(numbers.begin(), numbers.end()));
}

void NumberList::AppendUnread(std::shared_ptr<NumberSource> source, size_t name, size_t count,
                              uint64_t greatest) {
  AppendBlock({{}, std::move(source), name}, count, greatest);
}

void NumberList::AppendBlock(SharedBlock block, size_t count, uint64_t greatest) {
  blocks_.push_back(std::make_shared<SharedBlock>(std::move(block)));
  begins_.push_back(count_);
  greatest_.push_back(greatest);
  count_ += count;
}

size_t NumberList::ReadAhead(size_t most) const {
  size_t read = 0;
  for (size_t block = 0; block < blocks_.size() && read < most; ++block) {
    if (!blocks_[block]->source) continue;
    Read(block);
    ++read;
  }
  return read;
}

// Where the number would stand is searched as if the list were sorted; from there both ways.
size_t NumberList::Find(uint64_t number) const {
  size_t below = SortedSearch(blocks_.size(), SearchMode::kUpperBound,
                              [&](size_t block) { return Read(block).front() <= number ? 1 : -1; });
  size_t above = below;
  const auto findIn = [&](size_t block) {
    if (greatest_[block] < number) return count_;
    const Numbers& numbers = Read(block);
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

size_t NumberList::End(size_t block) const {
  return block + 1 < begins_.size() ? begins_[block + 1] : count_;
}

const NumberList::Numbers& NumberList::Read(size_t block) const {
  SharedBlock& shared = *blocks_[block];
  if (const auto source = std::exchange(shared.source, nullptr)) {
    shared.numbers.resize(End(block) - begins_[block]);
    source->Read(shared.name, shared.numbers);
  }
  return shared.numbers;
}

NumberList::Numbers& NumberList::Own(size_t block) {
  Read(block);
  std::shared_ptr<SharedBlock>& shared = blocks_[block];
  if (shared.use_count() > 1) shared = std::make_shared<SharedBlock>(*shared);
  return shared->numbers;
}

void NumberList::Split(size_t block) {
  const auto next = static_cast<ptrdiff_t>(block) + 1;
  Numbers& first = Own(block);
  Numbers second(first.begin() + kBlockSize / 2, first.end());
  first.resize(kBlockSize / 2);
  begins_.insert(begins_.begin() + next, begins_[block] + first.size());
  greatest_[block] = *std::max_element(first.begin(), first.end());
  greatest_.insert(greatest_.begin() + next, *std::max_element(second.begin(), second.end()));
  blocks_.insert(blocks_.begin() + next,
                 std::make_shared<SharedBlock>(SharedBlock{std::move(second), nullptr}));
}

void NumberList::MoveBegins(size_t fromBlock, int by) {
  for (size_t block = fromBlock; block < begins_.size(); ++block) {
    begins_[block] += static_cast<size_t>(by);
  }
}

}  // namespace core
