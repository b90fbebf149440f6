// The engine under the tables, and the only place that knows which one it is: SQLite. Columns go in
// and out as texts: a number as "%d", a float as "%f", a NULL column as none. A text longer than
// its column's declared length is cut to it. Interface thread only.
//
// Journal: opening and reading leave a file as it is, to the byte. Before the first write it is
// switched to a write-ahead log with full sync, so that every write that has returned survives a
// kill and a power cut; closing brings a file in our charge back to the rollback form: one file,
// complete in itself. What another program holds locked is waited for about two seconds.
#pragma once

#include <cstdint>
#include <functional>
#include <initializer_list>
#include <map>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "store/column.h"
#include "store/file_lock.h"
#include "store/hresult.h"

struct sqlite3;

namespace store {

inline constexpr int kLockWaitMs = 2000;

class Engine;
class SnapshotCopy;
class Statement;
struct ColumnChange;

using ColumnTexts = std::span<std::optional<std::u16string>>;

// A column and the text that goes into it, or that a row is sought by; none is NULL.
struct Field {
  std::u16string_view column;
  std::optional<std::u16string_view> text;
};

// A prepared statement on loan; goes back to its engine with this handle.
struct GiveBack {
  Engine* engine;
  void operator()(Statement* statement) const;
};
using StatementLoan = std::unique_ptr<Statement, GiveBack>;

// The rows of one select, read one at a time under one view of the data. Must not outlive its
// engine.
class RowSet {
 public:
  RowSet(Engine& engine, StatementLoan statement, std::vector<std::string> literals);
  ~RowSet();
  RowSet(const RowSet&) = delete;
  RowSet& operator=(const RowSet&) = delete;

  // Which columns of the select Next hands out, in that order, without regard to case. E_FAIL if
  // one is missing.
  HRESULT Bind(std::span<const std::u16string_view> columns);
  // Reads the next row. DB_S_ENDOFROWSET, and nothing written, when none is left.
  HRESULT Next(ColumnTexts row);
  // The number in a column of the select, counted from 0, of the row that Next has read.
  int64_t Number(int column) const;
  // Back to the first row.
  HRESULT Restart();
  // How many rows the select finds: runs it a second time. None on a failure.
  std::optional<int> Count();

 private:
  friend class Engine;

  HRESULT Run();
  void Step();

  Engine& engine_;
  StatementLoan statement_;
  std::vector<std::string> literals_;
  std::vector<int> positions_;  // of the bound columns in the select
  bool atFirstRow_ = false;     // which Next has not handed out yet
  HRESULT state_ = S_OK;        // of the last step
};

// Which rows of a watched table may differ from what they were, by their row ids, some of them more
// than once; `all` if there is no telling.
struct RowChanges {
  bool all = true;
  std::vector<int64_t> rows;
};

// A state of a file that nobody has open for writing: whatever writes to it, or puts another in its
// place, changes one of these.
struct FileMark {
  uint64_t device, inode, size;
  uint64_t modified, changed;  // nanoseconds, by the file system's clock
  uint64_t commits;            // as the file counts them
  bool operator==(const FileMark&) const = default;
};

// What is read between these two is one state of the file, whoever writes to it meanwhile.
class ReadView {
 public:
  explicit ReadView(Engine& engine);
  ~ReadView();
  ReadView(const ReadView&) = delete;
  ReadView& operator=(const ReadView&) = delete;

 private:
  Engine& engine_;
};

class Engine {
 public:
  // False if there is no engine on this machine.
  static bool Available();
  // Opens an existing file; nullptr if it cannot be opened. Whether it is a data file shows at the
  // first read. The engine keeps the file's lock, if there is one, until it has closed it.
  static std::unique_ptr<Engine> Open(std::u16string_view path,
                                      std::unique_ptr<FileLock> lock = nullptr);
  // Removes a file, and what an engine that did not close it left beside it.
  static void Remove(std::u16string_view path);
  // The latter alone.
  static void RemoveBeside(std::u16string_view path);
  // Writes a compacted copy of a closed file to `destination`, which is replaced: whole, but for
  // the steps that could be taken back, and on the disk when it returns, or gone after a failure.
  // The source's content stays as it is; what an engine that did not close it left beside it is
  // taken in.
  static HRESULT Compact(std::u16string_view source, std::u16string_view destination);
  ~Engine();
  Engine(const Engine&) = delete;
  Engine& operator=(const Engine&) = delete;

