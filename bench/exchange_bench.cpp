// Finding, exporting and importing 100,000 Actions beside the same work done by SQLite's own
// interface in the same run: the same rows, the same bytes, the same journal and groups.
#include <benchmark/benchmark.h>
#include <sqlite3.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <string>
#include <vector>

#include "core/app_state.h"
#include "core/date_time.h"
#include "core/text.h"
#include "datafile/data_file.h"
#include "exchange/action_lines.h"
#include "exchange/export.h"
#include "exchange/find.h"
#include "exchange/import.h"
#include "platform/code_page.h"
#include "platform/device_paths.h"
#include "platform/host.h"
#include "platform/utf.h"
#include "store/action_index.h"
#include "store/session.h"
#include "wordless_host.h"

namespace {

constexpr int kActions = 100000;
constexpr int kRowsAGroup = 500;

class BenchHost : public WordlessHost {
 public:
  platform::Answer ShowMessage(const platform::Message& message) override {
    if (message.icon == platform::Icon::kInformation) return platform::Answer::kOk;
    std::fprintf(stderr, "%s\n", platform::ToUtf8(message.text).c_str());
    std::abort();
  }
  platform::LocalTime Now() override { return {2026, 6, 23, 10, 45, 30}; }
  int Draw() override { return static_cast<int>((chance_ = chance_ * 1103515245u + 12345u) >> 17); }

 private:
  uint32_t chance_ = 1;
};

std::string benchFolder;  // main makes it and takes it away

std::string HostPath(const std::string& name) {
  return benchFolder + "/" + name;
}

std::u16string DevicePath(const std::string& name) {
  return *platform::FromHostPath(HostPath(name));
}

store::Action MakeAction(int number) {
  const int minute = number * 40;
  const int day = minute / (24 * 60);
  store::Action action;
  action[store::kActId] = u"ID" + core::ZeroPadded(number, 16);
  action[store::kStaDateTime] =
      core::FormatDate(1990 + day / 336, day / 28 % 12 + 1, day % 28 + 1) + u' ' +
      core::FormatTime(minute / 60 % 24, minute % 60, 0);
  action[store::kEndDateTime] = action[store::kStaDateTime];
  if (number % 2 == 0) {
    action[store::kLatitude] = u"35.681236";
    action[store::kLongitude] = u"139.767125";
  }
  action[store::kSubject] = u"打ち合わせと資料の準備";
  action[store::kPlace] = number % 100 == 0 ? u"図書館" : u"会社－＞自宅";
  action[store::kCategory1] = u"仕事";
  action[store::kCategory2] = u"移動";
  action[store::kMemo] = u"次回までに見積もりを直す。電車の中で本を読んだ。\r\n夕食は外で。";
  return action;
}

// The file that all turns begin with.
void MakeFile() {
  if (datafile::CreateDataFile(DevicePath("full.sdf")) != 0) std::abort();
  store::Engine& engine = *store::dbSession().Session;
  engine.BeginTransaction();
  for (int i = 0; i < kActions; ++i) {
    store::Action action = MakeAction(i);
    if (store::dbSession().UserTable->Insert(action) != 0) std::abort();
  }
  if (engine.Commit() != 0) std::abort();
  store::DisconnectDataFile();
}

// A copy of it for one turn, connected.
class Turn {
 public:
  explicit Turn(const char* file) {
    std::filesystem::copy_file(HostPath(file), HostPath("turn.sdf"),
                               std::filesystem::copy_options::overwrite_existing);
    if (store::ConnectDataFile(DevicePath("turn.sdf")) != 0) std::abort();
    store::LoadActionIndex(app);
  }
  ~Turn() { store::DisconnectDataFile(); }
  core::CAppState app;
};

class Raw {
 public:
  explicit Raw(const char* file) {
    std::filesystem::copy_file(HostPath(file), HostPath("turn.sdf"),
                               std::filesystem::copy_options::overwrite_existing);
    if (sqlite3_open(HostPath("turn.sdf").c_str(), &database_) != SQLITE_OK) std::abort();
    Execute("PRAGMA journal_mode=WAL; PRAGMA synchronous=FULL");
  }
  ~Raw() {
    for (sqlite3_stmt* statement : statements_) sqlite3_finalize(statement);
    sqlite3_close(database_);
  }
  void Execute(const char* sql) { sqlite3_exec(database_, sql, nullptr, nullptr, nullptr); }
  sqlite3_stmt* Prepare(const char* sql) {
    sqlite3_stmt* statement = nullptr;
    if (sqlite3_prepare_v2(database_, sql, -1, &statement, nullptr) != SQLITE_OK) std::abort();
    statements_.push_back(statement);
    return statement;
  }

