#include "totals/read_period.h"

#include <array>
#include <memory>
#include <vector>

#include "core/date_time.h"
#include "platform/utf.h"
#include "recorder/recorder_state.h"
#include "store/action_index.h"
#include "store/read_action.h"
#include "store/session.h"

namespace totals {
namespace {

using store::HRESULT;
using Texts = std::array<std::optional<std::u16string>, 5>;

constexpr int kRowsALook = 1000;

std::u16string_view TextOr(const std::optional<std::u16string>& text) {
  return text ? std::u16string_view(*text) : std::u16string_view();
}

// The columns of a select, before the row's number, and where each text belongs.
struct Selected {
  std::vector<std::u16string_view> names = {u"f_nchStaDateTime", u"f_nchEndDateTime"};
  std::vector<std::u16string_view RowTexts::*> texts = {&RowTexts::start, &RowTexts::end};

  RowTexts TextsOf(const Texts& row) const {
    RowTexts all;
    for (size_t column = 0; column < texts.size(); ++column) {
      all.*texts[column] = TextOr(row[column]);
    }
    return all;
  }
  int RowNumber() const { return static_cast<int>(names.size()); }
};

// What takes no part in the sums isn't read: texts are most of what a row costs.
Selected SelectedFor(const Choices& choices) {
  struct Text {
    By by;
    std::u16string_view name;
    std::u16string_view RowTexts::*text;
  };
  constexpr Text kTexts[] = {{By::kPlace, u"f_nvcPlace", &RowTexts::place},
                             {By::kCategory1, u"f_nvcCategory1", &RowTexts::category1},
                             {By::kCategory2, u"f_nvcCategory2", &RowTexts::category2}};
  Selected columns;
  for (const auto& [by, name, text] : kTexts) {
    if (choices.by != by && choices.within != by) continue;
    columns.names.push_back(name);
    columns.texts.push_back(text);
  }
  return columns;
}

// What reaches into the period, by its days alone: a moment may be written in more than one form.
// None if that can't be told.
std::optional<std::u16string> ConditionOf(const Period& period, const std::u16string& find) {
  if (!period.IsBounded()) return find;
  const auto days = store::TouchingCondition(core::DayText(DayOf(period.first)),
                                             core::DayText(DayOf(period.after)));
  return !days || find.empty() ? days : *days + u" and " + find;
}

HRESULT Open(const Selected& columns, std::u16string_view condition,
             std::unique_ptr<store::RowSet>& found) {
  store::Engine* engine = store::dbSession().Session.get();
  if (engine == nullptr) return store::E_POINTER;
  std::u16string sql = u"select ";
  for (const std::u16string_view name : columns.names) sql.append(name).append(u",");
  sql += u"rowid from t_UserData";
  if (!condition.empty()) sql.append(u" where ").append(condition);
  const HRESULT opened = engine->OpenRows(sql, found);
  return store::Failed(opened) ? opened : found->Bind(columns.names);
}

// The running Action ends where it starts, in the data file, so that no condition of days finds it
// on a later one. `number` is its row, or -1.
HRESULT AddRunning(const core::CAppState& app, const Selected& columns, const std::u16string& find,
                   Rows& rows, int64_t& number) {
  std::u16string id;
  HRESULT result = recorder::ReadRunningId(app, id);
  number = -1;
  if (store::Failed(result) || id.empty()) return result;
  std::u16string condition = u"f_nchActId = '" + store::SqlQuote(id) + u"'";
  if (!find.empty()) condition += u" and " + find;
  std::unique_ptr<store::RowSet> found;
  Texts row;
  result = Open(columns, condition, found);
  if (!store::Failed(result)) result = found->Next(row);
  if (result != store::S_OK) return result;
  const std::optional<Seconds> now = ReadMoment(core::MomentOf(platform::host().Now()));
  number = found->Number(columns.RowNumber());
  rows.AddRunning(number, columns.TextsOf(row), now.value_or(0));
  return result;
}

HRESULT ReadAll(store::RowSet& found, const Selected& columns, int64_t running, Rows& rows,
                platform::LateWait& wait) {
  Texts row;
  HRESULT result;
  for (int count = 1; (result = found.Next(row)) == store::S_OK; ++count) {
    const int64_t number = found.Number(columns.RowNumber());
    if (number != running) rows.Add(number, columns.TextsOf(row));
    if (count % kRowsALook == 0) wait.Look();
  }
  return result;
}

}  // namespace

bool ReadPeriod(const core::CAppState& app, const Period& period, const std::u16string& find,
                const Choices& choices, Rows& rows, platform::LateWait& wait) {
  rows.Clear();
  const Selected columns = SelectedFor(choices);
  std::unique_ptr<store::RowSet> found;
  int64_t running = -1;
  HRESULT result = AddRunning(app, columns, find, rows, running);
  const auto condition = ConditionOf(period, find);
  if (!store::Failed(result)) {
    result = condition ? Open(columns, *condition, found) : store::E_FAIL;
  }
  const bool isOpen = !store::Failed(result);
  if (isOpen) result = ReadAll(*found, columns, running, rows, wait);
  if (!store::Failed(result)) return true;
  platform::ShowNotice(
      store::FaultText(isOpen ? u"CTotals::ReadPeriod GetNextRS" : u"CTotals::ReadPeriod Select",
                       isOpen ? 2 : 1, result),
      u"ERROR", platform::Icon::kStop);
  return false;
}

std::optional<ActionTexts> ReadTexts(int64_t row) {
  static constexpr std::array<std::u16string_view, 7> kShown = {
      u"f_nchActId",     u"f_nchStaDateTime", u"f_nchEndDateTime", u"f_nvcPlace",
      u"f_nvcCategory1", u"f_nvcCategory2",   u"f_nvcMemo"};
  store::Engine* engine = store::dbSession().Session.get();
  if (engine == nullptr) return {};
  const std::u16string sql =
      u"select f_nchActId,f_nchStaDateTime,f_nchEndDateTime,f_nvcPlace,f_nvcCategory1,"
      u"f_nvcCategory2,f_nvcMemo from t_UserData where rowid = '" +
      platform::ToUtf16(std::to_string(row)) + u"'";
  std::unique_ptr<store::RowSet> found;
  std::array<std::optional<std::u16string>, 7> texts;
  if (store::Failed(engine->OpenRows(sql, found)) || store::Failed(found->Bind(kShown)) ||
      found->Next(texts) != store::S_OK) {
    return {};
  }
  const auto text = [&](size_t column) { return std::u16string(TextOr(texts[column])); };
  return ActionTexts{text(0), text(1), text(2), text(3), text(4), text(5), text(6)};
}

}  // namespace totals
