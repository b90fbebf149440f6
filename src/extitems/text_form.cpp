// The reader is a state machine over the fields of items. The number of a state, negated, is the
// code of a fault in it; those of a quoted value are numbered too.
#include "extitems/text_form.h"

#include "core/characters.h"
#include "core/quoted_text.h"
#include "core/text.h"
#include "extitems/checks.h"

namespace extitems {
namespace {

enum FieldState {
  kBeforeName = 100,
  kName = 110,
  kAfterName = 120,
  kBeforeLabel = 200,
  kLabel = 210,
  kAfterLabel = 220,
  kBeforeType = 300,
  kTypeName = 310,
  kAfterType = 320,
  kValue = 330,
  kAfterValue = 10100
};

enum ValueState { kBeforeQuote = 600, kQuoted = 610, kEscape = 620, kHex = 630 };

constexpr int kValueRead = 10100;
constexpr int kValueRefused = -1;
// The cursor ends on the closing quotation mark, on the character that was refused, or at the end
// of the text. kValueRead, a negative state, or the state in which the text ended.
int ScanQuotedValue(std::u16string_view text, size_t& cursor, std::u16string_view& value) {
  while (cursor < text.size() && core::IsBlank(text[cursor])) ++cursor;
  if (cursor == text.size()) return kBeforeQuote;
  if (text[cursor] != u'"') return -kBeforeQuote;
  const size_t begin = ++cursor;
  switch (core::ScanQuoted(text, cursor, core::IsValueCharacter).end) {
    case core::QuotedEnd::kClosed:
      value = text.substr(begin, cursor - begin);
      return kValueRead;
    case core::QuotedEnd::kBadCharacter:
      return -kQuoted;
    case core::QuotedEnd::kBadEscape:
      return -kEscape;
    case core::QuotedEnd::kInText:
      return kQuoted;
    case core::QuotedEnd::kInEscape:
      return kEscape;
    case core::QuotedEnd::kInHex:
      break;
  }
  return kHex;
}

// The text up to the next ":", without the blanks round it. Kept on purpose: at the end of the text
// the ":" may be missing.
std::u16string_view CutBareValue(std::u16string_view text, size_t& cursor) {
  size_t end = text.find(u':', cursor);
  if (end == std::u16string_view::npos) end = text.size();
  size_t begin = cursor;
  while (begin < end && core::IsBlank(text[begin])) ++begin;
  while (end > begin && core::IsBlank(text[end - 1])) --end;
  cursor = end - 1;
  return text.substr(begin, end - begin);
}

bool HasForm(ItemType type, std::u16string_view value) {
  size_t position = 0;
  return CheckItemValue(kTypeNames[static_cast<size_t>(type)], value, position) == 0;
}

// Reads the value that begins at the cursor. kValueRead with the cursor on the value's last
// character (a quotation mark, if it is quoted), or another code with the cursor where it stopped.
int ParseValue(ItemType type, std::u16string_view text, size_t& cursor,
               std::u16string_view& value) {
  if (type == kUnknownType) return kValueRefused;
  if (!IsQuotedType(type)) {
    value = CutBareValue(text, cursor);
    return HasForm(type, value) ? kValueRead : kValueRefused;
  }
  const int result = ScanQuotedValue(text, cursor, value);
  if (result != kValueRead || type == kString || type == kMultiLineString) return result;
  const bool escaped = value.find(u'\\') != std::u16string_view::npos;
  const bool good = escaped ? HasForm(type, core::UnescapeText(value)) : HasForm(type, value);
  return good ? kValueRead : kValueRefused;
}

}  // namespace

ExtItemReader::ExtItemReader(std::u16string_view text) : state_(kBeforeName), text_(text) {}

bool ExtItemReader::Next(ExtItemView& item) {
  size_t begin = cursor_;
  const auto cut = [&] { return text_.substr(begin, cursor_ - begin); };
  for (; cursor_ < text_.size(); ++cursor_) {
    const char16_t c = text_[cursor_];
    switch (state_) {
      case kBeforeName:
        if (core::IsBlank(c)) break;
        if (!core::IsLetter(c)) return End(-state_);
        begin = cursor_;
        state_ = kName;
        break;
      case kName:
        if (core::IsItemNameCharacter(c)) break;
        if (!core::IsBlank(c) && c != u':') return End(-state_);
        item.name = cut();
        state_ = c == u':' ? kBeforeLabel : kAfterName;
        break;
      case kAfterName:
        if (core::IsBlank(c)) break;
        if (c != u':') return End(-state_);
        state_ = kBeforeLabel;
        break;
      case kBeforeLabel:
        if (core::IsBlank(c)) break;
        if (!core::IsLabelCharacter(c)) return End(-state_);
        begin = cursor_;
        state_ = kLabel;
        break;
      case kLabel:
        if (core::IsLabelCharacter(c)) break;
        if (!core::IsBlank(c) && c != u':') return End(-state_);
        item.label = cut();
        state_ = c == u':' ? kBeforeType : kAfterLabel;
        break;
      case kAfterLabel:
        if (core::IsBlank(c)) break;
        if (c != u':') return End(-state_);
        state_ = kBeforeType;
        break;
      case kBeforeType:
        if (core::IsBlank(c)) break;
        if (!core::IsLetter(c)) return End(-state_);
        begin = cursor_;
        state_ = kTypeName;
        break;
      case kTypeName:  // any other character belongs to the type, which then is an unknown one
        if (!core::IsBlank(c) && c != u':') break;
        item.type = ExtItemType(cut());
        state_ = c == u':' ? kValue : kAfterType;
        break;
      case kAfterType:  // kept on purpose: other characters are passed over
        if (c == u':') state_ = kValue;
        break;
      case kValue:
        state_ = kAfterValue;
        if (ParseValue(item.type, text_, cursor_, item.value) != kValueRead) break;
        ++cursor_;
        return true;
      case kAfterValue:
        if (core::IsBlank(c)) break;
        if (c != u':') return End(kBadValueEnd);
        state_ = kBeforeName;
        break;
    }
  }
  if (state_ == kBeforeName) return End(0);
  return End(state_ <= kAfterType ? -state_ : kMissingLastColon);
}

bool ExtItemReader::End(int result) {
  result_ = result;
  return false;
}

int ParseExtItems(ExtItemList& list, std::u16string_view text) {
  list.clear();
  ExtItemReader reader(text);
  ExtItemView view;
  while (reader.Next(view)) {
    AddExtItem(list, {std::u16string(view.name), std::u16string(view.label),
                      std::u16string(kTypeNames[static_cast<size_t>(view.type)]),
                      core::UnescapeText(view.value)});
  }
  return reader.Result();
}

std::u16string WriteExtItems(const ExtItemList& list) {
  std::u16string out;
  for (const ExtItem& item : list) {
    out += item.name + u':' + item.label + u':' + item.type + u':';
    const ItemType type = ExtItemType(item.type);
    if (item.value && IsQuotedType(type)) {
      out += u'"' + core::EscapeText(*item.value) + u'"';
    } else if (item.value && type != kUnknownType) {
      out += *item.value;
    }
    out += u':';
  }
  return out;
}

}  // namespace extitems
