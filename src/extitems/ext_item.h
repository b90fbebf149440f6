// Extended items: the typed, named values that a user adds to one Action beyond its columns, and
// their list. An item exists only inside the Action that holds it; all items of an Action are
// stored as one text (see text_form.h).
#pragma once

#include <array>
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace extitems {

enum ItemType {
  kUnknownType = -1,
  kInt,
  kFloat,
  kString,
  kDate,
  kTime,
  kDateTime,
  kFile,
  kMultiLineString,
  kItemTypeCount
};

// By ItemType. The spelling is case-sensitive.
inline constexpr std::array<std::u16string_view, kItemTypeCount> kTypeNames = {
    u"int", u"float", u"string", u"date", u"time", u"datetime", u"File", u"mlstring"};

struct ExtItem {
  std::u16string name;                  // by which the action text refers to the item
  std::u16string label;                 // which the user sees
  std::u16string type;                  // one of kTypeNames
  std::optional<std::u16string> value;  // as it reads, not escaped

  bool operator==(const ExtItem&) const = default;
};

// Sorted by name in code unit order, each name once.
using ExtItemList = std::vector<ExtItem>;

// The number of a type name, kUnknownType for any other text.
ItemType ExtItemType(std::u16string_view type);

// Whether values of the type stand between quotation marks in the text form.
constexpr bool IsQuotedType(ItemType type) {
  return type >= kString;
}

// Inserts the item at its sorted place. False, and the list as it was, if the name exists: the
// first item with a name wins.
bool AddExtItem(ExtItemList& list, ExtItem item);

// The index of the item with this name, if there is one.
std::optional<size_t> FindExtItem(const ExtItemList& list, std::u16string_view name);

}  // namespace extitems
