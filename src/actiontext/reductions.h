// Applying the operator that waits below the top of the stack to the items round it. The answers
// are 0 or a negative code; callers ignore any but kTooMuchText and go on with what the stack then
// holds.
#pragma once

#include "actiontext/run.h"

namespace actiontext {

// Each answers -101 for fewer than three items, -102 if the item below the top is no operator of
// its class, and then leaves the stack alone. Otherwise it takes left, operator and right off and
// pushes the result. An unknown name, or an operator or a mark that an earlier failure left in an
// operand's place, gives no result (a comparison with an unknown name gives 0); nor does
// kTooMuchText.
int ReduceMulDiv(ActionTextContext& context);
int ReduceAddSub(ActionTextContext& context);
int ReduceCompare(ActionTextContext& context);  // true is -1, false 0
// Sets a variable; the value of an assignment is the value assigned.
int ReduceAssign(ActionTextContext& context);

// Takes the mark of "(" from below the top item, which stays as it is: a name is not looked up.
// -101 for fewer than two items, -102 without a mark.
int CloseParen(ActionTextContext& context);

}  // namespace actiontext
