// A removed odd text stays where it is until most of them are gone: the others are known by their
// places.
#include "core/text_list.h"

#include <algorithm>
#include <utility>

namespace core {
namespace {

// Set in an id's number; a moment's is below it.
constexpr uint64_t kId = uint64_t{1} << 62;

// A digit stands where they have a 0.
constexpr std::u16string_view kIdForm = u"ID0000000000000000";
constexpr std::u16string_view kMomentForm = u"0000/00/00 00:00:00";

// kOddText for a text of another form.
uint64_t DigitsOf(std::u16string_view text, std::u16string_view form) {
  uint64_t digits = 0;
  for (size_t i = 0; i < form.size(); ++i) {
    if (form[i] == u'0') {
      const auto digit = static_cast<unsigned>(text[i] - u'0');
      if (digit > 9) return kOddText;
      digits = digits * 10 + digit;
    } else if (text[i] != form[i]) {
      return kOddText;
    }
  }
  return digits;
}

std::u16string TextOf(uint64_t digits, std::u16string_view form) {
  std::u16string text(form);
  for (size_t i = form.size(); i-- > 0;) {
    if (form[i] != u'0') continue;
    text[i] = static_cast<char16_t>(u'0' + digits % 10);
    digits /= 10;
  }
  return text;
}

std::u16string Unpacked(uint64_t number) {
  return (number & kId) != 0 ? TextOf(number & ~kId, kIdForm) : TextOf(number, kMomentForm);
}

}  // namespace

uint64_t PackText(std::u16string_view text) {
  if (text.size() == kMomentForm.size()) return DigitsOf(text, kMomentForm);
  if (text.size() != kIdForm.size()) return kOddText;
  const uint64_t digits = DigitsOf(text, kIdForm);
  return digits == kOddText ? kOddText : digits | kId;
}

TextList::TextList(NumberList packed, std::vector<std::u16string> odd)
    : numbers_(std::move(packed)), odd_(std::make_shared<Texts>(std::move(odd))) {}

std::span<const std::u16string> TextList::Odd() const {
  return odd_ ? std::span<const std::u16string>(*odd_) : std::span<const std::u16string>();
}

std::u16string TextList::At(size_t index, size_t most) const {
  if (index >= Count()) return {};
  const uint64_t number = numbers_.At(index);
  if (const std::u16string* odd = OddAt(number)) return odd->substr(0, most);
  std::u16string text = Unpacked(number);
  text.resize(std::min(text.size(), most));
  return text;
}

bool TextList::Holds(size_t index, std::u16string_view text) const {
  if (index >= Count()) return text.empty();
  const uint64_t number = numbers_.At(index);
  const std::u16string* odd = OddAt(number);
  return odd != nullptr ? *odd == text : number == PackText(text);
}

bool TextList::IsOnDay(size_t index, std::u16string_view day) const {
  constexpr std::u16string_view kDayForm = kMomentForm.substr(0, 10);
  constexpr uint64_t kTimes = 1'000'000;  // from 00:00:00 to 99:99:99
  const uint64_t packed = day.size() == kDayForm.size() ? DigitsOf(day, kDayForm) : kOddText;
  const uint64_t number = index < Count() ? numbers_.At(index) : kId;
  const bool areMoments = packed < kId && number < kId;
  return areMoments ? number / kTimes == packed : At(index, day.size()) == day;
}

int TextList::Compare(std::u16string_view text, size_t index) const {
  if (index >= Count()) return text.empty() ? 0 : 1;
  const uint64_t packed = PackText(text);
  const uint64_t other = numbers_.At(index);
  const bool areMoments = packed < kId && other < kId;
  if (areMoments) return packed < other ? -1 : packed > other ? 1 : 0;
  const std::u16string* odd = OddAt(other);
  return odd != nullptr ? text.compare(*odd) : text.compare(Unpacked(other));
}

void TextList::InsertAt(size_t index, std::u16string_view text) {
  numbers_.InsertAt(std::min(index, Count()), Keep(text));
}

void TextList::RemoveAt(size_t index) {
  if (index >= Count()) return;
  const bool isOdd = numbers_.At(index) >= kOddText;
  numbers_.RemoveAt(index);
  if (isOdd && ++unused_ > odd_->size() / 2) DropUnused();
}

// The number that it's kept as.
uint64_t TextList::Keep(std::u16string_view text) {
  const uint64_t packed = PackText(text);
  if (packed < kOddText) return packed;
  // Copies keep the texts that they share.
  if (!odd_ || odd_.use_count() > 1) odd_ = std::make_shared<Texts>(odd_ ? *odd_ : Texts());
  odd_->emplace_back(text);
  return kOddText + odd_->size() - 1;
}

const std::u16string* TextList::OddAt(uint64_t number) const {
  return number < kOddText ? nullptr : &(*odd_)[number - kOddText];
}

void TextList::DropUnused() {
  TextList packed;
  for (size_t i = 0; i < Count(); ++i) packed.Append(At(i));
  *this = std::move(packed);
}

}  // namespace core
