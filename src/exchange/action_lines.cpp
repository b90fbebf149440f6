#include "exchange/action_lines.h"

#include <algorithm>
#include <iterator>

#include "core/date_time.h"
#include "core/encoding.h"
#include "core/text.h"

namespace exchange {
namespace {

using core::Encoding;

constexpr std::string_view kLineEnd = "\r\n";
// The only character of which the code page makes one that means something in an escape form.
constexpr char16_t kYen = 0xA5;

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
  void AddDateAndTime(std::u16string_view text, size_t timeLength) {
    const core::MomentText moment = core::SplitMoment(text);
    Add(moment.date);
    Add(moment.time.substr(0, timeLength));
  }
  std::u16string Take() { return std::move(text_); }

 private:
  std::u16string text_;
  bool begun_ = false;
};

// What the first two forms have in common. Kept on purpose: nothing but the memo loses its line
// breaks, and nothing its tabs.
void AddTimesAndTexts(Line& line, const store::Action& action, size_t timeLength) {
  line.AddDateAndTime(TextOf(action, store::kStaDateTime), timeLength);
  line.AddDateAndTime(TextOf(action, store::kEndDateTime), timeLength);
  line.Add(TextOf(action, store::kPlace));
  line.Add(TextOf(action, store::kCategory1));
  line.Add(TextOf(action, store::kCategory2));
  line.Add(core::RemoveLineBreaks(TextOf(action, store::kMemo)));
}

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

std::u16string Ver3Header() {
  Line line;
  for (int i = 0; i < store::kActionColumnCount; ++i) {
    line.Add(TitleOf(static_cast<store::ActionColumn>(i)));
  }
  return line.Take();
}

// In the order of the versions.
constexpr struct {
  std::u16string (*toLine)(const store::Action&);
  Encoding encoding;
} kForms[] = {{Ver1Line, Encoding::kCodePage},
              {Ver2Line, Encoding::kCodePage},
              {Ver3Line, Encoding::kCodePage},
              {Ver3Line, Encoding::kUtf8}};
static_assert(std::size(kForms) == std::size(kFieldCounts));

bool StaysOneLine(std::u16string_view line, int fields) {
  const auto breaks = [](char16_t c) { return c == u'\t' || c == u'\r' || c == u'\n'; };
  return std::count_if(line.begin(), line.end(), breaks) == fields - 1;
}

// The Action with the escaped columns such as the code page will give them back: the items stand in
// their escape form already.
store::Action GivenBack(store::Action action) {
  std::string bytes;
  if (auto& memo = action[store::kMemo]) {
    core::Encode(*memo, Encoding::kCodePage, bytes);
    core::Decode(bytes, Encoding::kCodePage, *memo);
  }
  if (auto& items = action[store::kExtItems]) {
    for (size_t i = 0; (i = items->find(kYen, i)) != std::u16string::npos; i += 2) {
      items->replace(i, 1, u"\\\\");
    }
  }
  return action;
}

}  // namespace

std::string HeaderBytes(int version) {
  if (version < kVer3) return {};
  std::u16string header = Ver3Header();
  if (version == kVer3Utf8) header.insert(0, 1, core::kByteOrderMark);
  std::string bytes;
  core::Encode(header, kForms[version - kVer1].encoding, bytes);
  return bytes.append(kLineEnd);
}

bool LineBytes(const store::Action& action, int version, std::string& bytes) {
  const auto& form = kForms[version - kVer1];
  const std::u16string line = form.toLine(action);
  const bool hasAll = core::Encode(line, form.encoding, bytes);
  if (!hasAll) core::Encode(form.toLine(GivenBack(action)), form.encoding, bytes);
  bytes += kLineEnd;
  return hasAll && StaysOneLine(line, kFieldCounts[version - kVer1]);
}

}  // namespace exchange
