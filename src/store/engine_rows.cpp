// Rows by their key, and the declarations that their values are brought into.
#include <sqlite3.h>

#include <algorithm>
#include <utility>

#include "platform/host.h"
#include "platform/utf.h"
#include "store/engine.h"
#include "store/engine_statement.h"
#include "store/sql_text.h"
#include "store/trouble.h"

namespace store {
namespace {

// The statements of tables. Tables and columns are named by the program, never by its user. Made
// again for every row, so without a text of its own for every name.
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

}  // namespace

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

HRESULT Engine::Change(std::u16string_view sql) {
  const SelectShape shape = LiftLiterals(sql);
  return Change(shape.sql, shape.literals);
}

HRESULT Engine::Change(std::string_view sql, std::span<const std::string> values) {
  const HRESULT ready = BeginWrite();
  if (Failed(ready)) return ready;
  const StatementLoan statement = Borrow(sql);
  if (!statement) return NotPrepared();
  int parameter = 0;
  for (const std::string& value : values) statement->BindText(++parameter, value);
  const HRESULT result = ResultOf(statement->Step());
  if (Failed(result)) return result;
  return sqlite3_changes(database_) == 0 ? DB_E_NOTFOUND : S_OK;
}

HRESULT Engine::ReadFirst(std::u16string_view table, const Field& key,
                          std::span<const std::u16string_view> columns, ColumnTexts row) {
  std::string sql = "select ";
  AppendList(sql, columns,
             [&sql](std::u16string_view column) { platform::AppendUtf8(column, sql); });
  AppendSeek(sql, table, key);
  const StatementLoan statement = Borrow(sql);
  if (!statement) return NotPrepared();
  const HRESULT bound = Bind(*statement, ColumnsOf(table), {&key, 1});
  if (Failed(bound)) return bound;
  const int code = statement->Step();
  if (code != SQLITE_ROW) return code == SQLITE_DONE ? DB_E_NOTFOUND : ResultOf(code);
  const size_t count = std::min(row.size(), columns.size());
  bool isRead = true;
  for (size_t i = 0; i < count; ++i) {
    isRead = isRead && statement->Read(static_cast<int>(i), row[i]);
  }
  return isRead ? S_OK : E_OUTOFMEMORY;
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
  if (!statement) return NotPrepared();
  HRESULT result = Bind(*statement, ColumnsOf(table), fields);
  if (!Failed(result)) result = ResultOf(statement->Step());
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
  if (!statement) return NotPrepared();
  const Columns& columns = ColumnsOf(table);
  for (const Column& column : columns) {
    if (column.type == ColumnType::kBytes) TellForeignType(column);
  }
  const HRESULT result = Bind(*statement, columns, fields);
  return Failed(result) ? result : ResultOf(statement->Step());
}

int64_t Engine::InsertedRow() const {
  return sqlite3_last_insert_rowid(database_);
}

// A savepoint and no transaction: it also stands inside one.
HRESULT Engine::ChangeColumn(const ColumnChange& change) {
  HRESULT result = RunScript("PRAGMA writable_schema=ON; SAVEPOINT change");
  if (!Failed(result)) result = ReplaceDeclaration(change);
  if (!Failed(result)) {
    result = RunScript("RELEASE change");
  } else if (!sqlite3_get_autocommit(database_)) {
    const Trouble trouble = LastTrouble();
    RunScript("ROLLBACK TO change; RELEASE change");
    NoteTrouble(trouble);
  }
  RunScript("PRAGMA writable_schema=OFF");
  return result;
}

// The length stands in the table's create statement and nowhere else, so it is changed there: no
// row is touched, however many there are. The raised version makes every connection read again.
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
  const HRESULT result = ResultOf(update->Step());
  return Failed(result) ? result : RunScript("PRAGMA schema_version=" + *version);
}

// Empty if the table cannot be read.
Engine::Columns Engine::ReadColumns(std::u16string_view table) {
  Columns columns;
  const StatementLoan all = Borrow("select * from " + platform::ToUtf8(table) + " limit 0");
  if (!all) return columns;
  const int count = sqlite3_column_count(all->Get());
  for (int i = 0; i < count; ++i) {
    const char* const name = sqlite3_column_name(all->Get(), i);
    const char* const declaration = sqlite3_column_decltype(all->Get(), i);
    if (!name) return {};
    columns.push_back(ReadDeclaration(platform::ToUtf16(name), declaration ? declaration : ""));
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

// Fields mostly come in the order of the columns, so each is looked for after the one before it.
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

}  // namespace store
