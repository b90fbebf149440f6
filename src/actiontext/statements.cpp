// Where a statement can't be read an expression is tried, from wherever the statement stopped: that
// is how "iffy = 1" sets a variable "fy".
#include "actiontext/statements.h"

#include "actiontext/expressions.h"
#include "actiontext/number_text.h"

namespace actiontext {
namespace {

enum StretchState {
  kFailed = -1000,
  kStatement = 1000,
  kAfterExpression = 1010,
  kEnded = 100000,
  kEndedByOther = 100001
};

enum IfState {
  kIf = 101,
  kOpenCondition = 201,
  kCondition = 211,
  kCloseCondition = 221,
  kThen = 231,
  kElse = 241,
  kElseBranch = 251
};

enum BlockState { kOpenBlock = 101, kInBlock = 201 };

constexpr int kEndBeforeCondition = -2111;

bool TakeWord(std::u16string_view word, std::u16string_view text, size_t& cursor) {
  if (text.substr(cursor, word.size()) != word) return false;
  cursor += word.size();
  return true;
}

// Kept on purpose: only an int is true or false. A float is false, and anything else, a string
// or a name that is not looked up here, leaves the verdict as it was.
int Verdict(ValueStack& stack, int former) {
  ActionValue condition;
  stack.Pop(condition);
  if (condition.type == kInt) return condition.i;
  return condition.type == kFloat ? 0 : former;
}

void InsertValue(std::u16string& out, const ActionValue& value, TextArena& texts) {
  if (value.type == kString) {
    if (texts.Spend(value.s.size())) out += value.s;
  } else if (value.type == kInt) {
    out += NumberText(value.i).View();
  } else if (value.type == kFloat) {
    out += NumberText(value.f, NumberText::Form::kSixDigits).View();
  }
}

// Reads on from a statement's beginning. The state in which it stopped.
StretchState EvalStretch(ActionTextContext& context, std::u16string_view text, size_t& cursor) {
  StretchState state = kStatement;
  while (SkipBlanks(text, cursor)) {
    const char16_t first = text[cursor];
    switch (state) {
      case kStatement:
        if (EvalStatement(context, text, cursor) == 0) break;
        if (EvalExpr(context, text, cursor) != 0) return first == u'#' ? kEnded : kFailed;
        state = kAfterExpression;
        break;
      default:
        // Kept on purpose: another character ends the stretch too, and counts as its closing "#".
        if (first != u';') return first == u'#' ? kEnded : kEndedByOther;
        context.stack.Clear();
        ++cursor;
        state = kStatement;
        break;
    }
  }
  return state;
}

}  // namespace

int EvalEmbeddedBlock(ActionTextRun& run, std::u16string& out, std::u16string_view text,
                      size_t& cursor) {
  ActionTextContext context(run);
  const StretchState state = EvalStretch(context, text, cursor);
  if (state < 0) return state;
  ActionValue value;
  context.stack.Pop(value);
  run.ResolveValue(value);
  InsertValue(out, value, run.texts);
  return 0;
}

int EvalStatement(ActionTextContext& context, std::u16string_view text, size_t& cursor) {
  const size_t begin = cursor;
  IfState state = kIf;
  int verdict = -1;
  int open = -1;  // all bits, until a branch was taken
  while (SkipBlanks(text, cursor)) {
    switch (state) {
      case kIf:
        if (!TakeWord(u"if", text, cursor)) {
          cursor = begin;
          return -state;
        }
        state = kOpenCondition;
        break;
      case kOpenCondition:
        if (text[cursor] != u'(') return -state;
        ++cursor;
        state = kCondition;
        break;
      case kCondition: {
        ActionTextContext condition(context.run);
        if (EvalExpr(condition, text, cursor) != 0) return -state;
        verdict = Verdict(condition.stack, verdict);
        state = kCloseCondition;
        break;
      }
      case kCloseCondition:
        if (text[cursor] != u')') return -state;
        ++cursor;
        state = kThen;
        break;
      case kThen:
        if (EvalIfStatement(context, text, cursor, verdict & open) != 0) return -state;
        if (verdict != 0) open = 0;
        state = kElse;
        break;
      case kElse:
        if (!TakeWord(u"else", text, cursor)) return 0;
        state = kElseBranch;
        break;
      case kElseBranch:
        if (TakeWord(u"if", text, cursor)) {
          state = kOpenCondition;
          break;
        }
        EvalIfStatement(context, text, cursor, (verdict == 0 ? 1 : 0) & open);
        return 0;
    }
  }
  if (state == kElse || state == kElseBranch) return 0;
  return state == kCondition ? kEndBeforeCondition : -state;
}

int EvalIfStatement(ActionTextContext& context, std::u16string_view text, size_t& cursor,
                    int mode) {
  return mode != 0 ? EvalStatExprBlock(context, text, cursor) : SkipToRightPrnt(text, cursor);
}

int EvalStatExprBlock(ActionTextContext& context, std::u16string_view text, size_t& cursor) {
  const Nesting nesting(context.run);
  if (nesting.TooDeep()) return -kOpenBlock;
  ActionTextContext block(context.run);
  BlockState state = kOpenBlock;
  while (SkipBlanks(text, cursor)) {
    const char16_t c = text[cursor];
    switch (state) {
      case kOpenBlock:
        if (c != u'{') return -state;
        ++cursor;
        state = kInBlock;
        break;
      case kInBlock:
        if (c == u';') {
          block.stack.Clear();
          ++cursor;
        } else if (c == u'}') {
          if (block.stack.Count() > 0) context.stack.Push(block.stack.FromTop(0));
          ++cursor;
          return 0;
        } else if (EvalStatement(context, text, cursor) != 0 &&
                   EvalExpr(block, text, cursor) != 0) {
          // Kept on purpose: a statement works on the outer stack, so that the value of a nested
          // block passes this one by.
          return -state;
        }
        break;
    }
  }
  return -state;
}

int SkipToRightPrnt(std::u16string_view text, size_t& cursor) {
  enum State { kCode = 101, kInString = 201 };
  State state = kCode;
  int nesting = 0;
  for (; cursor < text.size(); ++cursor) {
    const char16_t c = text[cursor];
    if (state == kInString) {
      if (c == u'\\') ++cursor;
      if (c == u'"') state = kCode;
    } else if (c == u'"') {
      state = kInString;
    } else if (c == u'{') {
      ++nesting;
    } else if (c == u'}') {
      if (nesting < 2) {
        ++cursor;
        return 0;
      }
      --nesting;
    }
  }
  cursor = text.size();
  return -state;
}

}  // namespace actiontext
