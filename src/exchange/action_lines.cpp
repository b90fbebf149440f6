#include "exchange/action_lines.h"

#include <algorithm>

#include "core/date_time.h"
#include "core/text.h"

namespace exchange {
namespace {

constexpr size_t kDateLength = 10;
constexpr size_t kTimeBegin = 11;
constexpr size_t kShortTime = 5;
constexpr size_t kLongTime = 8;

// Joins fields by the separator.
class Line {
 public:
  void Add(std::u16string_view field) {
    if (begun_) text_ += kExchangeSeparator;
    begun_ = true;
    text_ += field;
  }
  void AddDateAndTime(std::u16string_view moment, size_t timeLength) {
    Add(moment.substr(0, kDateLength));
    Add(moment.substr(std::min(kTimeBegin, moment.size()), timeLength));
  }
  std::u16string Take() { return std::move(text_); }

 private:
  std::u16string text_;
  bool begun_ = false;
};

// What the first two forms have in common.
void AddTimesAndTexts(Line& line, const store::Action& action, size_t timeLength) {
  line.AddDateAndTime(TextOf(action, store::kStaDateTime), timeLength);
  line.AddDateAndTime(TextOf(action, store::kEndDateTime), timeLength);
  line.Add(TextOf(action, store::kPlace));
  line.Add(TextOf(action, store::kCategory1));
  line.Add(TextOf(action, store::kCategory2));
  line.Add(core::RemoveLineBreaks(TextOf(action, store::kMemo)));
}

}  // namespace

std::u16string Ver1Line(const store::Action& action) {
  Line line;
  AddTimesAndTexts(line, action, kShortTime);
  return line.Take();
}

std::u16string Ver2Line(const store::Action& action) {
  Line line;
  line.Add(TextOf(action, store::kActId));
  AddTimesAndTexts(line, action, kLongTime);
  return line.Take();
}

std::u16string Ver3Line(const store::Action& action) {
  Line line;
  for (int i = 0; i < store::kActionColumnCount; ++i) {
    const auto column = static_cast<store::ActionColumn>(i);
    const std::u16string_view text = TextOf(action, column);
    line.Add(column == store::kMemo ? u'"' + core::EscapeText(text) + u'"' : std::u16string(text));
  }
  return line.Take();
}

}  // namespace exchange
