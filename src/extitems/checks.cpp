// A float is read by a table of states; the other forms are rows of parts, each of which moves the
// position as far as it reads.
#include "extitems/checks.h"

#include <algorithm>
#include <iterator>

#include "core/characters.h"

namespace extitems {
namespace {

constexpr int kBad = -1;

bool TakeBlanks(std::u16string_view text, size_t& position) {
  const size_t begin = position;
  while (position < text.size() && core::IsBlank(text[position])) ++position;
  return position > begin;
}

bool TakeDigits(std::u16string_view text, size_t& position) {
  const size_t begin = position;
  while (position < text.size() && core::IsDigit(text[position])) ++position;
  return position > begin;
}

using IsSeparator = bool (*)(char16_t);

bool IsDateSeparator(char16_t c) {
  return c == u'/' || c == u'.';
}

// Kept on purpose: in a date and time, before the day, everything up to "." separates.
bool IsDaySeparator(char16_t c) {
  return c == u'/' || c <= u'.';
}

bool IsTimeSeparator(char16_t c) {
  return c == u':';
}

// A separator and the blanks round it.
bool TakeSeparator(std::u16string_view text, size_t& position, IsSeparator isSeparator) {
  TakeBlanks(text, position);
  if (position == text.size() || !isSeparator(text[position])) return false;
  ++position;
  TakeBlanks(text, position);
  return true;
}

bool TakeThreeNumbers(std::u16string_view text, size_t& position, IsSeparator first,
                      IsSeparator second) {
  return TakeDigits(text, position) && TakeSeparator(text, position, first) &&
         TakeDigits(text, position) && TakeSeparator(text, position, second) &&
         TakeDigits(text, position);
}

int Whole(bool good, std::u16string_view text, size_t position) {
  return good && position == text.size() ? 0 : kBad;
}

enum FloatState {
  kStart = 500,
  kAfterSign = 510,
  kInteger = 520,
  kFraction = 530,
  kExponentSign = 540,
  kExponentBegin = 550,
  kExponent = 560
};

enum class FloatClass { kSign, kBlank, kDigit, kPoint, kExponentMark, kOther };

// Kept on purpose: the exponent's letter is small, and its sign must be there.
constexpr struct {
  FloatState state;
  FloatClass reads;
  FloatState next;
} kFloatRows[] = {
    {kStart, FloatClass::kSign, kAfterSign},
    {kStart, FloatClass::kDigit, kInteger},
    {kAfterSign, FloatClass::kBlank, kAfterSign},
    {kAfterSign, FloatClass::kDigit, kInteger},
    {kAfterSign, FloatClass::kPoint, kFraction},
    {kInteger, FloatClass::kDigit, kInteger},
    {kInteger, FloatClass::kPoint, kFraction},
    {kInteger, FloatClass::kExponentMark, kExponentSign},
    {kFraction, FloatClass::kDigit, kFraction},
    {kFraction, FloatClass::kExponentMark, kExponentSign},
    {kExponentSign, FloatClass::kSign, kExponentBegin},
    {kExponentBegin, FloatClass::kDigit, kExponent},
    {kExponent, FloatClass::kDigit, kExponent},
};

FloatClass FloatClassOf(char16_t c) {
  if (core::IsDigit(c)) return FloatClass::kDigit;
  if (core::IsBlank(c)) return FloatClass::kBlank;
  if (c == u'+' || c == u'-') return FloatClass::kSign;
  if (c == u'.') return FloatClass::kPoint;
  return c == u'e' ? FloatClass::kExponentMark : FloatClass::kOther;
}

bool IsRefusedInPath(char16_t c) {
  return std::u16string_view(u"\"*/<>?|").find(c) != std::u16string_view::npos;
}

}  // namespace

int CheckItemName(std::u16string_view text, size_t& position) {
  position = 0;
  if (text.empty() || !core::IsLetter(text.front())) return kBad;
  while (position < text.size() && core::IsItemNameCharacter(text[position])) ++position;
  return position == text.size() ? 0 : kBad;
}

int CheckItemLabel(std::u16string_view text, size_t& position) {
  position = 0;
  while (position < text.size() && core::IsLabelCharacter(text[position])) ++position;
  return !text.empty() && position == text.size() ? 0 : kBad;
}

int CheckIntText(std::u16string_view text, size_t& position) {
  position = 0;
  if (text.starts_with(u'+') || text.starts_with(u'-')) {
    ++position;
    TakeBlanks(text, position);
  }
  const bool good = TakeDigits(text, position);
  return Whole(good, text, position);
}

int CheckFloatText(std::u16string_view text, size_t& position) {
  FloatState state = kStart;
  for (position = 0; position < text.size(); ++position) {
    const FloatClass read = FloatClassOf(text[position]);
    const auto row = std::find_if(std::begin(kFloatRows), std::end(kFloatRows), [&](const auto& r) {
      return r.state == state && r.reads == read;
    });
    if (row == std::end(kFloatRows)) return kBad;
    state = row->next;
  }
  return state == kInteger || state == kFraction || state == kExponent ? 0 : kBad;
}

int CheckDateText(std::u16string_view text, size_t& position) {
  position = 0;
  const bool good = TakeThreeNumbers(text, position, IsDateSeparator, IsDateSeparator);
  return Whole(good, text, position);
}

int CheckTimeText(std::u16string_view text, size_t& position) {
  position = 0;
  const bool good = TakeThreeNumbers(text, position, IsTimeSeparator, IsTimeSeparator);
  return Whole(good, text, position);
}

int CheckDateTimeText(std::u16string_view text, size_t& position) {
  position = 0;
  const bool good = TakeThreeNumbers(text, position, IsDateSeparator, IsDaySeparator) &&
                    TakeBlanks(text, position) &&
                    TakeThreeNumbers(text, position, IsTimeSeparator, IsTimeSeparator);
  return Whole(good, text, position);
}

int CheckFileText(std::u16string_view text, size_t& position) {
  position = 0;
  if (!text.starts_with(u'\\')) return kBad;
  while (position < text.size() && !IsRefusedInPath(text[position])) ++position;
  return position == text.size() && !core::IsBlank(text.back()) ? 0 : kBad;
}

int CheckItemValue(std::u16string_view type, std::u16string_view value, size_t& position) {
  switch (ExtItemType(type)) {
    case kInt:
      return CheckIntText(value, position) == 0 ? 0 : kBadInt;
    case kFloat:
      return CheckFloatText(value, position) == 0 ? 0 : kBadFloat;
    case kDate:
      return CheckDateText(value, position) == 0 ? 0 : kBadDate;
    case kTime:
      return CheckTimeText(value, position) == 0 ? 0 : kBadTime;
    case kDateTime:
      return CheckDateTimeText(value, position) == 0 ? 0 : kBadDateTime;
    case kFile:
      return CheckFileText(value, position) == 0 ? 0 : kBadFile;
    case kString:
    case kMultiLineString:
      position = value.size();
      return 0;
    default:
      position = 0;
      return kBadType;
  }
}

int CheckExtItem(const ExtItem& item, size_t& position) {
  if (CheckItemName(item.name, position) != 0) return kBadName;
  if (CheckItemLabel(item.label, position) != 0) return kBadLabel;
  return CheckItemValue(item.type, item.value ? std::u16string_view(*item.value) : u"", position);
}

}  // namespace extitems
