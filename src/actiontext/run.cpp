// Names are looked up when a value is needed, and only then is a text converted, once: most items
// of an Action are never read by its memo.
#include "actiontext/run.h"

#include <algorithm>
#include <limits>

#include "actiontext/number_text.h"
#include "core/text.h"
#include "extitems/text_form.h"

namespace actiontext {
namespace {

struct SystemItem {
  std::u16string_view name;
  store::ActionColumn column;
};

constexpr SystemItem kSystemItems[] = {
    {u"SIActId", store::kActId},           {u"SICategory1", store::kCategory1},
    {u"SICategory2", store::kCategory2},   {u"SIEndDateTime", store::kEndDateTime},
    {u"SILastUpdate", store::kLastUpdate}, {u"SILatitude", store::kLatitude},
    {u"SILongitude", store::kLongitude},   {u"SIMemo", store::kMemo},
    {u"SIPlace", store::kPlace},           {u"SIStaDateTime", store::kStaDateTime},
    {u"SISubject", store::kSubject},
};
static_assert(std::is_sorted(std::begin(kSystemItems), std::end(kSystemItems),
                             [](const auto& a, const auto& b) { return a.name < b.name; }));
// Every column but the extended items, which have names of their own.
static_assert(std::size(kSystemItems) + 1 == store::kActionColumnCount &&
              std::all_of(std::begin(kSystemItems), std::end(kSystemItems), [](const auto& item) {
                return item.name.starts_with(u"SI") &&
                       item.name.substr(2) == store::TitleOf(item.column);
              }));

// The one entry with this name of a table sorted by name, or nullptr.
template <typename Table>
auto FindByName(Table& table, std::u16string_view name) -> decltype(std::data(table)) {
  const size_t place = core::SortedSearch(std::size(table), core::SearchMode::kLowerBound,
                                          [&](size_t i) { return name.compare(table[i].name); });
  if (place == std::size(table) || table[place].name != name) return nullptr;
  return &table[place];
}

ActionValue ValueOf(extitems::ItemType type, std::u16string_view text) {
  switch (type) {
    case extitems::kInt:
      return ActionValue::Int(ReadInt(text));
    case extitems::kFloat:
      return ActionValue::Float(ReadFloat(text));
    default:
      return ActionValue::String(text);
  }
}

// Kept on purpose: six digits of a position, and the largest double for none.
double Position(const std::optional<std::u16string>& column) {
  const double degrees = column ? ReadFloat(*column) : std::numeric_limits<double>::max();
  return ReadFloat(NumberText(degrees, NumberText::Form::kSixDigits).View());
}

}  // namespace

ActionTextRun::ActionTextRun(const store::Action& action) : action_(action) {
  ReadExtItems(store::TextOf(action, store::kExtItems));
}

void ActionTextRun::ReadExtItems(std::u16string_view text) {
  extitems::ExtItemReader reader(text);
  extitems::ExtItemView view;
  while (reader.Next(view)) {
    if (view.value.find(u'\\') != std::u16string_view::npos) {
      view.value = texts.Keep(core::UnescapeText(view.value)).value_or(u"");
    }
    items_.push_back({view.name, view.value, view.type});
  }
  // Equal names stand in the order of the text: of them the first one wins.
  std::sort(items_.begin(), items_.end(), [](const Item& a, const Item& b) {
    const int order = a.name.compare(b.name);
    return order != 0 ? order < 0 : a.name.data() < b.name.data();
  });
  const auto sameName = [](const Item& a, const Item& b) { return a.name == b.name; };
  items_.erase(std::unique(items_.begin(), items_.end(), sameName), items_.end());
}

int ActionTextRun::ResolveValue(ActionValue& item) {
  if (item.type != kIdentifier) return 0;
  const auto variable = variables_.empty() ? variables_.end() : variables_.find(item.s);
  if (variable != variables_.end()) {
    item = variable->second;
    return 0;
  }
  const bool found = FindExtItem(item.s, item) || FindSystemItem(item.s, item);
  return found ? 0 : -102;
}

bool ActionTextRun::FindExtItem(std::u16string_view name, ActionValue& item) {
  Item* found = FindByName(items_, name);
  if (found == nullptr) return false;
  if (found->value.type == kNone) found->value = ValueOf(found->type, found->text);
  item = found->value;
  return true;
}

bool ActionTextRun::FindSystemItem(std::u16string_view name, ActionValue& item) const {
  const SystemItem* found = FindByName(kSystemItems, name);
  if (found == nullptr) return false;
  const bool position = found->column == store::kLatitude || found->column == store::kLongitude;
  item = position ? ActionValue::Float(Position(action_[found->column]))
                  : ActionValue::String(store::TextOf(action_, found->column));
  return true;
}

void ActionTextRun::SetVariable(std::u16string_view name, const ActionValue& value) {
  variables_.insert_or_assign(name, value);
}

}  // namespace actiontext
