// The statements of the action text: a stretch of code between two "#", the chain
// if (...) {...} else if (...) {...} else {...}, and the block.
//
// Cursor and codes as in expressions.h; of the statement:
//   -101    no "if"; the cursor has not moved
//   -201    no "(" after "if"
//   -211    a bad condition; -2111 if the text ended before it
//   -221    no ")" after the condition
//   -231    the block failed
// and of the blocks:
//   -101    no "{"; nested too deep; the text ended in a block that was passed over
//   -201    neither a statement nor an expression nor "}"; the text ended in the block, or in a
//           string of a block that was passed over
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "actiontext/run.h"

namespace actiontext {

// Evaluates the stretch from the cursor up to the closing "#", on which the cursor then stands, and
// appends the value that lies on top at the end, if there is one, to `out`. 0, or -1000 if the
// stretch can't be read to its end; then nothing is appended.
int EvalEmbeddedBlock(ActionTextRun& run, std::u16string& out, std::u16string_view text,
                      size_t& cursor);

// One "if" with its whole chain. A block's value goes to the context's stack.
int EvalStatement(ActionTextContext& context, std::u16string_view text, size_t& cursor);

// Runs the block at the cursor, or passes over it if `mode` is 0.
int EvalIfStatement(ActionTextContext& context, std::u16string_view text, size_t& cursor, int mode);

// "{ ... }" on a stack of its own, whose top item goes to the context's stack at the end.
int EvalStatExprBlock(ActionTextContext& context, std::u16string_view text, size_t& cursor);

// Moves the cursor past the "}" that closes the block, looking only at braces and strings. Kept on
// purpose: without a "{" it is the first "}" of the text.
int SkipToRightPrnt(std::u16string_view text, size_t& cursor);

}  // namespace actiontext
