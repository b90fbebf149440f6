// A long list of numbers in blocks that copies share: a copy costs a pointer for each block, a
// change of either then copies the block that it touches. A block may lie elsewhere until one of
// its numbers is asked for. One thread only, the copies included.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <vector>

namespace core {

// Where the blocks of a list lie that haven't been read yet.
class NumberSource {
 public:
  virtual ~NumberSource() = default;
  // Fills `numbers` with the block of that name. The list takes what it gets: it's for the source
  // to report what goes wrong.
  virtual void Read(size_t name, std::span<uint64_t> numbers) = 0;
};

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
  std::span<const uint64_t> Block(size_t block) const { return Read(block); }
  // The one that holds an index below Count.
  size_t BlockOf(size_t index) const;
  // Adds a block of 1 to kBlockSize numbers at the end.
  void AppendBlock(std::span<const uint64_t> numbers);
  // The same with a block that `source` reads when one of its numbers is asked for. `greatest` is
  // the greatest of them.
  void AppendUnread(std::shared_ptr<NumberSource> source, size_t name, size_t count,
                    uint64_t greatest);
  // Reads blocks that haven't been read yet, `most` of them at most; how many it read.
  size_t ReadAhead(size_t most) const;

  // Index of a number, Count if it isn't there. The nearer it stands to where it would be in a
  // sorted list, the sooner it's found.
  size_t Find(uint64_t number) const;

 private:
  using Numbers = std::vector<uint64_t>;
  // Copies of a list share it: what one of them reads, all have.
  struct SharedBlock {
    Numbers numbers;
    std::shared_ptr<NumberSource> source;  // none once it has been read
    size_t name = 0;
  };

  void AppendBlock(SharedBlock block, size_t count, uint64_t greatest);
  size_t End(size_t block) const;
  const Numbers& Read(size_t block) const;
  Numbers& Own(size_t block);
  void Split(size_t block);
  void MoveBegins(size_t fromBlock, int by);

  size_t count_ = 0;
  std::vector<std::shared_ptr<SharedBlock>> blocks_;
  std::vector<size_t> begins_;
  std::vector<uint64_t> greatest_;
};

}  // namespace core
