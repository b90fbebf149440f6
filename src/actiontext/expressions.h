// The expressions of the action text, read and evaluated in one pass over the text: assignment,
// comparison, sum, term, factor, each level left-associative; a factor is a number, a string, a
// name, a function call, an expression in parentheses or a factor after a sign. Operands go to the
// context's stack and every operand is reduced at once, so that effects come in the order of the
// text.
//
// `cursor` is an index into `text`. On success it stands on the first character that was not taken,
// on failure on the character that was refused. An expression is complete only when another
// character follows it: at the very end of the text it fails.
//
// The answers are 0 or a negative code, the number of the state that failed:
//   -101          no operand, or the level below failed; nested too deep; too much text
//   -201          the text ended after an operand; no "(" after a function's name
//   -211, -221    a bad argument; a bad character after an argument; too much text
//   -301, -311    a bad character in a string; the text ended in it or in an escape
//   -401, -501    the text ended after a sign
//   -601          the text ended in a name; a function's arguments failed
//   -701, -711    a bad expression in parentheses; no ")"
//   -10011        a second point in a number; a bad escape
#pragma once

#include <cstddef>
#include <string_view>

#include "actiontext/run.h"
#include "core/characters.h"

namespace actiontext {

int EvalExpr(ActionTextContext& context, std::u16string_view text, size_t& cursor);
int EvalLogiExpr(ActionTextContext& context, std::u16string_view text, size_t& cursor);
int EvalSimpleExpr(ActionTextContext& context, std::u16string_view text, size_t& cursor);
int EvalTerm(ActionTextContext& context, std::u16string_view text, size_t& cursor);
int EvalFact(ActionTextContext& context, std::u16string_view text, size_t& cursor);

// The arguments of a function, from the "(" on, and its call. Arguments are factors. A call that
// fails pushes nothing and is no failure here, except for kTooMuchText.
int EvalFunc(ActionTextContext& context, std::u16string_view text, size_t& cursor, int number);

// Moves the cursor to the first character that is no blank, or to the end of the text, which is
// answered by false.
inline bool SkipBlanks(std::u16string_view text, size_t& cursor) {
  while (cursor < text.size() && core::IsBlank(text[cursor])) ++cursor;
  return cursor < text.size();
}

}  // namespace actiontext
