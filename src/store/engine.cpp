// The file: opening and closing it, where it lies, copies of it, and why it failed.
#include "store/engine.h"

#include <sqlite3.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <utility>

#include "platform/device_paths.h"
#include "platform/files.h"
#include "platform/posix_files.h"
#include "platform/utf.h"
#include "store/engine_snapshot.h"
#include "store/engine_statement.h"
#include "store/engine_trouble.h"
#include "store/trouble.h"

namespace store {
namespace {

constexpr int kLongestValue = 128 << 20;  // bytes
// The file itself, and what an open engine keeps beside it.
constexpr std::array<std::string_view, 5> kFileSuffixes = {"", "-journal", "-wal", "-shm",
                                                           "-index"};

// What is written to `path` is written into `file`, which need not be there yet.
bool LeadsTo(std::u16string_view path, std::u16string_view file) {
  platform::Files& files = platform::files();
  if (files.IsSameFile(path, file)) return true;
  const size_t pathName = path.rfind(u'\\') + 1;
  const size_t fileName = file.rfind(u'\\') + 1;
  return path.substr(pathName) == file.substr(fileName) &&
         files.IsSameFile(path.substr(0, pathName), file.substr(0, fileName));
}

// Made here and not by the engine, because files() makes it its owner's alone.
bool MakeFile(std::u16string_view path) {
  errno = 0;
  const bool made = platform::files().CreateInPlace(path) != nullptr;
  if (!made) NoteSystemError(errno);
  return made;
}

int OpenDatabase(const std::string& hostPath, sqlite3*& database) {
  const int flags = SQLITE_OPEN_READWRITE | SQLITE_OPEN_NOMUTEX;
  return sqlite3_open_v2(hostPath.c_str(), &database, flags, nullptr);
}

}  // namespace

bool Engine::Available() {
  return sqlite3_initialize() == SQLITE_OK;
}

std::unique_ptr<Engine> Engine::Open(std::u16string_view path, std::unique_ptr<FileLock> lock) {
  const auto hostPath = platform::ToHostPath(path);
  if (!hostPath) return nullptr;
  sqlite3* database = nullptr;
  int opened = OpenDatabase(*hostPath, database);
  // SQLite is content with reading whatever kept it from opening for writing, for the whole
  // session.
  if (opened == SQLITE_OK && sqlite3_db_readonly(database, "main") == 1 &&
      access(hostPath->c_str(), W_OK) == 0) {
    sqlite3_close(database);
    opened = OpenDatabase(*hostPath, database);
  }
  if (opened != SQLITE_OK) {
    const uint32_t attributes = platform::files().Attributes(path).value_or(0);
    const bool isFolder = (attributes & platform::kAttributeDirectory) != 0;
    const bool isDisks = sqlite3_system_errno(database) == EIO;
    NoteTrouble(isFolder ? Trouble::kFolder : isDisks ? Trouble::kDisk : Trouble::kNotOpened);
    sqlite3_close(database);
    return nullptr;
  }
  std::unique_ptr<Engine> engine(new Engine(database, *hostPath, std::move(lock)));
  if (engine->IsInPlace()) return engine;
  NoteTrouble(Trouble::kDisk);
  return nullptr;
}

void Engine::Remove(std::u16string_view path) {
  platform::files().Remove(path);
  RemoveBeside(path);
}

void Engine::RemoveBeside(std::u16string_view path) {
  for (const std::u16string_view suffix : {u"-journal", u"-wal", u"-shm", u"-index"}) {
    platform::files().Remove(std::u16string(path).append(suffix));
  }
}

HRESULT Engine::Compact(std::u16string_view source, std::u16string_view destination) {
  auto engine = Open(source);
  HRESULT result = engine ? engine->CopyTo(destination) : E_FAIL;
  engine.reset();
  // The copy will take the source's name: a journal that stayed there would be taken for its own.
  for (const std::u16string_view journal : {u"-journal", u"-wal"}) {
    if (platform::files().Exists(std::u16string(source) += journal)) result = E_FAIL;
  }
  if (Failed(result)) Remove(destination);
  return result;
}

HRESULT Engine::CopyTo(std::u16string_view path) {
  Remove(path);
  const auto hostPath = platform::ToHostPath(path);
  if (!hostPath || !MakeFile(path)) return E_FAIL;
  HRESULT result = CopyCompacted(*hostPath);
  if (!Failed(result) && !platform::files().SyncToDisk(path)) result = E_FAIL;
  if (Failed(result)) Remove(path);
  return result;
}

void Engine::StartCopy(std::u16string_view path, std::function<void()> onEnd,
                       std::function<void(HRESULT)> finish) {
  FinishCopy();
  Remove(path);
  const auto hostPath = platform::ToHostPath(path);
  if (!hostPath || !MakeFile(path)) {
    finish(E_FAIL);
    return onEnd();
  }
  finishCopy_ = std::move(finish);
  copy_ = std::make_unique<SnapshotCopy>(hostPath_, *hostPath, std::move(onEnd));
  // Without a log the copy holds up what is about to be written.
  if (ReadValue("PRAGMA journal_mode", {}) != "wal") FinishCopy();
}

void Engine::FinishCopy() {
  if (!copy_) return;
  const HRESULT result = std::exchange(copy_, nullptr)->Wait();
  std::exchange(finishCopy_, nullptr)(result);
}

HRESULT Engine::BringLogIn() {
  FinishCopy();  // it reads the log
  return ReadValue("PRAGMA wal_checkpoint(TRUNCATE)", {}) == "0" ? S_OK : E_FAIL;
}

HRESULT Engine::CopyCompacted(const std::string& destination) {
  const StatementLoan statement = Borrow("VACUUM INTO ?");
  if (!statement) return NotPrepared();
  statement->BindText(1, destination);
  const HRESULT result = ResultOf(statement->Step());
  return Failed(result) ? result : LeaveStepsOut(destination);
}

// A copy is made to be small, or to be given away: what was deleted doesn't go with it.
HRESULT Engine::LeaveStepsOut(const std::string& copy) {
  if (!ReadValue("select name from sqlite_schema where name='t_UndoData' collate nocase", {})) {
    return S_OK;
  }
  sqlite3* database = nullptr;
  int code = OpenDatabase(copy, database);
  if (code == SQLITE_OK) {
    code = sqlite3_exec(database, "drop table t_UndoData; vacuum", nullptr, nullptr, nullptr);
  }
  if (code != SQLITE_OK) {
    NoteTrouble(TroubleOf(sqlite3_extended_errcode(database), sqlite3_system_errno(database)));
  }
  sqlite3_close(database);
  return code == SQLITE_OK ? S_OK : E_FAIL;
}

Engine::Engine(sqlite3* database, std::string hostPath, std::unique_ptr<FileLock> lock)
    : lock_(std::move(lock)), database_(database), hostPath_(std::move(hostPath)) {
  sqlite3_busy_timeout(database_, kLockWaitMs);
  // No view and no trigger of the file's runs, and no value is larger than memory can hold.
  sqlite3_limit(database_, SQLITE_LIMIT_LENGTH, kLongestValue);
  for (const int option : {SQLITE_DBCONFIG_ENABLE_TRIGGER, SQLITE_DBCONFIG_ENABLE_VIEW,
                           SQLITE_DBCONFIG_TRUSTED_SCHEMA}) {
    sqlite3_db_config(database_, option, 0, nullptr);
  }
  struct stat status;
  if (stat(hostPath_.c_str(), &status) == 0) {
    device_ = status.st_dev;
    inode_ = status.st_ino;
  }
  // No row of a diary into a temporary file; and a commit has returned only when the disk has it,
  // also by a rollback journal, whose removal the folder has to know.
  RunScript("PRAGMA temp_store=MEMORY; PRAGMA synchronous=EXTRA");
}

// A reader in another program may keep the file from its rollback form. It is right all the same.
Engine::~Engine() {
  Close();
  sqlite3_close(database_);
}

// What takes the file's place is empty: every statement on a table fails there.
void Engine::Close() {
  FinishCopy();  // its connection would keep the file in the log's form
  Rollback();
  if (inCharge_) RunScript("PRAGMA journal_mode=DELETE");
  sqlite3_close(database_);
  lock_.reset();
  sqlite3_open_v2(":memory:", &database_, SQLITE_OPEN_READWRITE | SQLITE_OPEN_NOMUTEX, nullptr);
  inCharge_ = journalReady_ = false;
  settle_ = nullptr;
  onWrite_ = nullptr;
}

void Engine::Become(Engine& other) {
  idle_.clear();
  other.idle_.clear();
  tables_.clear();
  std::swap(lock_, other.lock_);
  std::swap(database_, other.database_);
  std::swap(hostPath_, other.hostPath_);
  std::swap(device_, other.device_);
  std::swap(inode_, other.inode_);
  std::swap(settle_, other.settle_);
  std::swap(onWrite_, other.onWrite_);
  std::swap(inCharge_, other.inCharge_);
  std::swap(journalReady_, other.journalReady_);
  WatchRows(watched_);
}

std::optional<bool> Engine::IsOpenFile(const std::string& hostPath) const {
  struct stat status;
  if (stat(hostPath.c_str(), &status) == 0) {
    return status.st_dev == device_ && status.st_ino == inode_;
  }
  return platform::MeansAbsent(errno) ? std::optional(false) : std::nullopt;
}

bool Engine::WasOpenedAs(std::u16string_view path) const {
  return platform::ToHostPath(path) == hostPath_;
}

std::u16string Engine::Path() const {
  return platform::FromHostPath(hostPath_).value_or(u"");
}

bool Engine::IsInPlace() const {
  return IsOpenFile(hostPath_).value_or(false);
}

HRESULT Engine::ConfirmPlace() {
  return journalReady_ ? BeginWrite() : S_OK;
}

std::optional<std::u16string> Engine::Whereabouts() {
  const auto path = lock_ ? lock_->Whereabouts() : std::nullopt;
  // A log that lies under the former name would be lost to the file.
  if (!path || Failed(BringLogIn())) return {};
  return platform::FromHostPath(*path);
}

bool Engine::Keeps(std::u16string_view path) const {
  // Wherever it lies now, and under whatever name.
  if (IsOpenFile(platform::ToHostPath(path).value_or("")).value_or(false)) return true;
  // Of a link this is the file that it leads to, and beside that one lies all the rest.
  const std::string_view hostFile = sqlite3_db_filename(database_, "main");
  const std::u16string file = platform::FromHostPath(hostFile).value_or(u"");
  for (const std::string_view suffix : kFileSuffixes) {
    if (LeadsTo(path, file + platform::ToUtf16(suffix))) return true;
  }
  std::u16string own = Path();
  while (own.rfind(u'\\') != std::u16string::npos) {
    own.resize(own.rfind(u'\\'));
    if (platform::files().IsSameFile(path, own)) return true;
  }
  return false;
}

void Engine::TakeCharge() {
  inCharge_ = true;
  const std::u16string path = Path();
  for (const std::string_view suffix : kFileSuffixes) {
    platform::files().Narrow(path + platform::ToUtf16(suffix));
  }
}

HRESULT Engine::ResultOf(int code) {
  if (code == SQLITE_OK || code == SQLITE_DONE || code == SQLITE_ROW) return S_OK;
  NoteTrouble(TroubleOf(sqlite3_extended_errcode(database_), sqlite3_system_errno(database_)));
  return code == SQLITE_NOMEM ? E_OUTOFMEMORY : E_FAIL;
}

HRESULT Engine::RunScript(const std::string& sql) {
  return ResultOf(sqlite3_exec(database_, sql.c_str(), nullptr, nullptr, nullptr));
}

}  // namespace store
