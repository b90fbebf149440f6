// The kind of the left operand decides: the right one is converted to it.
#include "actiontext/reductions.h"

#include <algorithm>
#include <cmath>
#include <optional>

#include "actiontext/number_text.h"

namespace actiontext {
namespace {

constexpr int kTooFewItems = -101;
constexpr int kNotPending = -102;
constexpr int kNoOperand = -102;
constexpr int kComparesNothing = -101;

constexpr int kTrue = -1;
constexpr int kFalse = 0;

constexpr std::u16string_view kStringFactor = u"(mul/div can't in string.)";
constexpr std::u16string_view kZeroDivisor = u"(can't 0 div.)";
constexpr std::u16string_view kStringMinus = u"(can't operator in add/sub sequence.)";

struct Pending {
  ActionValue left;
  ItemKind operation = kNone;
  ActionValue right;
};

// Takes the topmost three items off if the middle one is an operator from `first` to `last`.
int TakePending(ValueStack& stack, ItemKind first, ItemKind last, Pending& pending) {
  if (stack.Count() < 3) return kTooFewItems;
  pending.operation = stack.FromTop(1).type;
  if (pending.operation < first || pending.operation > last) return kNotPending;
  pending.left = stack.FromTop(2);
  pending.right = stack.FromTop(0);
  stack.PopMany(3);
  return 0;
}

int ResolveBoth(ActionTextRun& run, Pending& pending) {
  if (run.ResolveValue(pending.left) != 0 || run.ResolveValue(pending.right) != 0) {
    return kNoOperand;
  }
  return 0;
}

// A text on the right is read as a number, or compared as far as there is one on the left.
size_t CharactersRead(const Pending& pending) {
  if (pending.right.type != kString) return 0;
  const size_t length = pending.right.s.size();
  return pending.left.type == kString ? std::min(length, pending.left.s.size()) : length;
}

bool AreValues(const Pending& pending) {
  return pending.left.IsValue() && pending.right.IsValue();
}

int32_t AsInt(const ActionValue& value) {
  if (value.type == kInt) return value.i;
  return value.type == kFloat ? TruncateToInt(value.f) : ReadInt(value.s);
}

double AsFloat(const ActionValue& value) {
  if (value.type == kFloat) return value.f;
  return value.type == kInt ? value.i : ReadFloat(value.s);
}

ActionValue MulDivInts(ItemKind operation, int32_t left, int32_t right) {
  if (operation == kDivide && right == 0) return ActionValue::String(kZeroDivisor);
  const int64_t wide = operation == kMultiply ? int64_t{left} * right : int64_t{left} / right;
  return ActionValue::Int(static_cast<int32_t>(wide));  // wraps
}

// `asInt`: the result is truncated.
ActionValue MulDivFloats(ItemKind operation, double left, double right, bool asInt) {
  if (operation == kDivide && right == 0.0) return ActionValue::String(kZeroDivisor);
  const double result = operation == kMultiply ? left * right : left / right;
  return asInt ? ActionValue::Int(TruncateToInt(result)) : ActionValue::Float(result);
}

ActionValue MulDiv(ItemKind operation, const ActionValue& left, const ActionValue& right) {
  if (left.type == kString) return ActionValue::String(kStringFactor);
  if (left.type == kInt && right.type != kFloat) {
    return MulDivInts(operation, left.i, AsInt(right));
  }
  return MulDivFloats(operation, AsFloat(left), AsFloat(right), left.type == kInt);
}

ActionValue AddSubInts(ItemKind operation, int32_t left, int32_t right) {
  const int64_t wide = operation == kAdd ? int64_t{left} + right : int64_t{left} - right;
  return ActionValue::Int(static_cast<int32_t>(wide));  // wraps
}

ActionValue AddSubFloats(ItemKind operation, double left, double right, bool asInt) {
  const double result = operation == kAdd ? left + right : left - right;
  return asInt ? ActionValue::Int(TruncateToInt(result)) : ActionValue::Float(result);
}

// Kept on purpose: six decimals here, six digits where a float ends a stretch.
std::optional<std::u16string_view> JoinToString(TextArena& texts, std::u16string_view left,
                                                const ActionValue& right) {
  if (right.type == kString) return texts.Join(left, right.s);
  if (right.type == kInt) return texts.Join(left, NumberText(right.i).View());
  return texts.Join(left, NumberText(right.f, NumberText::Form::kSixDecimals).View());
}

template <typename T>
bool Holds(ItemKind operation, const T& left, const T& right) {
  switch (operation) {
    case kEqual:
      return left == right;
    case kNotEqual:
      return left != right;
    case kLess:
      return left < right;
    case kLessOrEqual:
      return left <= right;
    case kGreater:
      return left > right;
    default:
      return left >= right;
  }
}

bool Compare(ItemKind operation, const ActionValue& left, const ActionValue& right) {
  if (left.type == kInt) return Holds(operation, left.i, AsInt(right));
  if (left.type == kFloat) return Holds(operation, left.f, AsFloat(right));
  // Kept on purpose: a number on the right of a string is not written out, it counts as empty.
  return Holds(operation, left.s, right.type == kString ? right.s : std::u16string_view());
}

}  // namespace

int ReduceMulDiv(ActionTextContext& context) {
  Pending pending;
  if (const int rc = TakePending(context.stack, kMultiply, kDivide, pending); rc != 0) return rc;
  if (ResolveBoth(context.run, pending) != 0 || !AreValues(pending)) return kNoOperand;
  if (!context.run.texts.Spend(CharactersRead(pending))) return kTooMuchText;
  context.stack.Push(MulDiv(pending.operation, pending.left, pending.right));
  return 0;
}

int ReduceAddSub(ActionTextContext& context) {
  Pending pending;
  if (const int rc = TakePending(context.stack, kAdd, kSubtract, pending); rc != 0) return rc;
  if (ResolveBoth(context.run, pending) != 0 || !AreValues(pending)) return kNoOperand;
  const auto& [left, operation, right] = pending;
  if (left.type != kString && !context.run.texts.Spend(CharactersRead(pending))) {
    return kTooMuchText;
  }
  if (left.type == kInt && right.type != kFloat) {
    context.stack.Push(AddSubInts(operation, left.i, AsInt(right)));
  } else if (left.type != kString) {
    const bool asInt = left.type == kInt;
    context.stack.Push(AddSubFloats(operation, AsFloat(left), AsFloat(right), asInt));
  } else if (operation == kSubtract) {
    context.stack.Push(ActionValue::String(kStringMinus));
  } else {
    const auto sum = JoinToString(context.run.texts, left.s, right);
    if (!sum) return kTooMuchText;
    context.stack.Push(ActionValue::String(*sum));
  }
  return 0;
}

int ReduceCompare(ActionTextContext& context) {
  Pending pending;
  const int rc = TakePending(context.stack, kEqual, kGreaterOrEqual, pending);
  if (rc != 0) return rc;
  if (ResolveBoth(context.run, pending) != 0) {
    context.stack.Push(ActionValue::Int(kFalse));
    return kComparesNothing;
  }
  if (!AreValues(pending)) return kNoOperand;
  if (!context.run.texts.Spend(CharactersRead(pending))) return kTooMuchText;
  const bool holds = Compare(pending.operation, pending.left, pending.right);
  context.stack.Push(ActionValue::Int(holds ? kTrue : kFalse));
  return 0;
}

int ReduceAssign(ActionTextContext& context) {
  ValueStack& stack = context.stack;
  if (stack.Count() < 3) return kTooFewItems;
  if (stack.FromTop(2).type != kIdentifier) return kNotPending;
  Pending pending;
  if (const int rc = TakePending(stack, kAssign, kAssign, pending); rc != 0) return rc;
  if (context.run.ResolveValue(pending.right) != 0) return kNoOperand;
  if (!pending.right.IsValue()) return kNoOperand;
  stack.Push(pending.right);
  context.run.SetVariable(pending.left.s, pending.right);
  return 0;
}

int CloseParen(ActionTextContext& context) {
  ValueStack& stack = context.stack;
  if (stack.Count() < 2) return kTooFewItems;
  if (stack.FromTop(1).type != kOpenParen) return kNotPending;
  stack.FromTop(1) = stack.FromTop(0);
  stack.PopMany(1);
  return 0;
}

}  // namespace actiontext
