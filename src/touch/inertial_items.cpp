// The operations as they are before anybody replaces one.
#include "touch/inertial_items.h"

#include <algorithm>

#include "touch/inertial_list.h"

namespace touch {
namespace {

void Clear(ItemStore& store) {
  store.items.clear();
}

int Find(ItemStore& store, int start, const InertItem& wanted) {
  const auto first = static_cast<size_t>(std::max(start, 0));
  if (first > store.items.size()) return kBadIndex;
  for (size_t i = first; i < store.items.size(); ++i) {
    if (store.items[i].text == wanted.text) return static_cast<int>(i);
  }
  return kNoItem;
}

int Add(ItemStore& store, const InertItem& item) {
  store.items.push_back(item);
  return 0;
}

int Insert(ItemStore& store, int index, const InertItem& item) {
  if (index < 0 || static_cast<size_t>(index) > store.items.size()) return kBadIndex;
  store.items.insert(store.items.begin() + index, item);
  return 0;
}

int Delete(ItemStore& store, int index) {
  if (!store.Has(index)) return kBadIndex;
  store.items.erase(store.items.begin() + index);
  return 0;
}

int Count(ItemStore& store) {
  return static_cast<int>(store.items.size());
}

int SetItem(ItemStore& store, int index, const InertItem& item) {
  if (!store.Has(index)) return kBadIndex;
  store.At(index) = item;
  return 0;
}

int GetItem(ItemStore& store, int index, InertItem& item) {
  if (!store.Has(index)) return kBadIndex;
  item = store.At(index);
  return 0;
}

void FreeItem(InertItem& item) {
  item.text.reset();
}

int SetData(ItemStore& store, int index, int value) {
  if (!store.Has(index)) return kBadIndex;
  store.At(index).data = value;
  return 0;
}

int GetData(ItemStore& store, int index) {
  return store.Has(index) ? store.At(index).data : kBadIndex;
}

int SetHeight(ItemStore& store, int index, int height) {
  if (!store.Has(index)) return kBadIndex;
  store.At(index).data |= InertItem::kOwnHeight;
  store.At(index).height = height;
  return 0;
}

int GetHeight(ItemStore& store, int index) {
  if (!store.Has(index)) return kBadIndex;
  const InertItem& item = store.At(index);
  return (item.data & InertItem::kOwnHeight) != 0 ? item.height : -1;
}

std::u16string GetText(ItemStore& store, int index) {
  return store.Has(index) ? store.At(index).text.value_or(u"") : std::u16string();
}

template <typename Type>
ItemStoreOps::Function Erased(Type* function) {
  return reinterpret_cast<ItemStoreOps::Function>(function);
}

}  // namespace

ItemStoreOps::ItemStoreOps() {
  table_[kOpInit] = table_[kOpDestroy] = table_[kOpClear] = Erased(&Clear);
  table_[kOpFind] = Erased(&Find);
  table_[kOpAdd] = Erased(&Add);
  table_[kOpInsert] = Erased(&Insert);
  table_[kOpDelete] = Erased(&Delete);
  table_[kOpCount] = Erased(&Count);
  table_[kOpSetItem] = Erased(&SetItem);
  table_[kOpGetItem] = Erased(&GetItem);
  table_[kOpFreeItem] = Erased(&FreeItem);
  table_[kOpSetData] = Erased(&SetData);
  table_[kOpGetData] = Erased(&GetData);
  table_[kOpSetHeight] = Erased(&SetHeight);
  table_[kOpGetHeight] = Erased(&GetHeight);
  table_[kOpGetText] = Erased(&GetText);
  table_[kOpPaintRow] = Erased(&ListRow);
  table_[kOpPaintEmptyRow] = Erased(&ListEmptyRow);
}

ItemStoreOps::Function ItemStoreOps::Get(int number) const {
  return number >= 0 && number < kItemOpCount ? table_[static_cast<size_t>(number)] : nullptr;
}

int ItemStoreOps::Set(int number, Function function) {
  if (Get(number) == nullptr || function == nullptr) return kBadIndex;
  table_[static_cast<size_t>(number)] = function;
  return 0;
}

}  // namespace touch
