// The text form of extended items, as an Action's column and the exchange files hold it:
//
//   name:label:type:value:name:label:type:value:
//
// Blanks may stand round each field. An "int" or "float" value stands bare, any other between
// quotation marks and escaped: Persons:人数:int:3:Note:備考:mlstring:"a\nb":
//
// Values are written as EscapeText gives them, whatever they hold, but read only with characters of
// the value class: a text with a character from a gap (an emoji, "é") does not read back, nor does
// anything after it.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "extitems/ext_item.h"

namespace extitems {

// A fault in a field answers the number of its state, negative (-100 before a name to -320 after a
// type), as does a text that ends inside a field. Two more:
inline constexpr int kBadValueEnd = -10100;        // no ":" after a value
inline constexpr int kMissingLastColon = -100001;  // the text ends in or after a value

// An item as it stands in a text that outlives it.
struct ExtItemView {
  std::u16string_view name;
  std::u16string_view label;
  ItemType type = kUnknownType;
  std::u16string_view value;  // without quotation marks, still escaped
};

// Reads a text item by item without copying it. Items of one name all come.
class ExtItemReader {
 public:
  explicit ExtItemReader(std::u16string_view text);

  // Reads on to the next item with a good value; items with a bad one are passed over. False at the
  // end of the text and at a fault, which ends the reading.
  bool Next(ExtItemView& item);
  // Once Next answered false: 0 or one of the codes above.
  int Result() const { return result_; }

 private:
  bool End(int result);

  int state_;
  int result_ = 0;
  size_t cursor_ = 0;
  std::u16string_view text_;
};

// Reads `text` into `list`, which is emptied first. 0, or one of the codes above; what was read
// before a fault stays. An Action without items has an empty or an absent text; both are an empty
// list and 0.
int ParseExtItems(ExtItemList& list, std::u16string_view text);

// An absent value, and any value of an unknown type, writes nothing between its colons; such an
// item does not read back.
std::u16string WriteExtItems(const ExtItemList& list);

}  // namespace extitems