  // True if `path` leads to the open file, to what stands or may yet stand beside it while it is
  // open, or to a folder that it lies in: to write there, or to take it away, would be the end of
  // the diary.
  bool Keeps(std::u16string_view path) const;

  // The open file is what stands at its path. It is not once that was renamed over, moved or
  // removed: then `settle` is asked before the next write, unless a row set, a transaction or a
  // burst is open, and true lets the write go on, in the file that the engine has moved to. Every
  // other write to a displaced file is refused.
  bool IsInPlace() const;
  void OnDisplaced(std::function<bool()> settle) { settle_ = std::move(settle); }
  // Before closing: a displaced file would take with it what has been written to it. E_FAIL if it
  // stays displaced.
  HRESULT ConfirmPlace();
  // Where the open file lies now, with all that was written to it; none if it has no name any more.
  std::optional<std::u16string> Whereabouts();
  // A compacted copy at `path`, as Compact makes it, which is replaced: whole and on the disk, or
  // gone after a failure.
  HRESULT CopyTo(std::u16string_view path);
  // A copy of the file as it is now, but for the steps that could be taken back, at `path`, which
  // is replaced. It's made by a thread of its own with a connection of its own, and what is written
  // meanwhile isn't in it. FinishCopy waits for it, if there is one, and hands its result to
  // `finish`: the copy is whole and on the disk, or gone with the trouble noted. Closing the file
  // finishes its copy. `onEnd` is called by the thread once FinishCopy no longer has to wait.
  void StartCopy(std::u16string_view path, std::function<void()> onEnd,
                 std::function<void(HRESULT)> finish);
  void FinishCopy();
  // Called at the beginning of every write, when the journal is ready for it, until the file is
  // closed. It may read and start a copy, but not write.
  void OnWrite(std::function<void(Engine&)> onWrite) { onWrite_ = std::move(onWrite); }
  // `path` is the one that the file was opened by, which is Path.
  bool WasOpenedAs(std::u16string_view path) const;
  std::u16string Path() const;
  // Closes the file. Until Become nothing can be read or written.
  void Close();
  // Takes over the file of `other`; the tables that hang from this engine then mean that one.
  void Become(Engine& other);

  // The file is ours: makes it, and what stands beside it, its owner's alone; from now on closing
  // brings it to the rollback form.
  void TakeCharge();

  // All writes until Commit are one; a Commit that fails, as it does where the file was displaced
  // meanwhile, Rollback, and closing without either, undo them. Rollback is harmless where there is
  // nothing to undo, and no row set may be open.
  HRESULT BeginTransaction();
  HRESULT Commit();
  void Rollback();
  bool IsInTransaction() const { return inTransaction_; }
  // Each transaction has a number of its own, from 1 on.
  uint64_t TransactionNumber() const { return transaction_; }
  // Between these two a write returns before the disk has it; EndBurst waits for all of them.
  // E_FAIL if the disk did not take them. After a BeginBurst that failed all of them are refused.
  // Use WriteBurst.
  HRESULT BeginBurst();
  HRESULT EndBurst();

  // Switches the journal of a file in its place for the session's writes; the first of them does it
  // otherwise.
  void PrepareJournal();

  // From now on the changes of this table's rows are noted, and no other's. The text must live on.
  void WatchRows(std::string_view table);
  // What has changed since the call before this one, whoever changed it. `all` at the first call,
  // after a statement of Execute, and once another connection has committed anything. To be called
  // within the ReadView in which the rows are then read.
  RowChanges TakeRowChanges();

  // Empties the log into the file. E_FAIL while somebody else reads it.
  HRESULT BringLogIn();
  // The state that's being read; none while the file has a log. Within a ReadView that has read.
  std::optional<FileMark> Mark();
  // Before closing: brings the file to the rollback form and answers its mark, while no other
  // program can write to it; `refresh` is called ahead of that, to read what others may have
  // written. None, with nothing done, where the file is in use elsewhere or `refresh` says no.
  std::optional<FileMark> Settle(const std::function<bool()>& refresh);

