// What one run of the action text over an Action knows: its items, its variables, the texts it has
// made. Every stretch, block and condition has a stack of its own and shares the rest.
#pragma once

#include <array>
#include <cstddef>
#include <memory_resource>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "actiontext/text_arena.h"
#include "actiontext/value.h"
#include "actiontext/value_stack.h"
#include "extitems/ext_item.h"
#include "store/action.h"

namespace actiontext {

// Parentheses, signs, arguments and blocks nest so deep; beyond it an expression fails like any
// other. Chosen so that even a build with sanitizers stays within half of a stack of 8 MiB.
inline constexpr int kMaxDepth = 1200;

// What a reduction or a function answers for texts that the run may no longer read or make (see
// text_arena.h). The expression round it fails then, as one does that is nested too deep.
inline constexpr int kTooMuchText = -10001;

class ActionTextRun {
 public:
  // Reads the Action's extended items. The Action must outlive the run.
  explicit ActionTextRun(const store::Action& action);
  ActionTextRun(const ActionTextRun&) = delete;
  ActionTextRun& operator=(const ActionTextRun&) = delete;

  // Turns an identifier into a value in place: a variable's, an extended item's or a system item's,
  // in this order. 0, also for everything that is no identifier; -102 for an unknown name, which
  // stays an identifier.
  int ResolveValue(ActionValue& item);

  // `value` is an int, a float or a string.
  void SetVariable(std::u16string_view name, const ActionValue& value);

  TextArena texts;
  int depth = 0;

 private:
  struct Item {
    std::u16string_view name;
    std::u16string_view text;
    extitems::ItemType type;
    ActionValue value = {};  // of `text`, from its first use on
  };

  void ReadExtItems(std::u16string_view text);
  bool FindExtItem(std::u16string_view name, ActionValue& item);
  bool FindSystemItem(std::u16string_view name, ActionValue& item) const;

  const store::Action& action_;
  // A dozen items and variables need no memory from the heap.
  std::array<std::byte, 1024> fewTables_;
  std::pmr::monotonic_buffer_resource tables_{fewTables_.data(), fewTables_.size()};
  std::pmr::vector<Item> items_{&tables_};  // sorted by name
  std::pmr::unordered_map<std::u16string_view, ActionValue> variables_{&tables_};
};

// What every evaluator works on.
struct ActionTextContext {
  explicit ActionTextContext(ActionTextRun& ofRun) : run(ofRun) {}

  ValueStack stack;
  ActionTextRun& run;
};

// Counts one level of nesting for the length of a scope.
class Nesting {
 public:
  explicit Nesting(ActionTextRun& run) : depth_(run.depth) { ++depth_; }
  ~Nesting() { --depth_; }
  Nesting(const Nesting&) = delete;
  Nesting& operator=(const Nesting&) = delete;

  bool TooDeep() const { return depth_ > kMaxDepth; }

 private:
  int& depth_;
};

}  // namespace actiontext
