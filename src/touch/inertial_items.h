// The rows of an inertial list, and the table of operations through which the list reaches them:
// who uses the list may put operations of its own in their places.
#pragma once

#include <array>
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace touch {

class InertList;
class ListCanvas;
struct ListRect;

struct InertItem {
  static constexpr int kOwnHeight = 2;  // bit of `data`: `height` counts

  int data = 0;    // flags and the user's data
  int height = 0;  // pixels
  std::optional<std::u16string> text;
};

// Answered for an index that no row has; a search that finds nothing answers kNoItem.
inline constexpr int kBadIndex = -100;
inline constexpr int kNoItem = -1;

class ItemStore {
 public:
  std::vector<InertItem> items;

  bool Has(int index) const { return index >= 0 && static_cast<size_t>(index) < items.size(); }
  InertItem& At(int index) { return items[static_cast<size_t>(index)]; }
};

// Numbers in the table; 0 and 4 are free.
enum ItemOp {
  kOpInit = 1,
  kOpDestroy = 2,
  kOpClear = 3,
  kOpFind = 5,
  kOpAdd,
  kOpInsert,
  kOpDelete,
  kOpCount,
  kOpSetItem,
  kOpGetItem,
  kOpFreeItem,
  kOpSetData,
  kOpGetData,
  kOpSetHeight,
  kOpGetHeight,
  kOpGetText,
  kOpPaintRow,
  kOpPaintEmptyRow,
  kItemOpCount
};

// The type of each operation. All but find answer 0 or what they are asked for, or kBadIndex.
using StoreFunction = void (*)(ItemStore&);  // init, destroy, clear
using FindFunction = int (*)(ItemStore&, int start, const InertItem&);
using AddFunction = int (*)(ItemStore&, const InertItem&);
using CountFunction = int (*)(ItemStore&);
using InsertFunction = int (*)(ItemStore&, int index, const InertItem&);  // and set item
using DeleteFunction = int (*)(ItemStore&, int index);                    // and get data, height
using GetItemFunction = int (*)(ItemStore&, int index, InertItem&);
using FreeItemFunction = void (*)(InertItem&);
using SetNumberFunction = int (*)(ItemStore&, int index, int value);  // data, height
using GetTextFunction = std::u16string (*)(ItemStore&, int index);
using PaintFunction = void (*)(InertList&, ListCanvas&, int row, const ListRect&);

class ItemStoreOps {
 public:
  using Function = void (*)();  // whatever the operation's type is

  ItemStoreOps();

  // nullptr for a number that has no operation.
  Function Get(int number) const;
  // 0, or kBadIndex for a number that has no operation, or for none.
  int Set(int number, Function function);

  template <typename Type>
  Type As(ItemOp number) const {
    return reinterpret_cast<Type>(table_[number]);
  }

 private:
  std::array<Function, kItemOpCount> table_{};
};

}  // namespace touch