  // A statement without result.
  HRESULT Execute(std::u16string_view sql);
  // One that changes rows, its values quoted: what differs in nothing but these shares a prepared
  // statement. DB_E_NOTFOUND if no row has changed.
  HRESULT Change(std::u16string_view sql);
  // The same with "?1" and so on for its values.
  HRESULT Change(std::string_view sql, std::span<const std::string> values);
  // A select; `rows` stays empty on a failure.
  HRESULT OpenRows(std::u16string_view sql, std::unique_ptr<RowSet>& rows);

  // Each takes the first row, by the table's index, whose key column equals the key's text.
  // DB_E_NOTFOUND if there is none. `row` is written on success only.
  HRESULT ReadFirst(std::u16string_view table, const Field& key,
                    std::span<const std::u16string_view> columns, ColumnTexts row);
  HRESULT UpdateFirst(std::u16string_view table, const Field& key, std::span<const Field> fields);
  HRESULT DeleteFirst(std::u16string_view table, const Field& key);
  // One row, in a transaction of its own unless one is open.
  HRESULT Insert(std::u16string_view table, std::span<const Field> fields);
  // The row id that the last row inserted into any table has got.
  int64_t InsertedRow() const;

 private:
  friend class ReadView;
  friend class RowSet;
  friend struct GiveBack;
  using Columns = std::vector<Column>;

  Engine(sqlite3* database, std::string hostPath, std::unique_ptr<FileLock> lock);

  HRESULT ResultOf(int code);
  // None if there is no telling.
  std::optional<bool> IsOpenFile(const std::string& hostPath) const;
  StatementLoan Borrow(std::string_view sql);
  HRESULT NotPrepared();  // why Borrow has lent none
  HRESULT RunScript(const std::string& sql);
  HRESULT CopyCompacted(const std::string& destination);
  HRESULT LeaveStepsOut(const std::string& copy);
  HRESULT BeginWrite();
  HRESULT SettleLeftovers();
  HRESULT ConfirmWritable();
  HRESULT ChangeColumn(const ColumnChange& change);
  HRESULT ReplaceDeclaration(const ColumnChange& change);
  std::optional<std::string> ReadValue(std::string_view sql,
                                       std::initializer_list<std::string_view> arguments);
  Columns ReadColumns(std::u16string_view table);
  const Columns& ColumnsOf(std::u16string_view table);
  HRESULT Bind(Statement& statement, const Columns& columns, std::span<const Field> fields);
  HRESULT WriteFirst(std::string_view sql, std::u16string_view table,
                     std::span<const Field> fields);
  void SwitchToLog();
  bool IsLogEmpty();
  std::optional<uint64_t> CountOfCommits();  // in the file, without those of its log
  void NoteRow(std::string_view table, int64_t row);

  std::unique_ptr<FileLock> lock_;  // goes after the database is closed
  sqlite3* database_;
  std::string hostPath_;
  uint64_t device_ = 0;  // of the open file
  uint64_t inode_ = 0;
  std::function<bool()> settle_;
  std::function<void(Engine&)> onWrite_;
  std::unique_ptr<SnapshotCopy> copy_;
  std::function<void(HRESULT)> finishCopy_;       // there is one as long as there is a copy
  std::vector<std::unique_ptr<Statement>> idle_;  // prepared, the last used last
  std::map<std::u16string, Columns, std::less<>> tables_;  // those asked for so far
  int openRowSets_ = 0;
  bool journalReady_ = false;
  bool inCharge_ = false;
  bool inTransaction_ = false;
  uint64_t transaction_ = 0;  // the number of the last one
  bool inBurst_ = false;
  bool isLax_ = false;           // writes return before the disk has them
  bool refusing_ = false;        // a burst that could not begin
  std::string_view watched_;     // a table, or empty
  RowChanges changes_;           // of its rows
  bool sawUncommitted_ = false;  // TakeRowChanges was called within a transaction
  std::string dataVersion_;      // of the last look; another connection's commit raises it
};

}  // namespace store
