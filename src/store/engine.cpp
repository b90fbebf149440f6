// Statements are prepared once for each shape and kept: a view reads its rows by thirty selects
// that differ in the id alone.
#include "store/engine.h"

#include <sqlite3.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <iterator>
#include <random>
#include <utility>

#include "core/text.h"
#include "platform/device_paths.h"
#include "platform/files.h"
#include "platform/host.h"
#include "platform/utf.h"
#include "store/sql_text.h"
#include "store/trouble.h"

namespace store {
namespace {

constexpr int kLockWaitMs = 2000;
constexpr size_t kMaxIdleStatements = 32;
// Beyond these reading all rows takes no longer than looking for each.
constexpr size_t kMaxNotedRows = 256;
// The file itself, and what an open engine keeps beside it.
constexpr std::array<std::string_view, 4> kFileSuffixes = {"", "-journal", "-wal", "-shm"};

// `systemError` is the one of the last call that failed, so it tells of those failures alone.
Trouble TroubleOf(int extendedCode, int systemError) {
  const int code = extendedCode & 0xFF;
  const bool isSystems = code == SQLITE_IOERR || code == SQLITE_CANTOPEN;
  const bool hasNoRoom = systemError == ENOSPC || systemError == EDQUOT || systemError == EFBIG;
  const bool tookPart = extendedCode == SQLITE_IOERR_WRITE && systemError == 0;
  if ((isSystems && hasNoRoom) || tookPart) return Trouble::kDiskFull;
  switch (code) {
    case SQLITE_FULL:
      return Trouble::kDiskFull;
    case SQLITE_READONLY:
    case SQLITE_CANTOPEN:  // the file is open: what could not be made is a journal beside it
      return Trouble::kReadOnly;
    case SQLITE_BUSY:
    case SQLITE_LOCKED:
      return Trouble::kBusy;
    case SQLITE_CORRUPT:
      return Trouble::kDamaged;
  }
  return Trouble::kUnknown;
}

// The statements of tables. Tables and columns are named by the program, never by its user. Made
// anew for every row, so without a text of its own for every name.
void AppendSeek(std::string& sql, std::u16string_view table, const Field& key) {
  sql += " from ";
  platform::AppendUtf8(table, sql);
  sql += " where ";
  platform::AppendUtf8(key.column, sql);
  sql += " = ? limit 1";
}

void AppendAtFirstRow(std::string& sql, std::u16string_view table, const Field& key) {
  sql += " where rowid = (select rowid";
  AppendSeek(sql, table, key);
  sql += ')';
}

// "a,b,c" of all items; `append` writes one of them.
template <typename Items, typename Append>
void AppendList(std::string& sql, const Items& items, Append append) {
  bool first = true;
  for (const auto& item : items) {
    if (!std::exchange(first, false)) sql += ',';
    append(item);
  }
}

// Only a file that is not ours has such a column; it is written as text.
void TellForeignType(const Column& column) {
  const std::string text = "type=" + std::to_string(static_cast<int>(column.type)) +
                           ",colsize=" + std::to_string(column.length);
  platform::ShowNotice(platform::ToUtf16(text), u"debug", platform::Icon::kNone);
}

// What is written to `path` is written into `file`, which need not be there yet.
bool LeadsTo(std::u16string_view path, std::u16string_view file) {
  platform::Files& files = platform::files();
  if (files.IsSameFile(path, file)) return true;
  const size_t pathName = path.rfind(u'\\') + 1;
  const size_t fileName = file.rfind(u'\\') + 1;
  return path.substr(pathName) == file.substr(fileName) &&
         files.IsSameFile(path.substr(0, pathName), file.substr(0, fileName));
}

// Takes away what others than the owner may do; another's file is left alone.
void NarrowRights(const std::string& hostPath) {
  struct stat status;
  if (stat(hostPath.c_str(), &status) != 0 || status.st_uid != geteuid()) return;
  if ((status.st_mode & (S_IRWXG | S_IRWXO)) != 0) {
    chmod(hostPath.c_str(), status.st_mode & S_IRWXU);
  }
}

}  // namespace

// One prepared statement and the names of the columns that it yields.
class Statement {
 public:
  Statement(sqlite3_stmt* prepared, std::string_view sql) : prepared_(prepared), sql_(sql) {
    const int count = sqlite3_column_count(prepared);
    for (int i = 0; i < count; ++i) {
      names_.push_back(platform::ToUtf16(sqlite3_column_name(prepared, i)));
    }
  }
  ~Statement() { sqlite3_finalize(prepared_); }
  Statement(const Statement&) = delete;
  Statement& operator=(const Statement&) = delete;

