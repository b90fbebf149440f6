// Statements are prepared once for each shape and kept: a view reads its rows by thirty selects
// that differ in the id alone.
#include "store/engine_statement.h"

#include <sqlite3.h>

#include <algorithm>
#include <iterator>
#include <utility>

#include "core/text.h"
#include "platform/utf.h"
#include "store/engine.h"
#include "store/sql_text.h"

namespace store {
namespace {

constexpr size_t kMaxIdleStatements = 32;
// Of a text without a declared length, in 16-bit units.
constexpr size_t kLongestText = 65536;
constexpr size_t kLongestCharacter = 4;  // in bytes

size_t LongestOf(const char* declaration) {
  const size_t declared = declaration ? ReadDeclaration({}, declaration).length : 0;
  return declared > 0 ? std::min(declared, kLongestText) : kLongestText;
}

}  // namespace

Statement::Statement(sqlite3_stmt* prepared, std::string_view sql)
    : prepared_(prepared), sql_(sql) {
  const int count = sqlite3_column_count(prepared);
  for (int i = 0; i < count; ++i) {
    const char* const name = sqlite3_column_name(prepared, i);
    names_.push_back(platform::ToUtf16(name ? name : ""));
    longest_.push_back(LongestOf(sqlite3_column_decltype(prepared, i)));
  }
}

Statement::~Statement() {
  sqlite3_finalize(prepared_);
}

int Statement::Find(std::u16string_view name, size_t expected) const {
  if (expected < names_.size() && names_[expected] == name) return static_cast<int>(expected);
  for (size_t i = 0; i < names_.size(); ++i) {
    if (SameName(names_[i], name)) return static_cast<int>(i);
  }
  return -1;
}

int Statement::Step() {
  return fault_ != SQLITE_OK ? fault_ : sqlite3_step(prepared_);
}

void Statement::NoteFault(int bound) {
  if (fault_ == SQLITE_OK) fault_ = bound;
}

void Statement::BindText(int parameter, std::string_view bytes) {
  NoteFault(sqlite3_bind_text64(prepared_, parameter, bytes.data(), bytes.size(), SQLITE_TRANSIENT,
                                SQLITE_UTF8));
}

void Statement::BindValue(int parameter, const Column& column, std::u16string_view text) {
  if (column.type == ColumnType::kInteger) {
    NoteFault(sqlite3_bind_int(prepared_, parameter, core::ToInt32(text)));
  } else if (column.type == ColumnType::kFloat) {
    NoteFault(sqlite3_bind_double(prepared_, parameter, ReadFloat(text)));
  } else {
    if (column.length > 0) text = text.substr(0, column.length);
    utf8_.clear();
    platform::AppendUtf8(text, utf8_);
    BindText(parameter, utf8_);
  }
}

bool Statement::Read(int column, std::optional<std::u16string>& text) const {
  switch (sqlite3_column_type(prepared_, column)) {
    case SQLITE_NULL:
      text.reset();
      break;
    case SQLITE_FLOAT:
      text = core::FloatText(sqlite3_column_double(prepared_, column));
      break;
    default: {
      const auto bytes = reinterpret_cast<const char*>(sqlite3_column_text(prepared_, column));
      if (!bytes) return false;
      const auto size = static_cast<size_t>(sqlite3_column_bytes(prepared_, column));
      const size_t longest = longest_[static_cast<size_t>(column)];
      if (text) {
        text->clear();  // keeps its memory for the next row
      } else {
        text.emplace();
      }
      // A character that is cut in two stands beyond the longest text.
      platform::AppendUtf16({bytes, std::min(size, (longest + 1) * kLongestCharacter)}, *text);
      if (text->size() > longest) text->resize(longest);
    }
  }
  return true;
}

void Statement::Reset() {
  sqlite3_reset(prepared_);
  sqlite3_clear_bindings(prepared_);
  fault_ = SQLITE_OK;
}

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

// The first row is read at once: a select that cannot run fails here and not at its first row,
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
  const int code = statement_->Step();
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
  for (size_t i = 0; i < count && state_ == S_OK; ++i) {
    if (!statement_->Read(positions_[i], row[i])) state_ = E_OUTOFMEMORY;
  }
  return state_;
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
  if (counting->Step() != SQLITE_ROW) return {};
  return sqlite3_column_int(counting->Get(), 0);
}

// A savepoint and no transaction: it also stands inside one.
ReadView::ReadView(Engine& engine) : engine_(engine) {
  engine_.RunScript("SAVEPOINT view");
}

ReadView::~ReadView() {
  // A view that stayed open for want of memory would keep a copy of the file from being made.
  if (Failed(engine_.RunScript("RELEASE view"))) engine_.RunScript("RELEASE view");
}

HRESULT Engine::OpenRows(std::u16string_view sql, std::unique_ptr<RowSet>& rows) {
  rows.reset();
  SelectShape shape = LiftLiterals(sql);
  StatementLoan statement = Borrow(shape.sql);
  if (!statement) return NotPrepared();
  auto opened = std::make_unique<RowSet>(*this, std::move(statement), std::move(shape.literals));
  const HRESULT result = opened->Run();
  if (!Failed(result)) rows = std::move(opened);
  return result;
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

HRESULT Engine::NotPrepared() {
  const HRESULT result = ResultOf(sqlite3_errcode(database_));
  return Failed(result) ? result : E_FAIL;
}

// The first value that a statement yields.
std::optional<std::string> Engine::ReadValue(std::string_view sql,
                                             std::initializer_list<std::string_view> arguments) {
  const StatementLoan statement = Borrow(sql);
  if (!statement) return {};
  int parameter = 0;
  for (const std::string_view argument : arguments) statement->BindText(++parameter, argument);
  std::optional<std::u16string> value;
  if (statement->Step() != SQLITE_ROW || !statement->Read(0, value)) return {};
  return platform::ToUtf8(value.value_or(u""));
}

}  // namespace store
