// The action text: an Action's memo as a template. Plain text is copied; code between two "#" is
// evaluated over the Action, and its last value stands in its place. docs/action-text.md says what
// a user can write.
#pragma once

#include <string>

#include "store/action.h"

namespace actiontext {

// The expansion of the Action's kMemo, with the Action's columns and its kExtItems (in their text
// form) as names; an absent column reads as empty. For a screen: put the fields as they stand into
// an Action, the raw memo into kMemo, and show the result in the memo's place.
//
// There is no failure and no result code: a stretch that can't be evaluated inserts nothing, the
// text after it is shown, and the Action is never changed. LocalTime and Rand ask the host, so a
// second run may give another text. Interface thread only.
std::u16string ParseActionText(const store::Action& action);

}  // namespace actiontext