  sqlite3_stmt* Get() const { return prepared_; }
  const std::string& Sql() const { return sql_; }

  // Position of a column, tried at `expected` first; -1 if the select has none of that name.
  int Find(std::u16string_view name, size_t expected) const {
    if (expected < names_.size() && names_[expected] == name) return static_cast<int>(expected);
    for (size_t i = 0; i < names_.size(); ++i) {
      if (SameName(names_[i], name)) return static_cast<int>(i);
    }
    return -1;
  }

  // `bytes` need not live on.
  void BindText(int parameter, std::string_view bytes) {
    sqlite3_bind_text(prepared_, parameter, bytes.data(), static_cast<int>(bytes.size()),
                      SQLITE_TRANSIENT);
  }

  // As the column's declaration wants it: cut to its length, or converted to a number.
  void BindValue(int parameter, const Column& column, std::u16string_view text) {
    if (column.type == ColumnType::kInteger) {
      sqlite3_bind_int(prepared_, parameter, core::ToInt32(text));
    } else if (column.type == ColumnType::kFloat) {
      sqlite3_bind_double(prepared_, parameter, ReadFloat(text));
    } else {
      if (column.length > 0) text = text.substr(0, column.length);
      utf8_.clear();
      platform::AppendUtf8(text, utf8_);
      BindText(parameter, utf8_);
    }
  }

  void Read(int column, std::optional<std::u16string>& text) const {
    switch (sqlite3_column_type(prepared_, column)) {
      case SQLITE_NULL:
        text.reset();
        break;
      case SQLITE_FLOAT:
        text = FloatText(sqlite3_column_double(prepared_, column));
        break;
      default: {
        const auto bytes = reinterpret_cast<const char*>(sqlite3_column_text(prepared_, column));
        const int size = sqlite3_column_bytes(prepared_, column);
        if (text) {
          text->clear();  // keeps its memory for the next row
        } else {
          text.emplace();
        }
        if (bytes) platform::AppendUtf16({bytes, static_cast<size_t>(size)}, *text);
      }
    }
  }

  void Reset() {
    sqlite3_reset(prepared_);
    sqlite3_clear_bindings(prepared_);
  }