 private:
  sqlite3* database_ = nullptr;
  std::vector<sqlite3_stmt*> statements_;
};

void Bind(sqlite3_stmt* statement, int parameter, std::string_view text) {
  sqlite3_bind_text(statement, parameter, text.data(), static_cast<int>(text.size()),
                    SQLITE_TRANSIENT);
}

std::string_view Column(sqlite3_stmt* statement, int column) {
  const auto text = reinterpret_cast<const char*>(sqlite3_column_text(statement, column));
  return text ? std::string_view(text, static_cast<size_t>(sqlite3_column_bytes(statement, column)))
              : std::string_view();
}

// Texts and absent ones as the program's rows are, so that both loops make the same line of them.
std::u16string LineOfRow(sqlite3_stmt* row) {
  std::u16string line;
  for (int i = 0; i < store::kActionColumnCount; ++i) {
    if (i > 0) line += u'\t';
    if (i == store::kMemo) {
      line += u'"' + core::EscapeText(platform::ToUtf16(Column(row, i))) + u'"';
    } else if (sqlite3_column_type(row, i) == SQLITE_FLOAT) {
      char number[64];
      const int size = std::snprintf(number, sizeof number, "%f", sqlite3_column_double(row, i));
      line.append(number, number + size);
    } else {
      line += platform::ToUtf16(Column(row, i));
    }
  }
  return line;
}

void BM_Export(benchmark::State& state) {
  Turn turn("full.sdf");
  for (auto _ : state) {
    if (exchange::RunExport(turn.app, DevicePath("out.csv"), exchange::kVer3) != kActions) {
      std::abort();
    }
  }
}

void WriteLine(std::FILE* file, const std::u16string& line) {
  const std::string bytes = platform::EncodeCodePage(line) + "\r\n";
  std::fwrite(bytes.data(), 1, bytes.size(), file);
}

// Each row by its id, as the order of the index wants it.
void BM_Export_Raw(benchmark::State& state) {
  Turn turn("full.sdf");  // for its index alone
  Raw raw("full.sdf");
  sqlite3_stmt* const select = raw.Prepare("select * from t_UserData where f_nchActId = ?");
  for (auto _ : state) {
    std::FILE* const file = std::fopen(HostPath("raw.csv").c_str(), "wb");
    const std::string header = exchange::HeaderBytes(exchange::kVer3);
    fwrite(header.data(), 1, header.size(), file);
    for (size_t i = 0; i < kActions; ++i) {
      Bind(select, 1, platform::ToUtf8(turn.app.ActIds.At(i)));
      if (sqlite3_step(select) != SQLITE_ROW) std::abort();
      WriteLine(file, LineOfRow(select));
      sqlite3_reset(select);
    }
    std::fclose(file);
  }
  const std::string same = "cmp -s " + HostPath("raw.csv") + " " + HostPath("out.csv");
  if (std::filesystem::exists(HostPath("out.csv")) && std::system(same.c_str()) != 0) std::abort();
}

// The fields of a line of the third form, as UTF-8.
std::vector<std::string> FieldsOf(const char* bytes) {
  const std::u16string line = platform::DecodeCodePage(bytes);
  std::vector<std::string> fields;
  std::u16string_view rest = line;
  for (size_t end = 0; end != std::u16string_view::npos;) {
    end = rest.find(u'\t');
    std::u16string_view field = rest.substr(0, end);
    if (fields.size() == store::kMemo) {
      fields.push_back(platform::ToUtf8(core::UnescapeText(field.substr(1, field.size() - 2))));
    } else {
      fields.push_back(platform::ToUtf8(field));
    }
    if (end != std::u16string_view::npos) rest.remove_prefix(end + 1);
  }
  return fields;
}

void BindRow(sqlite3_stmt* statement, const std::vector<std::string>& fields, int first) {
  for (int i = first; i < store::kActionColumnCount; ++i) {
    const std::string& field = fields[static_cast<size_t>(i)];
    if (i != store::kLatitude && i != store::kLongitude) {
      Bind(statement, i + 1 - first, field);
    } else if (field.empty()) {
      sqlite3_bind_null(statement, i + 1 - first);
    } else {
      sqlite3_bind_double(statement, i + 1 - first, std::atof(field.c_str()));
    }
  }
}

// All lines first, then all rows, as the program does it.
std::vector<std::vector<std::string>> ReadRows() {
  std::vector<std::vector<std::string>> rows;
  std::FILE* const file = std::fopen(HostPath("in.csv").c_str(), "rb");
  char line[10000];
  std::fgets(line, sizeof line, file);
  while (std::fgets(line, sizeof line, file)) {
    line[std::strcspn(line, "\r\n")] = '\0';
    rows.push_back(FieldsOf(line));
  }
  std::fclose(file);
  return rows;
}

// The least that an import can cost whose changes can be taken back: each row once more.
class RawLog {
 public:
  RawLog(Raw& raw, bool notes) {
    if (!notes) return;
    raw.Execute("create table log as select * from t_UserData limit 0");
    copy_ = raw.Prepare("insert into log select * from t_UserData where rowid between ? and ?");
  }
  void Note(int first) {
    if (copy_ == nullptr) return;
    sqlite3_bind_int(copy_, 1, first + 1);
    sqlite3_bind_int(copy_, 2, first + kRowsAGroup);
    if (sqlite3_step(copy_) != SQLITE_DONE) std::abort();
    sqlite3_reset(copy_);
  }

