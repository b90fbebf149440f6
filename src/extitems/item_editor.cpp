#include "extitems/item_editor.h"

#include <algorithm>
#include <iterator>
#include <tuple>
#include <utility>

#include "core/characters.h"
#include "core/date_time.h"
#include "core/text.h"
#include "extitems/checks.h"
#include "extitems/text_form.h"
#include "platform/host.h"

namespace extitems {
namespace {

using platform::Icon;
using platform::ShowNotice;
using Text = std::u16string;

struct CheckedField {
  int code;
  std::u16string_view name;
};
constexpr CheckedField kCheckedFields[] = {
    {kBadName, u"名前"},     {kBadLabel, u"表示名称"},  {-3000, u"(予備)"},
    {kBadInt, u"値(int)"},   {kBadFloat, u"値(float)"}, {-6000, u"値(string)"},
    {kBadDate, u"値(date)"}, {kBadTime, u"値(time)"},   {kBadDateTime, u"値(datetime)"},
    {kBadFile, u"値(File)"}, {-11000, u"値(mlstring)"}, {kBadType, u"タイプ"},
};

Text Decimal(size_t number) {
  return core::ZeroPadded(static_cast<int>(number), 1);
}

void TellRefused(int code, size_t position) {
  const auto field = std::ranges::find(kCheckedFields, code, &CheckedField::code);
  const auto name = field == std::end(kCheckedFields) ? u"いずれかの" : field->name;
  ShowNotice(Text(name) + u"の" + Decimal(position + 1) +
                 u"文字目あたりに認識できない文字があります。値を見直してください。",
             u"値不正", Icon::kWarning);
}

// Reading stops at such a character: the item is lost with it, and all items after it.
bool AgreesToLoss(const ExtItem& item) {
  const auto isLost = [](char16_t c) { return c >= u' ' && !core::IsValueCharacter(c); };
  const auto lost = std::ranges::find_if(*item.value, isLost);
  if (!IsQuotedType(ExtItemType(item.type)) || lost == item.value->end()) return true;
  const size_t position = static_cast<size_t>(lost - item.value->begin());
  return platform::AskYesNo(u"値の" + Decimal(position + 1) +
                                u"文字目は、保存した後に読み戻せない文字です。この項目と、名前順で"
                                u"これより後ろの項目が失われます。よろしいですか？",
                            u"値確認", Icon::kWarning, platform::kNoButton);
}

// Cut at the first blank; the second part is empty without a blank, or with nothing after it, and
// the first one is then all of it.
std::pair<Text, Text> Split(const Text& text) {
  const size_t blank = text.find(u' ');
  if (blank == Text::npos || blank + 1 == text.size()) return {text, {}};
  return {text.substr(0, blank), text.substr(blank + 1)};
}

Text Join(const Text& date, const Text& time) {
  return date.empty() || time.empty() ? date + time : date + u' ' + time;
}

}  // namespace

CItemEditor::CItemEditor(std::u16string_view text) {
  ParseExtItems(items_, text);
}

bool CItemEditor::HasLine() const {
  return fields.type != kTime && fields.type != kMultiLineString;
}

void CItemEditor::Select(int index) {
  selected_ = index;
  fields = {};
  if (index < 0) return;
  const ExtItem& item = items_[static_cast<size_t>(index)];
  fields.name = item.name;
  fields.type = std::max(kInt, ExtItemType(item.type));
  PutValue(item.value.value_or(u""));
}

void CItemEditor::ChooseName(std::u16string_view name) {
  if (const auto found = FindExtItem(items_, name)) {
    Select(static_cast<int>(*found));
  } else {
    fields.name = name;
  }
}

void CItemEditor::PutValue(const Text& value) {
  switch (fields.type) {
    case kTime:
      fields.time = value;
      break;
    case kDateTime:
      std::tie(fields.line, fields.time) = Split(value);
      break;
    case kMultiLineString:
      fields.lines = value;
      break;
    default:
      fields.line = value;
      break;
  }
}

void CItemEditor::ChangeType(ItemType type) {
  if (fields.type == type) return;
  Text value = Value();
  const ItemType former = std::exchange(fields.type, type);
  if (former == kMultiLineString) value = core::RemoveLineBreaks(value);
  PutValue(value);
  // What was a time stays one where nothing in it is a date.
  if (former == kTime && type == kDateTime && fields.time.empty()) {
    std::swap(fields.line, fields.time);
  }
}

// Numbers, dates and times count as typed with any input method.
Text CItemEditor::Value() const {
  switch (fields.type) {
    case kInt:
    case kFloat:
    case kDate:
      return core::NarrowForms(fields.line);
    case kTime:
      return core::NarrowForms(fields.time);
    case kDateTime:
      return core::NarrowForms(Join(fields.line, fields.time));
    case kMultiLineString:
      return fields.lines;
    default:
      return fields.line;
  }
}

bool CItemEditor::IsNamed() const {
  if (!fields.name.empty()) return true;
  ShowNotice(u"名前が入力されていません。", u"名前未入力", Icon::kWarning);
  return false;
}

bool CItemEditor::IsSelected() const {
  if (selected_ >= 0) return true;
  ShowNotice(u"項目が指定されていません。", u"項目未指定", Icon::kWarning);
  return false;
}

// The label is the name: this editor shows no other.
std::optional<ExtItem> CItemEditor::BuildItem() const {
  ExtItem item{fields.name, fields.name, Text(kTypeNames[static_cast<size_t>(fields.type)]),
               Value()};
  size_t position = 0;
  const int code = CheckExtItem(item, position);
  if (code != 0) {
    TellRefused(code, position);
    return {};
  }
  if (!AgreesToLoss(item)) return {};
  return item;
}

void CItemEditor::InsertAndSelect(ExtItem item) {
  const Text name = item.name;
  AddExtItem(items_, std::move(item));
  changed_ = true;
  Select(static_cast<int>(*FindExtItem(items_, name)));
}

void CItemEditor::OnBtnCreate() {
  if (!IsNamed()) return;
  if (FindExtItem(items_, fields.name)) {
    ShowNotice(u"すでに同じ名前の項目が登録されています。", u"同名項目が存在", Icon::kWarning);
    return;
  }
  if (auto item = BuildItem()) InsertAndSelect(std::move(*item));
}

void CItemEditor::OnBtnChange() {
  if (!IsSelected() || !IsNamed()) return;
  auto item = BuildItem();
  if (!item) return;
  auto replaced = static_cast<size_t>(selected_);
  const auto sameName = FindExtItem(items_, item->name);
  if (sameName && *sameName != replaced) {
    if (!platform::AskYesNo(u"同じ名前の項目があります。項目を切り替えて上書きしますか？",
                            u"同名項目が存在")) {
      return;
    }
    replaced = *sameName;
  }
  items_.erase(items_.begin() + static_cast<ptrdiff_t>(replaced));
  InsertAndSelect(std::move(*item));
}

void CItemEditor::OnBtnDelete() {
  if (!IsSelected()) return;
  const auto index = static_cast<size_t>(selected_);
  if (!platform::AskYesNo(u"項目\"" + items_[index].name + u"\"を削除してもよろしいですか？",
                          u"項目削除確認", Icon::kQuestion, platform::kNoButton)) {
    return;
  }
  items_.erase(items_.begin() + selected_);
  changed_ = true;
  Select(std::min(selected_, static_cast<int>(items_.size()) - 1));
}

void CItemEditor::OnBtnApply() {
  Text text = WriteExtItems(items_);
  if (text.size() <= kLongestExtItems) {
    result = std::move(text);
    return;
  }
  ShowNotice(u"拡張項目の入力長さ(" + Decimal(text.size()) + u")が最大長さ(" +
                 Decimal(kLongestExtItems) + u")を超えています。内容を見直してください。",
             u"拡張項目入力長さオーバー", Icon::kWarning);
}

bool CItemEditor::OnBtnDiscard() {
  return platform::AskYesNo(u"変更内容を破棄してよろしいですか？", u"変更内容破棄確認");
}

}  // namespace extitems
