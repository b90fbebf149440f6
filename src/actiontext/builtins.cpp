// Arguments are looked up but not converted: Length(123) gives nothing, and so does a position "1".
#include "actiontext/builtins.h"

#include <algorithm>
#include <array>
#include <memory_resource>
#include <optional>
#include <vector>

#include "actiontext/number_text.h"
#include "core/date_time.h"
#include "core/text.h"
#include "platform/host.h"

namespace actiontext {
namespace {

constexpr int kWrongCount = -101;
constexpr int kWrongKind = -102;
constexpr int kWrongValue = -103;
constexpr int kNoSuchFunction = -201;

enum FunctionNumber { kLocalTime = 8, kRand = 9, kLength = 12, kSubstring = 13, kIndexOf = 14 };

constexpr size_t kMostArguments = 3;
using Arguments = std::array<ActionValue, kMostArguments>;

struct Function {
  std::u16string_view name;
  FunctionNumber number;
  size_t fewest;  // arguments
  size_t most;
};

constexpr Function kFunctions[] = {
    {u"IndexOf", kIndexOf, 2, 3},     {u"Length", kLength, 1, 1},
    {u"LocalTime", kLocalTime, 0, 0}, {u"Rand", kRand, 1, 1},
    {u"Substring", kSubstring, 2, 3},
};
static_assert(std::is_sorted(std::begin(kFunctions), std::end(kFunctions),
                             [](const auto& a, const auto& b) { return a.name < b.name; }));

int LocalTime(ActionTextContext& context) {
  const auto kept = context.run.texts.Keep(core::MomentOf(platform::host().Now()));
  if (!kept) return kTooMuchText;
  context.stack.Push(ActionValue::String(*kept));
  return 0;
}

int Rand(ActionTextContext& context, const ActionValue& limit) {
  if (limit.type == kString) return kWrongKind;
  if (limit.type != kInt) return kWrongValue;
  const double draw = platform::host().Draw() * 3.0517578125e-5 * limit.i;
  context.stack.Push(ActionValue::Int(TruncateToInt(draw)));
  return 0;
}

int Length(ActionTextContext& context, const ActionValue& text) {
  if (text.type != kString) return kWrongKind;
  context.stack.Push(ActionValue::Int(static_cast<int32_t>(text.s.size())));
  return 0;
}

int Substring(ActionTextContext& context, const Arguments& arguments, size_t count) {
  const auto& [text, start, length] = arguments;
  if (text.type != kString || start.type != kInt) return kWrongKind;
  if (count == 3 && length.type != kInt) return kWrongKind;
  if (start.i < 0 || static_cast<size_t>(start.i) >= text.s.size()) return kWrongValue;
  const bool toTheEnd = count < 3 || length.i < 0;
  const size_t wanted = toTheEnd ? text.s.size() : static_cast<size_t>(length.i);
  context.stack.Push(ActionValue::String(text.s.substr(static_cast<size_t>(start.i), wanted)));
  return 0;
}

// The first place of `wanted` in `text`, in linear time (Knuth, Morris, Pratt): a memo can build a
// pair of texts with which a plain search would never end.
int32_t FindIn(std::u16string_view text, std::u16string_view wanted) {
  std::array<uint32_t, 64> fewBorders;
  std::pmr::monotonic_buffer_resource memory(fewBorders.data(), sizeof fewBorders);
  std::pmr::vector<uint32_t> border(wanted.size(), 0, &memory);
  uint32_t matched = 0;
  for (size_t i = 1; i < wanted.size(); ++i) {
    while (matched > 0 && wanted[i] != wanted[matched]) matched = border[matched - 1];
    if (wanted[i] == wanted[matched]) ++matched;
    border[i] = matched;
  }
  matched = 0;
  for (size_t i = 0; i < text.size(); ++i) {
    while (matched > 0 && text[i] != wanted[matched]) matched = border[matched - 1];
    if (text[i] == wanted[matched]) ++matched;
    if (matched == wanted.size()) return static_cast<int32_t>(i + 1 - matched);
  }
  return -1;
}

int IndexOf(ActionTextContext& context, const Arguments& arguments, size_t count) {
  const auto& [text, wanted, from] = arguments;
  if (text.type != kString || wanted.type != kString) return kWrongKind;
  if (count == 3 && from.type != kInt) return kWrongKind;
  if (wanted.s.empty()) {
    context.stack.Push(ActionValue::Int(-1));
    return kWrongValue;
  }
  const int32_t begin = count == 3 ? from.i : 0;
  const bool outside = begin < 0 || static_cast<size_t>(begin) > text.s.size();
  const std::u16string_view searched =
      outside ? std::u16string_view() : text.s.substr(static_cast<size_t>(begin));
  int32_t place = -1;
  if (wanted.s.size() <= searched.size()) {
    if (!context.run.texts.Spend(wanted.s.size() + searched.size())) return kTooMuchText;
    place = FindIn(searched, wanted.s);
  }
  context.stack.Push(ActionValue::Int(place < 0 ? place : begin + place));
  return 0;
}

// From the last to the first. Where the stack runs dry an argument stays without a kind, which no
// function takes.
Arguments TakeArguments(ActionTextContext& context, size_t count) {
  Arguments arguments;
  for (size_t i = count; i > 0; --i) {
    context.stack.Pop(arguments[i - 1]);
    context.run.ResolveValue(arguments[i - 1]);
  }
  return arguments;
}

}  // namespace

int IsFunc(std::u16string_view name) {
  const size_t place =
      core::SortedSearch(std::size(kFunctions), core::SearchMode::kLowerBound,
                         [&](size_t i) { return name.compare(kFunctions[i].name); });
  if (place == std::size(kFunctions) || kFunctions[place].name != name) return -1;
  return kFunctions[place].number;
}

int CallBuiltin(ActionTextContext& context, int number, size_t count) {
  const auto function = std::find_if(std::begin(kFunctions), std::end(kFunctions),
                                     [&](const Function& f) { return f.number == number; });
  if (function == std::end(kFunctions)) return kNoSuchFunction;
  if (count < function->fewest || count > function->most) {
    context.stack.PopMany(count);
    return kWrongCount;
  }
  const Arguments arguments = TakeArguments(context, count);
  switch (function->number) {
    case kLocalTime:
      return LocalTime(context);
    case kRand:
      return Rand(context, arguments[0]);
    case kLength:
      return Length(context, arguments[0]);
    case kSubstring:
      return Substring(context, arguments, count);
    default:
      return IndexOf(context, arguments, count);
  }
}

}  // namespace actiontext
