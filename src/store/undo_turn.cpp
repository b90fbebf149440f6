// The steps of the log, found and turned.
#include <algorithm>
#include <array>
#include <memory>
#include <unordered_map>
#include <utility>

#include "store/schema.h"
#include "store/trouble.h"
#include "store/undo_log.h"
#include "store/undo_sql.h"

namespace store {

using Text = std::u16string;

std::optional<UndoStep> UndoLog::StepOf(const Mark& last, bool& isUndone) {
  static constexpr std::u16string_view kColumns[] = {u"f_nvcTitle", u"f_nvcRunning"};
  std::unique_ptr<RowSet> rows;
  std::array<std::optional<Text>, 2> texts;
  const bool isThere = ReadRow(
      u"select f_i4Head,f_i4Kind,f_i4Undone,f_nvcTitle,f_nvcRunning from t_UndoData where f_i4No=" +
          undo_sql::Quoted(last.head),
      kColumns, texts, rows);
  if (!isThere) return {};
  if (rows->Number(0) != last.head || last.head > last.number) return {};
  isUndone = rows->Number(2) != 0;
  return UndoStep{last.head,
                  last.number,
                  static_cast<StepKind>(rows->Number(1)),
                  static_cast<int>(last.count),
                  texts[0].value_or(u""),
                  texts[1].value_or(u"")};
}

bool UndoLog::Find(Turn turn, std::optional<UndoStep>& found) {
  isUnread_ = false;
  found.reset();
  if (Declared() != kCreateUndoData) return !isUnread_;
  Mark last = Newest();
  for (int i = 0; i <= kMaxSteps && last.number > 0; ++i) {
    bool isUndone = false;
    const std::optional<UndoStep> step = StepOf(last, isUndone);
    if (!step) break;
    if (isUndone == (turn == Turn::kRedo)) found = step;
    if (!isUndone) break;
    last = NewestUpTo(step->first - 1);
  }
  if (isUnread_) found.reset();
  return !isUnread_;
}

// What a changed Action was stands somewhere ahead of what it became.
std::vector<UndoRow> UndoLog::RowsOf(const UndoStep& step) {
  static constexpr std::u16string_view kColumns[] = {u"f_nchActId"};
  std::vector<UndoRow> changed;
  std::unordered_map<int64_t, int64_t> formers;  // by the Action's row
  std::unique_ptr<RowSet> rows;
  std::array<std::optional<Text>, 1> id;
  const HRESULT opened =
      Session.OpenRows(u"select f_i4No,f_i4Kind,f_i4Row,f_nchActId from t_UndoData where f_i4No>" +
                           undo_sql::Quoted(step.first) + u" and f_i4No<=" +
                           undo_sql::Quoted(step.last) + u" order by f_i4No",
                       rows);
  HRESULT result = Failed(opened) ? opened : rows->Bind(kColumns);
  while (!Failed(result) && (result = rows->Next(id)) == S_OK) {
    const int64_t number = rows->Number(0);
    const auto change = static_cast<RowChange>(rows->Number(1));
    if (change == RowChange::kChangedFrom) {
      formers.try_emplace(rows->Number(2), number);
      continue;
    }
    const auto former = formers.extract(rows->Number(2));
    changed.push_back({number, former ? former.mapped() : 0, change, id[0].value_or(u"")});
  }
  isUnread_ = isUnread_ || Failed(result);
  return changed;
}

TurnResult UndoLog::Take(Turn turn, const std::function<TurnResult(const UndoStep&)>& settle) {
  if (Failed(Session.BeginTransaction())) return TurnResult::kFailed;
  std::optional<UndoStep> step;
  TurnResult result = Find(turn, step) ? TurnResult::kNothing : TurnResult::kFailed;
  if (step) {
    const HRESULT put = PutAllBack(turn, *step);
    result = put == DB_E_NOTFOUND ? TurnResult::kForeign
             : Failed(put)        ? TurnResult::kFailed
                                  : settle(*step);
    if (isUnread_) result = TurnResult::kFailed;  // `settle` reads the step, too
  }
  const Trouble trouble = LastTrouble();
  if (result == TurnResult::kDone) {
    return Failed(Session.Commit()) ? TurnResult::kFailed : TurnResult::kDone;
  }
  Session.Rollback();
  NoteTrouble(trouble);
  return result;
}

HRESULT UndoLog::PutAllBack(Turn turn, const UndoStep& step) {
  std::vector<UndoRow> rows = RowsOf(step);
  if (isUnread_) return E_FAIL;
  if (turn == Turn::kUndo) std::ranges::reverse(rows);
  HRESULT result = S_OK;
  for (const UndoRow& row : rows) {
    if (!Failed(result)) result = PutBack(turn, row);
  }
  if (Failed(result)) return result;
  return Session.Change(Text(u"update t_UndoData set f_i4Undone=") +
                        (turn == Turn::kUndo ? u"'1'" : u"'0'") + u" where f_i4No=" +
                        undo_sql::Quoted(step.first));
}

// DB_E_NOTFOUND if the Action isn't what the step left.
HRESULT UndoLog::PutBack(Turn turn, const UndoRow& row) {
  const bool undoes = turn == Turn::kUndo;
  switch (row.change) {
    case RowChange::kChangedFrom:
      break;  // RowsOf has none
    case RowChange::kChangedTo:
      return Session.Change(undoes ? undo_sql::Replace(row.id, row.number, row.former)
                                   : undo_sql::Replace(row.id, row.former, row.number));
    case RowChange::kInserted:
    case RowChange::kDeleted: {
      const bool removes = undoes == (row.change == RowChange::kInserted);
      return Session.Change(removes ? undo_sql::Remove(row.id, row.number)
                                    : undo_sql::Add(row.id, row.number));
    }
  }
  return E_FAIL;
}

// The log is brought in and cut, as the texts stand there too.
HRESULT UndoLog::Clear() {
  isUnread_ = false;
  if (!Declared()) return isUnread_ ? E_FAIL : S_OK;
  HRESULT result = Session.Execute(u"PRAGMA secure_delete=ON");
  if (!Failed(result)) result = Session.Execute(u"delete from t_UndoData");
  if (!Failed(result)) result = Session.BringLogIn();
  return result;
}

}  // namespace store
