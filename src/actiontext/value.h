// What lies on the stack of the action text: a value, a name that has not been looked up yet, an
// operator or a mark. Operators are ordinary items: left, operator, right lie on the stack until a
// reduction takes them off.
#pragma once

#include <cstdint>
#include <string_view>

namespace actiontext {

enum ItemKind : uint32_t {
  kNone = 0,
  kInt = 1,
  kFloat = 2,
  kString = 11,
  kIdentifier = 21,
  kAssign = 1001,
  kAdd,
  kSubtract,
  kMultiply,
  kDivide,
  kEqual,
  kNotEqual,
  kLess,
  kLessOrEqual,
  kGreater,
  kGreaterOrEqual,
  kOpenParen = 1101,  // keeps a reduction from reaching across
};

// Texts are views that live as long as the run does (see run.h), so an item is copied freely.
struct ActionValue {
  ItemKind type = kNone;
  int32_t i = 0;
  double f = 0.0;
  std::u16string_view s;  // a string; the name of an identifier

  static ActionValue Int(int32_t value) { return {kInt, value, 0.0, {}}; }
  static ActionValue Float(double value) { return {kFloat, 0, value, {}}; }
  static ActionValue String(std::u16string_view text) { return {kString, 0, 0.0, text}; }
  static ActionValue Identifier(std::u16string_view name) { return {kIdentifier, 0, 0.0, name}; }
  static ActionValue Mark(ItemKind kind) { return {kind, 0, 0.0, {}}; }

  bool IsValue() const { return type == kInt || type == kFloat || type == kString; }
};

}  // namespace actiontext
