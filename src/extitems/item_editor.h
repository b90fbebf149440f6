// The editor of an Action's extended items without its screen: a private list, the item that is
// selected in it, and the controls' texts, which follow the type.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "extitems/ext_item.h"

namespace extitems {

inline constexpr size_t kLongestExtItems = 2000;  // of the text form, in 16-bit units

class CItemEditor {
 public:
  // What the controls hold. The screen keeps it up to date while its user types; of the value's
  // three texts the type says which are shown.
  struct Fields {
    std::u16string name;
    ItemType type = kInt;
    std::u16string line;   // of the types of one line; of a datetime the date
    std::u16string time;   // of a time; of a datetime the time
    std::u16string lines;  // of a multi-line string
  };
  Fields fields;
  std::optional<std::u16string> result;  // the new text form, once the screen is to end with it

  // What cannot be read of `text` is left out.
  explicit CItemEditor(std::u16string_view text);

  const ExtItemList& Items() const { return items_; }
  int Selected() const { return selected_; }  // -1 for none
  // The list is no longer as it was read.
  bool Changed() const { return changed_; }
  bool HasLine() const;
  bool HasTime() const { return fields.type == kTime || fields.type == kDateTime; }

  // Shows the item; -1 empties the controls.
  void Select(int index);
  // Selects the item of that name, or takes the name into its control.
  void ChooseName(std::u16string_view name);
  // The value moves into the controls of the new type.
  void ChangeType(ItemType type);
  // What the controls of the type hold.
  std::u16string Value() const;

  void OnBtnCreate();
  void OnBtnChange();
  void OnBtnDelete();
  // Fills `result`, unless the text is too long.
  void OnBtnApply();
  // True if the changes are to be dropped.
  bool OnBtnDiscard();

 private:
  bool IsNamed() const;
  bool IsSelected() const;
  // None, after its message, if a part is refused, or cannot be read back and its user thinks
  // better of it.
  std::optional<ExtItem> BuildItem() const;
  void InsertAndSelect(ExtItem item);
  void PutValue(const std::u16string& value);

  ExtItemList items_;
  int selected_ = -1;
  bool changed_ = false;
};

}  // namespace extitems
