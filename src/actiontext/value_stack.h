// The evaluation stack. Few items lie on it at a time, and every block has a stack of its own: the
// first ones need no memory from the heap.
#pragma once

#include <algorithm>
#include <cstddef>
#include <memory>

#include "actiontext/value.h"

namespace actiontext {

class ValueStack {
 public:
  ValueStack() = default;
  ValueStack(const ValueStack&) = delete;
  ValueStack& operator=(const ValueStack&) = delete;

  size_t Count() const { return count_; }

  void Push(const ActionValue& item) {
    if (count_ == capacity_) Grow();
    items_[count_++] = item;
  }

  // 0, or -101 on an empty stack.
  int Pop(ActionValue& item) {
    if (count_ == 0) return -101;
    item = items_[--count_];
    return 0;
  }

  // As many of `count` as there are.
  void PopMany(size_t count) { count_ -= std::min(count, count_); }

  void Clear() { count_ = 0; }

  // The item `depth` below the top one; there must be one.
  ActionValue& FromTop(size_t depth) { return items_[count_ - 1 - depth]; }

 private:
  static constexpr size_t kFew = 6;

  void Grow() {
    capacity_ *= 2;
    auto larger = std::make_unique<ActionValue[]>(capacity_);
    std::copy(items_, items_ + count_, larger.get());
    many_ = std::move(larger);
    items_ = many_.get();
  }

  ActionValue few_[kFew];
  std::unique_ptr<ActionValue[]> many_;
  ActionValue* items_ = few_;
  size_t count_ = 0;
  size_t capacity_ = kFew;
};

}  // namespace actiontext