 private:
  sqlite3_stmt* prepared_;
  std::string sql_;
  std::vector<std::u16string> names_;
  std::string utf8_;  // of the text that is being bound; keeps its memory for the next
};

void GiveBack::operator()(Statement* statement) const {
  statement->Reset();
  auto& idle = engine->idle_;
  if (idle.size() == kMaxIdleStatements) idle.erase(idle.begin());
  idle.emplace_back(statement);
}

RowSet::RowSet(Engine& engine, StatementLoan statement, std::vector<std::string> literals)
    : engine_(engine), statement_(std::move(statement)), literals_(std::move(literals)) {
  ++engine_.openRowSets_;
}

RowSet::~RowSet() {
  --engine_.openRowSets_;
}

// The first row is read at once: a select that cannot run tells it here and not at its first row,
// and Count counts under the same view of the data.
HRESULT RowSet::Run() {
  for (size_t i = 0; i < literals_.size(); ++i) {
    statement_->BindText(static_cast<int>(i) + 1, literals_[i]);
  }
  Step();
  atFirstRow_ = true;
  return Failed(state_) ? state_ : S_OK;
}

void RowSet::Step() {
  const int code = sqlite3_step(statement_->Get());
  state_ = code == SQLITE_DONE ? DB_S_ENDOFROWSET : engine_.ResultOf(code);
}

HRESULT RowSet::Bind(std::span<const std::u16string_view> columns) {
  positions_.clear();
  for (const std::u16string_view column : columns) {
    const int position = statement_->Find(column, positions_.size());
    if (position < 0) return E_FAIL;
    positions_.push_back(position);
  }
  return S_OK;
}

HRESULT RowSet::Next(ColumnTexts row) {
  if (!atFirstRow_ && state_ == S_OK) Step();
  atFirstRow_ = false;
  if (state_ != S_OK) return state_;
  const size_t count = std::min(row.size(), positions_.size());
  for (size_t i = 0; i < count; ++i) statement_->Read(positions_[i], row[i]);
  return S_OK;
}

int64_t RowSet::Number(int column) const {
  return sqlite3_column_int64(statement_->Get(), column);
}

HRESULT RowSet::Restart() {
  if (atFirstRow_) return S_OK;
  sqlite3_reset(statement_->Get());
  return Run();
}

std::optional<int> RowSet::Count() {
  const StatementLoan counting = engine_.Borrow("select count(*) from (" + statement_->Sql() + ")");
  if (!counting) return {};
  for (size_t i = 0; i < literals_.size(); ++i) {
    counting->BindText(static_cast<int>(i) + 1, literals_[i]);
  }
  if (sqlite3_step(counting->Get()) != SQLITE_ROW) return {};
  return sqlite3_column_int(counting->Get(), 0);
}

// A savepoint and no transaction: it also stands inside one.
ReadView::ReadView(Engine& engine) : engine_(engine) {
  engine_.RunScript("SAVEPOINT view");
}

ReadView::~ReadView() {
  engine_.RunScript("RELEASE view");
}

bool Engine::Available() {
  return sqlite3_initialize() == SQLITE_OK;
}

std::unique_ptr<Engine> Engine::Open(std::u16string_view path, std::unique_ptr<FileLock> lock) {
  const auto hostPath = platform::ToHostPath(path);
  if (!hostPath) return nullptr;
  sqlite3* database = nullptr;
  const int flags = SQLITE_OPEN_READWRITE | SQLITE_OPEN_NOMUTEX;
  if (sqlite3_open_v2(hostPath->c_str(), &database, flags, nullptr) != SQLITE_OK) {
    const uint32_t attributes = platform::files().Attributes(path).value_or(0);
    const bool isFolder = (attributes & platform::kAttributeDirectory) != 0;
    NoteTrouble(isFolder ? Trouble::kFolder : Trouble::kNotOpened);
    sqlite3_close(database);
    return nullptr;
  }
  return std::unique_ptr<Engine>(new Engine(database, *hostPath, std::move(lock)));
}

void Engine::Remove(std::u16string_view path) {
  for (const std::string_view suffix : kFileSuffixes) {
    platform::files().Remove(std::u16string(path) + platform::ToUtf16(suffix));
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
  // Made here and not by the engine, because files() makes it its owner's alone.
  if (!hostPath || !platform::files().Create(path)) return E_FAIL;
  HRESULT result = CopyCompacted(*hostPath);
  if (!Failed(result) && !platform::files().SyncToDisk(path)) result = E_FAIL;
  if (Failed(result)) Remove(path);
  return result;
}

HRESULT Engine::CopyCompacted(const std::string& destination) {
  const StatementLoan statement = Borrow("VACUUM INTO ?");
  if (!statement) return E_FAIL;
  statement->BindText(1, destination);
  return ResultOf(sqlite3_step(statement->Get()));
}

Engine::Engine(sqlite3* database, std::string hostPath, std::unique_ptr<FileLock> lock)
    : lock_(std::move(lock)), database_(database), hostPath_(std::move(hostPath)) {
  sqlite3_busy_timeout(database_, kLockWaitMs);
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
  idle_.clear();
  tables_.clear();
  if (inCharge_) RunScript("PRAGMA journal_mode=DELETE");
  sqlite3_close(database_);
  lock_.reset();
  sqlite3_open_v2(":memory:", &database_, SQLITE_OPEN_READWRITE | SQLITE_OPEN_NOMUTEX, nullptr);
  inCharge_ = journalReady_ = false;
  settle_ = nullptr;
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
  std::swap(inCharge_, other.inCharge_);
  std::swap(journalReady_, other.journalReady_);
  WatchRows(watched_);
}

bool Engine::IsOpenFile(const std::string& hostPath) const {
  struct stat status;
  return stat(hostPath.c_str(), &status) == 0 && status.st_dev == device_ &&
         status.st_ino == inode_;
}

bool Engine::IsInPlace() const {
  return IsOpenFile(hostPath_);
}

HRESULT Engine::ConfirmPlace() {
  return journalReady_ ? BeginWrite() : S_OK;
}

std::optional<std::u16string> Engine::Whereabouts() {
  const auto path = lock_ ? lock_->Whereabouts() : std::nullopt;
  // A log that lies under the former name would be lost to the file.
  if (!path || ReadValue("PRAGMA wal_checkpoint(TRUNCATE)", {}) != "0") return {};
  return platform::FromHostPath(*path);
}

bool Engine::Keeps(std::u16string_view path) const {
  // Wherever it lies now, and under whatever name.
  if (IsOpenFile(platform::ToHostPath(path).value_or(""))) return true;
  // Of a link this is the file that it leads to, and beside that one lies all the rest.
  const std::string_view hostFile = sqlite3_db_filename(database_, "main");
  const std::u16string file = platform::FromHostPath(hostFile).value_or(u"");
  for (const std::string_view suffix : kFileSuffixes) {
    if (LeadsTo(path, file + platform::ToUtf16(suffix))) return true;
  }
  std::u16string own = platform::FromHostPath(hostPath_).value_or(u"");
  while (own.rfind(u'\\') != std::u16string::npos) {
    own.resize(own.rfind(u'\\'));
    if (platform::files().IsSameFile(path, own)) return true;
  }
  return false;
}

void Engine::TakeCharge() {
  inCharge_ = true;
  for (const std::string_view suffix : kFileSuffixes) NarrowRights(hostPath_ + std::string(suffix));
}

HRESULT Engine::BeginTransaction() {
  const HRESULT ready = BeginWrite();
  return Failed(ready) ? ready : RunScript("BEGIN IMMEDIATE");
}

HRESULT Engine::Commit() {
  const HRESULT ready = BeginWrite();
  const HRESULT result = Failed(ready) ? ready : RunScript("COMMIT");
  if (!sqlite3_get_autocommit(database_)) RunScript("ROLLBACK");
  return result;
}

// The log's frames carry a running checksum: what a power cut leaves of an unsynced log is read up
// to the first frame that is missing. A rollback journal promises no such thing, so there every
// write goes on waiting for the disk.
HRESULT Engine::BeginBurst() {
  const HRESULT ready = BeginWrite();
  refusing_ = Failed(ready);
  if (refusing_) return ready;
  inBurst_ = ReadValue("PRAGMA journal_mode", {}) == "wal";
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
  // Rows that a look saw inside the transaction are not what they were.
  sqlite3_rollback_hook(
      database_, [](void* self) { static_cast<Engine*>(self)->changes_ = {}; }, this);
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
  return taken;
}

HRESULT Engine::Execute(std::u16string_view sql) {
  const HRESULT ready = BeginWrite();
  if (Failed(ready)) return ready;
  changes_ = {};
  const std::string text = platform::ToUtf8(sql);
  const auto change = ReadColumnChange(text);
  const HRESULT result = change ? ChangeColumn(*change) : RunScript(text);
  idle_.clear();
  tables_.clear();
  return result;
}

HRESULT Engine::OpenRows(std::u16string_view sql, std::unique_ptr<RowSet>& rows) {
  rows.reset();
  SelectShape shape = LiftLiterals(sql);
  StatementLoan statement = Borrow(shape.sql);
  if (!statement) return E_FAIL;
  auto opened = std::make_unique<RowSet>(*this, std::move(statement), std::move(shape.literals));
  const HRESULT result = opened->Run();
  if (!Failed(result)) rows = std::move(opened);
  return result;
}

HRESULT Engine::ReadFirst(std::u16string_view table, const Field& key,
                          std::span<const std::u16string_view> columns, ColumnTexts row) {
  std::string sql = "select ";
  AppendList(sql, columns,
             [&sql](std::u16string_view column) { platform::AppendUtf8(column, sql); });
  AppendSeek(sql, table, key);
  const StatementLoan statement = Borrow(sql);
  if (!statement) return E_FAIL;
  const HRESULT bound = Bind(*statement, ColumnsOf(table), {&key, 1});
  if (Failed(bound)) return bound;
  const int code = sqlite3_step(statement->Get());
  if (code != SQLITE_ROW) return code == SQLITE_DONE ? DB_E_NOTFOUND : ResultOf(code);
  const size_t count = std::min(row.size(), columns.size());
  for (size_t i = 0; i < count; ++i) statement->Read(static_cast<int>(i), row[i]);
  return S_OK;
}

HRESULT Engine::UpdateFirst(std::u16string_view table, const Field& key,
                            std::span<const Field> fields) {
  std::string sql = "update ";
  platform::AppendUtf8(table, sql);
  sql += " set ";
  AppendList(sql, fields, [&sql](const Field& field) {
    platform::AppendUtf8(field.column, sql);
    sql += "=?";
  });
  AppendAtFirstRow(sql, table, key);
  std::vector<Field> all(fields.begin(), fields.end());
  all.push_back(key);
  return WriteFirst(sql, table, all);
}

HRESULT Engine::DeleteFirst(std::u16string_view table, const Field& key) {
  std::string sql = "delete from ";
  platform::AppendUtf8(table, sql);
  AppendAtFirstRow(sql, table, key);
  return WriteFirst(sql, table, {&key, 1});
}

HRESULT Engine::WriteFirst(std::string_view sql, std::u16string_view table,
                           std::span<const Field> fields) {
  const HRESULT ready = BeginWrite();
  if (Failed(ready)) return ready;
  const StatementLoan statement = Borrow(sql);
  if (!statement) return E_FAIL;
  HRESULT result = Bind(*statement, ColumnsOf(table), fields);
  if (!Failed(result)) result = ResultOf(sqlite3_step(statement->Get()));
  if (Failed(result)) return result;
  return sqlite3_changes(database_) == 0 ? DB_E_NOTFOUND : S_OK;
}

HRESULT Engine::Insert(std::u16string_view table, std::span<const Field> fields) {
  std::string sql = "insert into ";
  platform::AppendUtf8(table, sql);
  sql += " (";
  AppendList(sql, fields, [&sql](const Field& field) { platform::AppendUtf8(field.column, sql); });
  sql += ") values (";
  AppendList(sql, fields, [&sql](const Field&) { sql += '?'; });
  sql += ')';
  const HRESULT ready = BeginWrite();
  if (Failed(ready)) return ready;
  const StatementLoan statement = Borrow(sql);
  if (!statement) return E_FAIL;
  const Columns& columns = ColumnsOf(table);
  for (const Column& column : columns) {
    if (column.type == ColumnType::kBytes) TellForeignType(column);
  }
  const HRESULT result = Bind(*statement, columns, fields);
  return Failed(result) ? result : ResultOf(sqlite3_step(statement->Get()));
}

HRESULT Engine::ResultOf(int code) {
  if (code == SQLITE_OK || code == SQLITE_DONE || code == SQLITE_ROW) return S_OK;
  NoteTrouble(TroubleOf(sqlite3_extended_errcode(database_), sqlite3_system_errno(database_)));
  return code == SQLITE_NOMEM ? E_OUTOFMEMORY : E_FAIL;
}

StatementLoan Engine::Borrow(std::string_view sql) {
  const auto known = std::find_if(idle_.rbegin(), idle_.rend(),
                                  [sql](const auto& statement) { return statement->Sql() == sql; });
  if (known != idle_.rend()) {
    StatementLoan loan(known->release(), GiveBack{this});
    idle_.erase(std::next(known).base());
    return loan;
  }
  sqlite3_stmt* prepared = nullptr;
  ResultOf(sqlite3_prepare_v3(database_, sql.data(), static_cast<int>(sql.size()),
                              SQLITE_PREPARE_PERSISTENT, &prepared, nullptr));
  if (!prepared) return StatementLoan(nullptr, GiveBack{this});
  return StatementLoan(new Statement(prepared, sql), GiveBack{this});
}

HRESULT Engine::RunScript(const std::string& sql) {
  return ResultOf(sqlite3_exec(database_, sql.c_str(), nullptr, nullptr, nullptr));
}

// The first value that a statement yields.
std::optional<std::string> Engine::ReadValue(std::string_view sql,
                                             std::initializer_list<std::string_view> arguments) {
  const StatementLoan statement = Borrow(sql);
  if (!statement) return {};
  int parameter = 0;
  for (const std::string_view argument : arguments) statement->BindText(++parameter, argument);
  if (sqlite3_step(statement->Get()) != SQLITE_ROW) return {};
  std::optional<std::u16string> value;
  statement->Read(0, value);
  return platform::ToUtf8(value.value_or(u""));
}

HRESULT Engine::ChangeColumn(const ColumnChange& change) {
  HRESULT result = RunScript("PRAGMA writable_schema=ON; BEGIN IMMEDIATE");
  if (!Failed(result)) result = ReplaceDeclaration(change);
  if (!Failed(result)) result = Commit();
  if (!sqlite3_get_autocommit(database_)) RunScript("ROLLBACK");
  RunScript("PRAGMA writable_schema=OFF");
  return result;
}

// The length stands in the table's create statement and nowhere else, so it is changed there: no
// row is touched, however many there are. The raised version makes every connection read anew.
HRESULT Engine::ReplaceDeclaration(const ColumnChange& change) {
  const auto created = ReadValue(
      "select sql from sqlite_schema where type='table' and name=? collate nocase", {change.table});
  const auto declared =
      ReadValue("select type from pragma_table_info(?) where name=? collate nocase",
                {change.table, change.column});
  const auto version = ReadValue("select schema_version + 1 from pragma_schema_version", {});
  if (!created || !declared || !version) return E_FAIL;
  const auto changed = WithDeclaration(*created, change.column, *declared, change.declaration);
  const StatementLoan update =
      Borrow("update sqlite_schema set sql=? where type='table' and name=? collate nocase");
  if (!changed || !update) return E_FAIL;
  update->BindText(1, *changed);
  update->BindText(2, change.table);
  const HRESULT result = ResultOf(sqlite3_step(update->Get()));
  return Failed(result) ? result : RunScript("PRAGMA schema_version=" + *version);
}

// Empty if the table cannot be read.
Engine::Columns Engine::ReadColumns(std::u16string_view table) {
  Columns columns;
  const StatementLoan all = Borrow("select * from " + platform::ToUtf8(table) + " limit 0");
  if (!all) return columns;
  const int count = sqlite3_column_count(all->Get());
  for (int i = 0; i < count; ++i) {
    const char* const declaration = sqlite3_column_decltype(all->Get(), i);
    columns.push_back(ReadDeclaration(platform::ToUtf16(sqlite3_column_name(all->Get(), i)),
                                      declaration ? declaration : ""));
  }
  return columns;
}

const Engine::Columns& Engine::ColumnsOf(std::u16string_view table) {
  auto known = tables_.find(table);
  if (known == tables_.end() || known->second.empty()) {
    known = tables_.insert_or_assign(std::u16string(table), ReadColumns(table)).first;
  }
  return known->second;
}

// Fields mostly come in the order of the columns, so each is looked for behind the one before it.
HRESULT Engine::Bind(Statement& statement, const Columns& columns, std::span<const Field> fields) {
  int parameter = 0;
  size_t next = 0;
  for (const Field& field : fields) {
    size_t tried = 0;
    while (tried < columns.size() && !SameName(columns[next % columns.size()].name, field.column)) {
      ++next;
      ++tried;
    }
    if (tried == columns.size()) return E_FAIL;
    const Column& column = columns[next++ % columns.size()];
    if (field.text) statement.BindValue(parameter + 1, column, *field.text);
    ++parameter;
  }
  return S_OK;
}

// Where every write begins, and before it has a statement: moving to another file ends them all.
HRESULT Engine::BeginWrite() {
  if (refusing_ || !IsInPlace()) {
    NoteTrouble(Trouble::kDisplaced);
    const bool mayMove = !refusing_ && !inBurst_ && openRowSets_ == 0 &&
                         sqlite3_get_autocommit(database_) != 0 && settle_;
    if (!mayMove || !settle_()) return E_FAIL;
  }
  PrepareJournal();
  return S_OK;
}

// The file and its log bear one stamp: a log that is left beside another file is known by it.
void Engine::SwitchToLog() {
  const std::string stamp =
      "PRAGMA user_version=" + std::to_string(std::random_device{}() >> 1) + ";";
  RunScript(stamp + "PRAGMA journal_mode=WAL;" + stamp);
}

// While a row set of ours is open the journal cannot be switched: that write goes through a
// rollback journal, which is as safe and only slower.
void Engine::PrepareJournal() {
  if (!IsInPlace()) return;
  if (!inCharge_) TakeCharge();
  if (journalReady_ || openRowSets_ > 0) return;
  if (ReadValue("PRAGMA journal_mode", {}) != "wal") SwitchToLog();
  journalReady_ = true;
}

}  // namespace store
