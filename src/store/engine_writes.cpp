// When and how writes reach the disk, and which rows they have touched.
#include <sqlite3.h>
#include <sys/stat.h>

#include <array>
#include <random>
#include <utility>

#include "store/engine.h"
#include "store/engine_statement.h"
#include "store/trouble.h"

namespace store {
namespace {

// Beyond these reading all rows takes no longer than looking for each.
constexpr size_t kMaxNotedRows = 256;

}  // namespace

// Where every write begins, and before it has a statement: moving to another file ends them all.
// Within a transaction nothing comes to the file before its commit, which looks again.
HRESULT Engine::BeginWrite() {
  // SQLite ends a transaction by itself where the disk fails.
  if (inTransaction_) return sqlite3_get_autocommit(database_) == 0 ? S_OK : E_FAIL;
  const HRESULT settled = SettleLeftovers();
  if (Failed(settled)) return settled;
  const HRESULT confirmed = ConfirmWritable();
  if (Failed(confirmed)) return confirmed;
  PrepareJournal();
  const HRESULT switched = SettleLeftovers();
  if (Failed(switched)) return switched;
  if (onWrite_) onWrite_(*this);
  return S_OK;
}

HRESULT Engine::ConfirmWritable() {
  if (refusing_) return E_FAIL;
  const std::optional<bool> isInPlace = IsOpenFile(hostPath_);
  if (!isInPlace) {
    NoteTrouble(Trouble::kDisk);
    return E_FAIL;
  }
  if (!*isInPlace) {
    NoteTrouble(Trouble::kDisplaced);
    const bool mayMove =
        !inBurst_ && openRowSets_ == 0 && sqlite3_get_autocommit(database_) != 0 && settle_;
    if (!mayMove || !settle_()) return E_FAIL;
  }
  return S_OK;
}

// A write would be lost in a transaction that a failed statement could not end, and would not wait
// for the disk after a burst whose end could not restore that.
HRESULT Engine::SettleLeftovers() {
  const bool isOpen = sqlite3_get_autocommit(database_) == 0;
  HRESULT result = isOpen ? RunScript("ROLLBACK") : S_OK;
  if (!Failed(result) && isLax_ && !inBurst_) {
    result = RunScript("PRAGMA synchronous=FULL");
    isLax_ = Failed(result);
  }
  return result;
}

// The file and its log bear one stamp: a log that is left beside another file is known by it.
// What SQLite can't tell from another program's commit is our own switch. That nobody else has
// written shows in the file's count of commits, of which ours are two, and in a log that is empty.
void Engine::SwitchToLog() {
  const std::string stamp =
      "PRAGMA user_version=" + std::to_string(std::random_device{}() >> 1) + ";";
  const auto version = [this] { return ReadValue("PRAGMA data_version", {}); };
  const auto commitStamp = [&] {
    const bool isDone = !Failed(RunScript(stamp + "COMMIT"));
    if (!isDone) RunScript("ROLLBACK");
    return isDone;
  };
  if (Failed(RunScript("BEGIN IMMEDIATE"))) return;
  const bool isKnown = version() == dataVersion_;
  const auto before = CountOfCommits();
  if (!commitStamp()) return;
  RunScript("PRAGMA journal_mode=WAL");
  if (Failed(RunScript("BEGIN IMMEDIATE"))) return;
  const auto after = CountOfCommits();
  const auto now = version();
  const bool isAlone = isKnown && before && after == *before + 2 && IsLogEmpty();
  if (commitStamp() && isAlone && now) dataVersion_ = *now;
}

bool Engine::IsLogEmpty() {
  sqlite3_file* log = nullptr;
  sqlite3_file_control(database_, "main", SQLITE_FCNTL_JOURNAL_POINTER, &log);
  sqlite3_int64 size = 0;
  const bool isOpen = log != nullptr && log->pMethods != nullptr;
  return isOpen && log->pMethods->xFileSize(log, &size) == SQLITE_OK && size == 0;
}

std::optional<uint64_t> Engine::CountOfCommits() {
  constexpr int kPlace = 24;  // in the file's head, big-endian
  sqlite3_file* file = nullptr;
  sqlite3_file_control(database_, "main", SQLITE_FCNTL_FILE_POINTER, &file);
  std::array<uint8_t, 4> bytes{};
  const bool isRead = file != nullptr && file->pMethods != nullptr &&
                      file->pMethods->xRead(file, bytes.data(), 4, kPlace) == SQLITE_OK;
  if (!isRead) return {};
  uint64_t count = 0;
  for (const uint8_t byte : bytes) count = count << 8 | byte;
  return count;
}

// While a row set of ours is open the journal cannot be switched: that write goes through a
// rollback journal, which is as safe and only slower.
void Engine::PrepareJournal() {
  if (journalReady_ || !IsInPlace()) return;
  if (!inCharge_) TakeCharge();
  if (openRowSets_ > 0) return;
  if (ReadValue("PRAGMA journal_mode", {}) != "wal") SwitchToLog();
  journalReady_ = true;
}

HRESULT Engine::BeginTransaction() {
  HRESULT result = BeginWrite();
  if (!Failed(result)) result = RunScript("BEGIN IMMEDIATE");
  inTransaction_ = !Failed(result);
  ++transaction_;
  return result;
}

HRESULT Engine::Commit() {
  inTransaction_ = false;
  if (sqlite3_get_autocommit(database_) != 0) return E_FAIL;  // none is open, and nothing to ask
  const HRESULT ready = ConfirmWritable();
  const HRESULT result = Failed(ready) ? ready : RunScript("COMMIT");
  if (!Failed(result)) sawUncommitted_ = false;
  if (!sqlite3_get_autocommit(database_)) RunScript("ROLLBACK");
  return result;
}

void Engine::Rollback() {
  inTransaction_ = false;
  idle_.clear();
  tables_.clear();
  if (!sqlite3_get_autocommit(database_)) RunScript("ROLLBACK");
}

// The log's frames carry a running checksum: what a power cut leaves of an unsynced log is read up
// to the first frame that is missing. A rollback journal promises no such thing, so there every
// write goes on waiting for the disk.
HRESULT Engine::BeginBurst() {
  const HRESULT ready = BeginWrite();
  refusing_ = Failed(ready);
  if (refusing_) return ready;
  inBurst_ = ReadValue("PRAGMA journal_mode", {}) == "wal";
  isLax_ = inBurst_;
  if (inBurst_) RunScript("PRAGMA synchronous=NORMAL");
  return S_OK;
}

HRESULT Engine::EndBurst() {
  if (std::exchange(refusing_, false)) return E_FAIL;
  if (!inBurst_) return S_OK;
  inBurst_ = false;
  sqlite3_file* log = nullptr;
  sqlite3_file_control(database_, "main", SQLITE_FCNTL_JOURNAL_POINTER, &log);
  int code = SQLITE_OK;
  if (log != nullptr && log->pMethods != nullptr)
    code = log->pMethods->xSync(log, SQLITE_SYNC_FULL);
  const HRESULT result = RunScript("PRAGMA synchronous=FULL");
  isLax_ = Failed(result);
  return code == SQLITE_OK ? result : ResultOf(code);
}

void Engine::WatchRows(std::string_view table) {
  watched_ = table;
  changes_ = {};
  sqlite3_update_hook(
      database_,
      [](void* self, int, const char*, const char* changed, sqlite3_int64 row) {
        static_cast<Engine*>(self)->NoteRow(changed, row);
      },
      this);
  // Rows that a look saw inside the transaction are not what they were. (A statement that is
  // prepared again, as the tables have changed, calls this, too.)
  const auto onRollback = [](void* engine) {
    auto* self = static_cast<Engine*>(engine);
    if (self->sawUncommitted_) self->changes_ = {};
    self->sawUncommitted_ = false;
  };
  sqlite3_rollback_hook(database_, onRollback, this);
}

void Engine::NoteRow(std::string_view table, int64_t row) {
  if (changes_.all || table != watched_) return;
  changes_.rows.push_back(row);
  if (changes_.rows.size() > kMaxNotedRows) changes_ = {};
}

RowChanges Engine::TakeRowChanges() {
  const auto version = ReadValue("PRAGMA data_version", {});
  RowChanges taken = std::exchange(changes_, {false, {}});
  if (!version || *version != dataVersion_) taken = {};
  dataVersion_ = version.value_or("");
  sawUncommitted_ = sawUncommitted_ || inTransaction_;
  return taken;
}

std::optional<FileMark> Engine::Mark() {
  struct stat status;
  const auto count = CountOfCommits();
  const bool isThere = count && stat(hostPath_.c_str(), &status) == 0 && IsInPlace();
  if (!isThere || ReadValue("PRAGMA journal_mode", {}) != "delete") return {};
  const auto moment = [](const timespec& time) {
    return static_cast<uint64_t>(time.tv_sec) * 1'000'000'000 + static_cast<uint64_t>(time.tv_nsec);
  };
  return FileMark{device_,
                  inode_,
                  static_cast<uint64_t>(status.st_size),
                  moment(status.st_mtim),
                  moment(status.st_ctim),
                  *count};
}

// A file that is held alone keeps its journal, emptied; SQLite removes it on its way through
// another mode.
std::optional<FileMark> Engine::Settle(const std::function<bool()>& refresh) {
  if (!journalReady_) return {};
  const Trouble former = LastTrouble();  // closing is no reason for what failed before
  FinishCopy();
  Rollback();
  sqlite3_busy_timeout(database_, 0);
  const bool isAlone = !Failed(RunScript("PRAGMA locking_mode=EXCLUSIVE;BEGIN EXCLUSIVE;COMMIT"));
  std::optional<FileMark> mark;
  if (isAlone && refresh() && !Failed(RunScript("PRAGMA journal_mode=DELETE"))) {
    mark = Mark();
    journalReady_ = false;
  }
  RunScript("PRAGMA locking_mode=NORMAL");
  if (mark) RunScript("PRAGMA journal_mode=TRUNCATE;PRAGMA journal_mode=DELETE");
  sqlite3_busy_timeout(database_, kLockWaitMs);
  NoteTrouble(former);
  return mark;
}

}  // namespace store
