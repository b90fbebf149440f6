// A long list of numbers in blocks that copies share: a copy costs a pointer for each block, a
// change of either then copies the block that it touches.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <vector>

namespace core {

class NumberList {
 public:
  static constexpr size_t kBlockSize = 1024;  // of a full block

  size_t Count() const { return count_; }
  // The index must be below Count.
  uint64_t At(size_t index) const;

  void Append(uint64_t number);
  // Moves what stands there and after it up by one. The index is Count at most.
  void InsertAt(size_t index, uint64_t number);
  // Closes the gap. The index must be below Count.
  void RemoveAt(size_t index);
  void Clear() { *this = {}; }

  // The blocks in their order: block k holds the numbers from index Begin(k) on. None is empty.
  size_t Blocks() const { return blocks_.size(); }
  size_t Begin(size_t block) const { return begins_[block]; }
  uint64_t Greatest(size_t block) const { return greatest_[block]; }
  std::span<const uint64_t> Block(size_t block) const { return *blocks_[block]; }
  // The one that holds an index below Count.
  size_t BlockOf(size_t index) const;
  // Adds a block of 1 to kBlockSize numbers at the end.
  void AppendBlock(std::span<const uint64_t> numbers);

  // Index of a number in a list that is nearly sorted, found the sooner the nearer it stands to
  // where it would be in a sorted one; Count if it isn't there.
  size_t Find(uint64_t number) const;

 private:
  using Numbers = std::vector<uint64_t>;

  Numbers& Own(size_t block);
  void Split(size_t block);
  void MoveBegins(size_t fromBlock, int by);

  size_t count_ = 0;
  std::vector<std::shared_ptr<Numbers>> blocks_;
  std::vector<size_t> begins_;
  std::vector<uint64_t> greatest_;
};

}  // namespace core
