// The view is a read transaction of the log, which writers neither wait for nor disturb, and which
// is open before the thread starts.
#include "store/engine_snapshot.h"

#include <sqlite3.h>

#include <filesystem>
#include <string_view>
#include <system_error>
#include <utility>

#include "platform/device_paths.h"
#include "store/engine.h"
#include "store/engine_trouble.h"

namespace store {
namespace {

bool Runs(sqlite3* database, const char* sql) {
  return sqlite3_exec(database, sql, nullptr, nullptr, nullptr) == SQLITE_OK;
}

// A copy must not take the last of the room that the diary needs for itself.
bool HasRoom(const std::string& source, const std::string& destination) {
  std::error_code error;
  const uintmax_t size = std::filesystem::file_size(source, error);
  const auto folder = std::filesystem::path(destination).parent_path();
  const auto space = std::filesystem::space(folder, error);
  return error || space.available / 2 >= size;
}

bool IsWhole(sqlite3* database) {
  bool isOk = false;
  const auto look = [](void* ok, int, char** values, char**) {
    *static_cast<bool*>(ok) = values[0] != nullptr && std::string_view(values[0]) == "ok";
    return 0;
  };
  return sqlite3_exec(database, "PRAGMA integrity_check(1)", look, &isOk, nullptr) == SQLITE_OK &&
         isOk;
}

}  // namespace

SnapshotCopy::SnapshotCopy(const std::string& source, const std::string& destination,
                           std::function<void()> onEnd)
    : destination_(destination) {
  const bool hasRoom = HasRoom(source, destination);
  if (!hasRoom) trouble_ = Trouble::kDiskFull;
  source_ = Open(source, SQLITE_OPEN_READONLY);
  copy_ = Open(destination, SQLITE_OPEN_READWRITE);
  if (!hasRoom || !TakeView()) {
    onEnd();
    return;
  }
  const auto run = [this, onEnd = std::move(onEnd)] {
    Copy();
    onEnd();
  };
  try {
    thread_ = std::thread(run);
  } catch (const std::system_error&) {
    run();  // no thread to be had
  }
}

SnapshotCopy::~SnapshotCopy() {
  if (thread_.joinable()) thread_.join();
}

HRESULT SnapshotCopy::Wait() {
  if (thread_.joinable()) thread_.join();
  if (copied_) return S_OK;
  source_.reset();
  copy_.reset();
  Engine::Remove(platform::FromHostPath(destination_).value_or(u""));
  NoteTrouble(trouble_);
  return E_FAIL;
}

void SnapshotCopy::Close::operator()(sqlite3* database) const {
  sqlite3_close(database);
}

SnapshotCopy::Connection SnapshotCopy::Open(const std::string& path, int flags) {
  sqlite3* database = nullptr;
  sqlite3_open_v2(path.c_str(), &database, flags | SQLITE_OPEN_NOMUTEX, nullptr);
  sqlite3_busy_timeout(database, kLockWaitMs);
  return Connection(database);
}

bool SnapshotCopy::TakeView() {
  return Runs(source_.get(), "BEGIN; SELECT count(*) FROM sqlite_schema") || Fail(source_.get());
}

// The copy comes in the log's form, as its source is, and is brought to the rollback form: one
// file, complete in itself.
void SnapshotCopy::Copy() {
  copied_ = CopyPages() && IsWhole(copy_.get());
  if (!copied_ && trouble_ == Trouble::kUnknown) trouble_ = Trouble::kDamaged;
  source_.reset();
  copy_.reset();
}

bool SnapshotCopy::CopyPages() {
  sqlite3_backup* backup = sqlite3_backup_init(copy_.get(), "main", source_.get(), "main");
  if (backup == nullptr) return Fail(copy_.get());
  sqlite3_backup_step(backup, -1);
  const bool copied = sqlite3_backup_finish(backup) == SQLITE_OK;
  const bool isOneFile = copied && Runs(copy_.get(), "PRAGMA journal_mode=DELETE");
  if (!isOneFile) return Fail(copy_.get());
  // What was deleted doesn't go with it; but better a copy with it than none.
  Runs(copy_.get(), "PRAGMA secure_delete=ON; DROP TABLE IF EXISTS t_UndoData");
  return true;
}

bool SnapshotCopy::Fail(sqlite3* database) {
  trouble_ = TroubleOf(sqlite3_extended_errcode(database), sqlite3_system_errno(database));
  return false;
}

}  // namespace store
