// The list keeps its order by inserting at the searched place.
#include "extitems/ext_item.h"

#include <algorithm>
#include <utility>

#include "core/text.h"

namespace extitems {
namespace {

size_t SortedPlace(const ExtItemList& list, std::u16string_view name) {
  return core::SortedSearch(list.size(), core::SearchMode::kLowerBound,
                            [&](size_t i) { return name.compare(list[i].name); });
}

}  // namespace

ItemType ExtItemType(std::u16string_view type) {
  const auto found = std::find(kTypeNames.begin(), kTypeNames.end(), type);
  return found == kTypeNames.end() ? kUnknownType
                                   : static_cast<ItemType>(found - kTypeNames.begin());
}

bool AddExtItem(ExtItemList& list, ExtItem item) {
  const size_t place = SortedPlace(list, item.name);
  if (place < list.size() && list[place].name == item.name) return false;
  list.insert(list.begin() + static_cast<ptrdiff_t>(place), std::move(item));
  return true;
}

std::optional<size_t> FindExtItem(const ExtItemList& list, std::u16string_view name) {
  const size_t place = SortedPlace(list, name);
  if (place == list.size() || list[place].name != name) return std::nullopt;
  return place;
}

}  // namespace extitems