 private:
  sqlite3_stmt* copy_ = nullptr;
};

template <typename Begin, typename Write, typename End>
void RawImport(Raw& raw, Begin begin, Write write, End end) {
  const std::vector<std::vector<std::string>> rows = ReadRows();
  for (int first = 0; first < kActions; first += kRowsAGroup) {
    raw.Execute("BEGIN");
    begin(first);
    for (int i = first; i < first + kRowsAGroup; ++i) write(rows[static_cast<size_t>(i)]);
    end(first);
    raw.Execute("COMMIT");
  }
}

void Run(sqlite3_stmt* statement, int expected) {
  if (sqlite3_step(statement) != expected) std::abort();
  sqlite3_reset(statement);
}

void BM_ImportReplace(benchmark::State& state) {
  for (auto _ : state) {
    state.PauseTiming();
    Turn turn("full.sdf");
    state.ResumeTiming();
    if (exchange::RunImport(turn.app, DevicePath("in.csv"), exchange::kVer3,
                            exchange::kReadReplace) != 0) {
      std::abort();
    }
    state.PauseTiming();
    if (turn.app.IndexCount != kActions) std::abort();
    state.ResumeTiming();
  }
}

// Looks whether the id is there, then writes over its row.
void BM_ImportReplace_Raw(benchmark::State& state) {
  for (auto _ : state) {
    state.PauseTiming();
    Raw raw("full.sdf");
    sqlite3_stmt* const look = raw.Prepare("select f_nchActId from t_UserData where f_nchActId=?");
    sqlite3_stmt* const update = raw.Prepare(
        "update t_UserData set f_dtLastUpdate=?,f_nchStaDateTime=?,f_nchEndDateTime=?,"
        "f_fltLatitude=?,f_fltLongitude=?,f_nvcSubject=?,f_nvcPlace=?,f_nvcCategory1=?,"
        "f_nvcCategory2=?,f_nvcMemo=?,f_nvcExtItems=? where rowid="
        "(select rowid from t_UserData where f_nchActId=? limit 1)");
    RawLog log(raw, state.range(0) != 0);
    state.ResumeTiming();
    const auto replace = [&](const std::vector<std::string>& fields) {
      Bind(look, 1, fields[0]);
      Run(look, SQLITE_ROW);
      BindRow(update, fields, 1);
      Bind(update, store::kActionColumnCount, fields[0]);
      Run(update, SQLITE_DONE);
    };
    const auto note = [&](int first) { log.Note(first); };
    RawImport(raw, note, replace, note);
  }
}

void BM_ImportAdd(benchmark::State& state) {
  for (auto _ : state) {
    state.PauseTiming();
    Turn turn("full.sdf");
    state.ResumeTiming();
    if (exchange::RunImport(turn.app, DevicePath("in.csv"), exchange::kVer3, exchange::kReadAdd) !=
        0) {
      std::abort();
    }
    state.PauseTiming();
    if (turn.app.IndexCount != 2 * kActions) std::abort();
    state.ResumeTiming();
  }
}

// Looks whether the new id is free, then inserts the row.
void BM_ImportAdd_Raw(benchmark::State& state) {
  for (auto _ : state) {
    state.PauseTiming();
    Raw raw("full.sdf");
    sqlite3_stmt* const look = raw.Prepare("select f_nchActId from t_UserData where f_nchActId=?");
    sqlite3_stmt* const insert =
        raw.Prepare("insert into t_UserData values (?,?,?,?,?,?,?,?,?,?,?,?)");
    RawLog log(raw, state.range(0) != 0);
    state.ResumeTiming();
    int number = 0;
    const auto add = [&](std::vector<std::string> fields) {
      char id[24];
      std::snprintf(id, sizeof id, "ID2026%012d", number++);
      Bind(look, 1, id);
      Run(look, SQLITE_DONE);
      fields[0] = id;
      BindRow(insert, fields, 0);
      Run(insert, SQLITE_DONE);
    };
    const auto note = [&](int first) { log.Note(kActions + first); };
    RawImport(
        raw, [](int) {}, add, note);
  }
}

constexpr int kEverywhere = exchange::kFindInPlace | exchange::kFindInCategory1 |
                            exchange::kFindInCategory2 | exchange::kFindInMemo;

void BM_Find(benchmark::State& state) {
  Turn turn("full.sdf");
  const std::u16string_view text = state.range(0) == 1 ? u"図書" : u"仕事";
  for (auto _ : state) {
    if (exchange::FindActions(turn.app, {}, text, kEverywhere) != state.range(0) * kActions / 100) {
      std::abort();
    }
  }
}

void BM_Find_Raw(benchmark::State& state) {
  Raw raw("full.sdf");
  sqlite3_stmt* const select = raw.Prepare(
      "select f_nchActId,f_nchStaDateTime from t_UserData where ((f_nvcPlace like ?) or "
      "(f_nvcCategory1 like ?) or (f_nvcCategory2 like ?) or (f_nvcMemo like ?)) "
      "order by f_nchStaDateTime asc");
  core::TextList ids, starts;
  for (auto _ : state) {
    ids.Clear();
    starts.Clear();
    for (int i = 1; i <= 4; ++i) Bind(select, i, state.range(0) == 1 ? "%図書%" : "%仕事%");
    while (sqlite3_step(select) == SQLITE_ROW) {
      ids.Append(platform::ToUtf16(Column(select, 0)));
      starts.Append(platform::ToUtf16(Column(select, 1)));
    }
    sqlite3_reset(select);
  }
}

// One row in a hundred, and every row.
BENCHMARK(BM_Find)->Arg(1)->Arg(100)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_Find_Raw)->Arg(1)->Arg(100)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_Export)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_Export_Raw)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_ImportReplace)->Unit(benchmark::kMillisecond);
// Without a log, and with one.
BENCHMARK(BM_ImportReplace_Raw)->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_ImportAdd)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_ImportAdd_Raw)->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond);

}  // namespace

int main(int argc, char** argv) {
  BenchHost host;
  platform::SetHost(&host);
  std::string folder = (std::filesystem::temp_directory_path() / "exchange_benchXXXXXX").string();
  if (mkdtemp(folder.data()) == nullptr) return 1;
  benchFolder = folder;
  MakeFile();
  {
    Turn turn("full.sdf");
    exchange::RunExport(turn.app, DevicePath("in.csv"), exchange::kVer3);
  }
  benchmark::Initialize(&argc, argv);
  benchmark::RunSpecifiedBenchmarks();
  std::filesystem::remove_all(benchFolder);
  return 0;
}
