// Rows are copied within the engine, so that they come back to the byte whatever stands in them. A
// step is a head and the rows after it: the former and the latter state of each changed Action, the
// one state of an inserted or a deleted one. Steps follow one another without a gap, and every row
// bears the number of its head and the sum of all bytes up to it, so nothing has to be counted. (Of
// rows that are noted together the last one does; the others bear the sum before them and their
// own.)
#include "store/undo_log.h"

#include <algorithm>
#include <array>
#include <memory>
#include <utility>

#include "platform/utf.h"
#include "store/schema.h"
#include "store/trouble.h"
#include "store/undo_sql.h"

namespace store {
namespace {

using Text = std::u16string;

// Outdated rows that one write takes away for each that it adds, and how often: a tap must not pay
// for an import of long ago.
constexpr int64_t kDroppedForARow = 4;
constexpr int64_t kRowsBetweenDrops = 16;

}  // namespace

bool UndoLog::Begin(StepKind kind, std::u16string_view title, std::u16string_view running) {
  if (open_) return false;
  open_ = OpenStep{kind, Text(title), Text(running), 0, {}, 0};
  return true;
}

void UndoLog::End() {
  open_.reset();
  group_.reset();
}

HRESULT UndoLog::Run(Write what, std::u16string_view id, const std::function<HRESULT()>& write) {
  if (!open_) return write();
  if (group_) return WriteInGroup(what, write);
  if (Session.IsInTransaction()) return WriteNoted(what, id, write);
  HRESULT result = Session.BeginTransaction();
  if (Failed(result)) return result;
  result = WriteNoted(what, id, write);
  if (!Failed(result)) return Session.Commit();
  const Trouble trouble = LastTrouble();
  Session.Rollback();
  NoteTrouble(trouble);
  return result;
}

HRESULT UndoLog::WriteNoted(Write what, std::u16string_view id,
                            const std::function<HRESULT()>& write) {
  Mark mark;
  HRESULT result = FindMark(mark);
  if (Failed(result)) return result;
  const Mark begun = mark;
  const auto note = [&](RowChange change) { return NoteRow(mark, change, id); };
  if (what == Write::kUpdate) result = note(RowChange::kChangedFrom);
  if (what == Write::kDelete) result = note(RowChange::kDeleted);
  if (!Failed(result)) result = write();
  if (!Failed(result) && what == Write::kUpdate) result = note(RowChange::kChangedTo);
  if (!Failed(result) && what == Write::kInsert) result = note(RowChange::kInserted);
  if (!Failed(result) && mark.number % kRowsBetweenDrops == 0) {
    result = DropOutdated(mark, kDroppedForARow * kRowsBetweenDrops);
  }
  if (Failed(result)) {
    Forget(begun);
  } else {
    Keep(mark);
  }
  return result;
}

// The newest row of the open step, whose head is written if it has none.
HRESULT UndoLog::FindMark(Mark& mark) {
  isUnread_ = false;
  const bool isKnown = open_->transaction == Session.TransactionNumber();
  mark = isKnown ? open_->newest : open_->head != 0 ? Newest() : Mark();
  open_->transaction = 0;
  if (isUnread_) return E_FAIL;
  return open_->head == 0 || open_->head != mark.head ? WriteHead(mark) : S_OK;
}

void UndoLog::Keep(const Mark& mark) {
  open_->newest = mark;
  open_->transaction = Session.TransactionNumber();
}

HRESULT UndoLog::BeginGroup(std::vector<int64_t> rows) {
  group_.reset();
  if (!open_) return S_OK;
  Group group{std::move(rows), {}};
  const HRESULT result = NoteRows(RowChange::kChangedFrom, group.changed);
  if (!Failed(result)) group_ = std::move(group);
  return result;
}

HRESULT UndoLog::WriteInGroup(Write what, const std::function<HRESULT()>& write) {
  if (what == Write::kDelete) return E_INVALIDARG;
  const HRESULT result = write();
  if (!Failed(result) && what == Write::kInsert) group_->inserted.push_back(Session.InsertedRow());
  return result;
}

// Those that a failure has left as they were are noted as such.
HRESULT UndoLog::EndGroup() {
  std::optional<Group> group = std::exchange(group_, {});
  if (!group) return S_OK;
  HRESULT result = NoteRows(RowChange::kChangedTo, group->changed);
  if (!Failed(result)) result = NoteRows(RowChange::kInserted, group->inserted);
  return result;
}

// What a write that failed has added, and the head if it was the first.
void UndoLog::Forget(const Mark& begun) {
  const Trouble trouble = LastTrouble();
  const bool isHead = begun.number == begun.head;
  Session.Change(u"delete from t_UndoData where f_i4No>" +
                 undo_sql::Quoted(isHead ? begun.number - 1 : begun.number));
  NoteTrouble(trouble);
}

// The first row of a select, which `rows` then stands at.
bool UndoLog::ReadRow(std::u16string_view sql, std::span<const std::u16string_view> columns,
                      ColumnTexts texts, std::unique_ptr<RowSet>& rows) {
  HRESULT result = Session.OpenRows(sql, rows);
  if (!Failed(result)) result = rows->Bind(columns);
  if (!Failed(result)) result = rows->Next(texts);
  isUnread_ = isUnread_ || Failed(result);
  return result == S_OK;
}

std::optional<Text> UndoLog::Declared() {
  static constexpr std::u16string_view kColumns[] = {u"sql"};
  std::unique_ptr<RowSet> rows;
  std::array<std::optional<Text>, 1> sql;
  const bool isThere = ReadRow(
      u"select sql from sqlite_schema where name='t_UndoData' collate nocase", kColumns, sql, rows);
  if (!isThere) return {};
  return sql[0].value_or(u"");
}

// One that another version has made otherwise is of no use to this one, and would make it fail.
HRESULT UndoLog::EnsureTable() {
  const std::optional<Text> declared = Declared();
  if (isUnread_) return E_FAIL;
  if (declared == kCreateUndoData) return S_OK;
  if (declared) {
    const HRESULT dropped = Session.Execute(u"drop table t_UndoData");
    if (Failed(dropped)) return dropped;
  }
  const HRESULT made = Session.Change(kCreateUndoData);
  return made == DB_E_NOTFOUND ? S_OK : made;  // no row has changed
}

UndoLog::Mark UndoLog::NewestUpTo(int64_t number) {
  std::unique_ptr<RowSet> rows;
  const bool isThere =
      ReadRow(u"select f_i4No,f_i4Head,f_i4Step,f_i4Count from t_UndoData where f_i4No<=" +
                  undo_sql::Quoted(number) + u" order by f_i4No desc limit 1",
              {}, {}, rows);
  if (!isThere) return {};
  return {rows->Number(0), rows->Number(1), rows->Number(2), rows->Number(3)};
}

HRESULT UndoLog::WriteHead(Mark& mark) {
  HRESULT result = EnsureTable();
  if (Failed(result)) return result;
  Mark former = Newest();
  bool isUndone = false;
  if (former.number > 0 && StepOf(former, isUndone) && isUndone) {
    std::optional<UndoStep> undone;
    result = Find(Turn::kRedo, undone) && undone
                 ? Session.Change(u"delete from t_UndoData where f_i4No>=" +
                                  undo_sql::Quoted(undone->first))
                 : E_FAIL;
    if (Failed(result)) return result;
    former = Newest();
  }
  if (isUnread_) return E_FAIL;
  const int64_t number = former.number + 1;
  result = Session.Change(undo_sql::Head(
      former.number, former.step + 1, static_cast<int>(open_->kind), open_->title, open_->running));
  if (Failed(result)) return result;
  open_->head = number;
  mark = {number, number, former.step + 1, 0};
  return DropOutdated(mark, kDroppedForARow * kRowsBetweenDrops);
}

HRESULT UndoLog::NoteRow(Mark& mark, RowChange change, std::u16string_view id) {
  ++mark.number;
  if (change != RowChange::kChangedFrom) ++mark.count;
  const std::array<std::string, 6> values = {std::to_string(mark.number),
                                             std::to_string(mark.head),
                                             std::to_string(mark.step),
                                             std::to_string(mark.count),
                                             std::to_string(static_cast<int>(change)),
                                             platform::ToUtf8(id)};
  return Session.Change(undo_sql::Row(), values);
}

HRESULT UndoLog::NoteRows(RowChange change, std::vector<int64_t>& rows) {
  if (rows.empty()) return S_OK;
  std::ranges::sort(rows);
  Mark mark;
  HRESULT result = FindMark(mark);
  int64_t before = 0;
  if (!Failed(result)) result = BytesUpTo(mark.number, before);
  if (Failed(result)) return result;
  const auto added = static_cast<int64_t>(rows.size());
  mark.number += added;
  if (change != RowChange::kChangedFrom) mark.count += added;
  result = Session.Change(
      undo_sql::Rows(mark.head, mark.step, mark.count, before, static_cast<int>(change), rows));
  if (!Failed(result)) result = Session.Change(undo_sql::SumUpTo(mark.number, before, added));
  if (!Failed(result)) result = DropOutdated(mark, kDroppedForARow * added);
  if (!Failed(result)) Keep(mark);
  return result;
}

HRESULT UndoLog::BytesUpTo(int64_t number, int64_t& bytes) {
  std::unique_ptr<RowSet> row;
  const bool isRead = ReadRow(
      u"select f_i8Bytes from t_UndoData where f_i4No=" + undo_sql::Quoted(number), {}, {}, row);
  if (isRead) bytes = row->Number(0);
  return isRead ? S_OK : E_FAIL;
}

// What has lost its head, which goes first, is no step any more. Mostly a look at the oldest row is
// all that it takes.
HRESULT UndoLog::DropOutdated(const Mark& newest, int64_t atOnce) {
  const Text outdated = u" and (f_i4Step<=" + undo_sql::Quoted(newest.step - kMaxSteps) +
                        u" or f_i8Bytes<=(select f_i8Bytes from t_UndoData where f_i4No=" +
                        undo_sql::Quoted(newest.number) + u")-" + undo_sql::Quoted(kMaxBytes) +
                        u")";
  std::unique_ptr<RowSet> oldest;
  const HRESULT opened = Session.OpenRows(
      u"select 1 from t_UndoData where f_i4No=(select min(f_i4No) from t_UndoData)" + outdated,
      oldest);
  if (Failed(opened) || oldest->Next({}) != S_OK) return opened;
  oldest.reset();
  return Session.Change(
      u"delete from t_UndoData where f_i4No in (select f_i4No from t_UndoData order by f_i4No "
      u"limit " +
      undo_sql::Quoted(atOnce) + u")" + outdated);
}

}  // namespace store
