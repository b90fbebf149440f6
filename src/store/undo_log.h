// t_UndoData: the steps that can be taken back, and those that can be done again. A step is all
// that one command writes to t_UserData. Its rows are written in the commit of the change itself,
// so no kill leaves one without the other. The table is made by the first step, never by looking.
// Interface thread only.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "store/engine.h"

namespace store {

// The numbers stand in data files.
enum class StepKind {
  kSingle = 0,   // its title says it all
  kCounted = 1,  // the title goes with the number of Actions
  // The recorder's: the chain goes with the Actions.
  kTap = 2,
  kStop = 3,
  kReopen = 4,
  kBack = 5
};

enum class RowChange { kChangedFrom = 1, kChangedTo = 2, kInserted = 3, kDeleted = 4 };

struct UndoRow {
  int64_t number;  // in t_UndoData
  int64_t former;  // of the row there that holds what a changed Action was, 0 if there is none
  RowChange change;
  std::u16string id;
};

struct UndoStep {
  int64_t first = 0;  // number of its head in t_UndoData
  int64_t last = 0;   // and of its last row
  StepKind kind = StepKind::kSingle;
  int count = 0;  // changes of Actions
  std::u16string title;
  std::u16string running;  // id of the recorder's running Action before the step
};

enum class Turn { kUndo, kRedo };
enum class TurnResult {
  kDone,
  kNothing,  // there is no such step
  kForeign,  // the Actions no longer are what the step left
  kRefused,  // by `settle`
  kFailed    // the trouble is noted
};

class UndoLog {
 public:
  static constexpr int kMaxSteps = 200;
  static constexpr int64_t kMaxBytes = int64_t{64} << 20;

  explicit UndoLog(Engine& session) : Session(session) {}

  // All changes from here to End are one step; outside they leave none. False, and no change, if a
  // step is open already: this one is part of it then.
  bool Begin(StepKind kind, std::u16string_view title, std::u16string_view running);
  void End();

  // Runs `write`, which changes the first row of this id, in one commit with what it adds to the
  // open step; in the open transaction if there is one.
  enum class Write { kInsert, kUpdate, kDelete };
  HRESULT Run(Write what, std::u16string_view id, const std::function<HRESULT()>& write);
  // What Run inserts and updates between these two, within one transaction, is noted together, in a
  // fraction of the time. Of what is there only these rows of t_UserData, by their row ids, may be
  // updated. Where EndGroup fails, the transaction must not be committed.
  HRESULT BeginGroup(std::vector<int64_t> rows);
  HRESULT EndGroup();

  // The step that the next turn would be about, none if there is no such step. False if that can't
  // be read.
  bool Find(Turn turn, std::optional<UndoStep>& step);
  // The Actions that it changed, in that order; those that can be read.
  std::vector<UndoRow> RowsOf(const UndoStep& step);
  // In one transaction. `settle` is called within it, after the Actions, and says whether what
  // hangs on them could follow: kDone, kRefused or kFailed. All but kDone leaves everything as it
  // was.
  TurnResult Take(Turn turn, const std::function<TurnResult(const UndoStep&)>& settle);
  // Drops all steps, and overwrites in the file what they held.
  HRESULT Clear();

 private:
  struct Mark {  // a row of the table, 0 for none
    int64_t number = 0, head = 0, step = 0, count = 0;
  };
  struct OpenStep {
    StepKind kind;
    std::u16string title, running;
    int64_t head = 0;  // 0 before the first change
    Mark newest;       // row of the table, as long as this transaction lasts
    uint64_t transaction = 0;
  };
  struct Group {  // rows of t_UserData
    std::vector<int64_t> changed, inserted;
  };

  bool ReadRow(std::u16string_view sql, std::span<const std::u16string_view> columns,
               ColumnTexts texts, std::unique_ptr<RowSet>& rows);
  std::optional<std::u16string> Declared();
  HRESULT EnsureTable();
  Mark NewestUpTo(int64_t number);
  Mark Newest() { return NewestUpTo(INT64_MAX); }
  std::optional<UndoStep> StepOf(const Mark& last, bool& isUndone);
  HRESULT WriteNoted(Write what, std::u16string_view id, const std::function<HRESULT()>& write);
  HRESULT WriteInGroup(Write what, const std::function<HRESULT()>& write);
  HRESULT FindMark(Mark& mark);
  void Keep(const Mark& mark);
  HRESULT WriteHead(Mark& mark);
  HRESULT NoteRow(Mark& mark, RowChange change, std::u16string_view id);
  HRESULT NoteRows(RowChange change, std::vector<int64_t>& rows);
  HRESULT BytesUpTo(int64_t number, int64_t& bytes);
  void Forget(const Mark& begun);
  HRESULT DropOutdated(const Mark& newest, int64_t atOnce);
  HRESULT PutBack(Turn turn, const UndoRow& row);
  HRESULT PutAllBack(Turn turn, const UndoStep& step);

  Engine& Session;  // not owned
  std::optional<OpenStep> open_;
  std::optional<Group> group_;
  bool isUnread_ = false;  // a read has failed since a write or a search began
};

}  // namespace store
