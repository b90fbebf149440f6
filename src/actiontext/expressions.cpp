// Four levels of one shape over one factor. The error of a state is its number, negated.
#include "actiontext/expressions.h"

#include "actiontext/builtins.h"
#include "actiontext/number_text.h"
#include "actiontext/reductions.h"
#include "core/characters.h"
#include "core/quoted_text.h"
#include "core/text.h"

namespace actiontext {
namespace {

constexpr int kBadForm = -10011;

// The states of a factor.
enum FactState {
  kFactor = 101,
  kNumber = 201,
  kQuoted = 301,
  kEscape = 311,
  kPlus = 401,
  kMinus = 501,
  kName = 601,
  kOpen = 701,
  kClose = 711
};

enum LevelState { kOperand = 101, kOperator = 201 };

enum FuncState { kOpenArguments = 201, kArgument = 211, kAfterArgument = 221 };

char16_t At(std::u16string_view text, size_t index) {
  return index < text.size() ? text[index] : u'\0';
}

// The operator of a level at the cursor, which moves past it; kNone if there is none.
using ReadOperator = ItemKind (*)(std::u16string_view text, size_t& cursor);

ItemKind ReadMulDiv(std::u16string_view text, size_t& cursor) {
  const char16_t c = text[cursor];
  if (c != u'*' && c != u'/') return kNone;
  ++cursor;
  return c == u'*' ? kMultiply : kDivide;
}

ItemKind ReadAddSub(std::u16string_view text, size_t& cursor) {
  const char16_t c = text[cursor];
  if (c != u'+' && c != u'-') return kNone;
  ++cursor;
  return c == u'+' ? kAdd : kSubtract;
}

ItemKind ReadComparison(std::u16string_view text, size_t& cursor) {
  const char16_t c = text[cursor];
  if (At(text, cursor + 1) == u'=') {
    const ItemKind kind = c == u'='   ? kEqual
                          : c == u'!' ? kNotEqual
                          : c == u'<' ? kLessOrEqual
                          : c == u'>' ? kGreaterOrEqual
                                      : kNone;
    if (kind != kNone) cursor += 2;
    return kind;
  }
  if (c != u'<' && c != u'>') return kNone;
  ++cursor;
  return c == u'<' ? kLess : kGreater;
}

ItemKind ReadAssignment(std::u16string_view text, size_t& cursor) {
  if (text[cursor] != u'=' || At(text, cursor + 1) == u'=') return kNone;
  ++cursor;
  return kAssign;
}

using Evaluate = int (*)(ActionTextContext&, std::u16string_view, size_t&);
using Reduce = int (*)(ActionTextContext&);

// The shape of the four levels: operand, reduction, operator, and again.
template <Evaluate kEvaluateOperand, ReadOperator kReadOperator, Reduce kReduce>
int EvalLevel(ActionTextContext& context, std::u16string_view text, size_t& cursor) {
  for (;;) {
    if (!SkipBlanks(text, cursor)) return -kOperand;
    if (kEvaluateOperand(context, text, cursor) != 0) return -kOperand;
    if (kReduce(context) == kTooMuchText) return -kOperand;
    if (!SkipBlanks(text, cursor)) return -kOperator;
    const ItemKind kind = kReadOperator(text, cursor);
    if (kind == kNone) return 0;
    context.stack.Push(ActionValue::Mark(kind));
  }
}

int EvalNumber(ActionTextContext& context, std::u16string_view text, size_t& cursor) {
  const size_t begin = cursor;
  bool point = false;
  for (; cursor < text.size(); ++cursor) {
    const char16_t c = text[cursor];
    if (core::IsDigit(c)) continue;
    if (c != u'.') {
      const std::u16string_view number = text.substr(begin, cursor - begin);
      context.stack.Push(point ? ActionValue::Float(ReadFloat(number))
                               : ActionValue::Int(ReadInt(number)));
      return 0;
    }
    if (point) return kBadForm;
    point = true;
  }
  return -kNumber;
}

// Pushes what stands between the quotation marks.
int PushString(ActionTextContext& context, std::u16string_view written, bool escaped) {
  if (escaped) {
    const auto kept = context.run.texts.Keep(core::UnescapeText(written));
    if (!kept) return kTooMuchText;
    written = *kept;
  }
  context.stack.Push(ActionValue::String(written));
  return 0;
}

// From the opening quotation mark on.
int EvalString(ActionTextContext& context, std::u16string_view text, size_t& cursor) {
  const size_t begin = ++cursor;
  const auto isAllowed = [](char16_t c) { return c >= u' '; };
  const core::QuotedScan scan = core::ScanQuoted(text, cursor, isAllowed);
  switch (scan.end) {
    case core::QuotedEnd::kClosed: {
      const std::u16string_view written = text.substr(begin, cursor - begin);
      ++cursor;
      return PushString(context, written, scan.escaped);
    }
    case core::QuotedEnd::kBadCharacter:
    case core::QuotedEnd::kInText:
      return -kQuoted;
    case core::QuotedEnd::kInEscape:
      return -kEscape;
    case core::QuotedEnd::kBadEscape:
    case core::QuotedEnd::kInHex:
      break;
  }
  return kBadForm;
}

// Kept on purpose: a sign is content whatever becomes of its factor, and a minus changes the fields
// of the item on top, whatever it is. A name that is looked up later is not negated by it: -x is x,
// and so is -(x).
int EvalSign(ActionTextContext& context, std::u16string_view text, size_t& cursor) {
  const FactState state = text[cursor] == u'+' ? kPlus : kMinus;
  ++cursor;
  if (cursor >= text.size()) return -state;
  const bool good = EvalFact(context, text, cursor) == 0;
  if (state == kMinus && good && context.stack.Count() > 0) {
    ActionValue& top = context.stack.FromTop(0);
    top.i = static_cast<int32_t>(0 - static_cast<uint32_t>(top.i));  // wraps
    top.f = -top.f;
  }
  return 0;
}

int EvalParen(ActionTextContext& context, std::u16string_view text, size_t& cursor) {
  context.stack.Push(ActionValue::Mark(kOpenParen));
  ++cursor;
  if (cursor >= text.size() || EvalExpr(context, text, cursor) != 0) return -kOpen;
  if (!SkipBlanks(text, cursor) || text[cursor] != u')') return -kClose;
  CloseParen(context);
  ++cursor;
  return 0;
}

int EvalName(ActionTextContext& context, std::u16string_view text, size_t& cursor) {
  const size_t begin = cursor;
  while (cursor < text.size() && core::IsIdentifierCharacter(text[cursor])) ++cursor;
  if (cursor >= text.size()) return -kName;
  const std::u16string_view name = text.substr(begin, cursor - begin);
  const int number = IsFunc(name);
  if (number > 0) return EvalFunc(context, text, cursor, number) == 0 ? 0 : -kName;
  context.stack.Push(ActionValue::Identifier(name));
  return 0;
}

}  // namespace

int EvalExpr(ActionTextContext& context, std::u16string_view text, size_t& cursor) {
  return EvalLevel<EvalLogiExpr, ReadAssignment, ReduceAssign>(context, text, cursor);
}

int EvalLogiExpr(ActionTextContext& context, std::u16string_view text, size_t& cursor) {
  return EvalLevel<EvalSimpleExpr, ReadComparison, ReduceCompare>(context, text, cursor);
}

int EvalSimpleExpr(ActionTextContext& context, std::u16string_view text, size_t& cursor) {
  return EvalLevel<EvalTerm, ReadAddSub, ReduceAddSub>(context, text, cursor);
}

int EvalTerm(ActionTextContext& context, std::u16string_view text, size_t& cursor) {
  return EvalLevel<EvalFact, ReadMulDiv, ReduceMulDiv>(context, text, cursor);
}

int EvalFact(ActionTextContext& context, std::u16string_view text, size_t& cursor) {
  const Nesting nesting(context.run);
  if (nesting.TooDeep() || !SkipBlanks(text, cursor)) return -kFactor;
  const char16_t c = text[cursor];
  if (core::IsDigit(c)) return EvalNumber(context, text, cursor);
  if (c == u'"') return EvalString(context, text, cursor);
  if (c == u'+' || c == u'-') return EvalSign(context, text, cursor);
  if (c == u'(') return EvalParen(context, text, cursor);
  if (core::IsIdentifierStart(c)) return EvalName(context, text, cursor);
  return -kFactor;
}

int EvalFunc(ActionTextContext& context, std::u16string_view text, size_t& cursor, int number) {
  FuncState state = kOpenArguments;
  size_t count = 0;
  while (SkipBlanks(text, cursor)) {
    const char16_t c = text[cursor];
    switch (state) {
      case kOpenArguments:
        if (c != u'(') return -state;
        ++cursor;
        state = kArgument;
        break;
      case kAfterArgument:
        if (c != u',' && c != u')') return -state;
        if (c == u',') {
          ++cursor;
          state = kArgument;
          break;
        }
        [[fallthrough]];
      case kArgument:  // a ")" may follow a ","
        if (c == u')') {
          ++cursor;
          return CallBuiltin(context, number, count) == kTooMuchText ? -state : 0;
        }
        if (EvalFact(context, text, cursor) != 0) return -state;
        ++count;
        state = kAfterArgument;
        break;
    }
  }
  return -state;
}

}  // namespace actiontext
