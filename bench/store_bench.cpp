// The store beside the same work done by SQLite's own interface: rows into the same Actions and
// lists, statements prepared once, the same journal. Needs about 1 GB where TMPDIR points.
#include <benchmark/benchmark.h>
#include <sqlite3.h>

#include <cstdlib>
#include <filesystem>
#include <map>
#include <memory>
#include <random>
#include <string>

#include "core/app_state.h"
#include "core/date_time.h"
#include "core/text.h"
#include "datafile/data_file.h"
#include "platform/device_paths.h"
#include "platform/host.h"
#include "platform/utf.h"
#include "store/action_index.h"
#include "store/session.h"
#include "wordless_host.h"

namespace {

using store::Action;
using store::ActionColumn;

constexpr int kPageRows = 30;

std::u16string MakeId(int number) {
  return u"ID" + core::ZeroPadded(number, 16);
}

// About 330 bytes as a row. A diary grows in the order of time, but for one Action in ten that is
// written down up to two days late.
Action MakeAction(int number) {
  std::mt19937 random(static_cast<unsigned>(number));
  const int lateness = random() % 10 == 0 ? static_cast<int>(random() % 2880) : 0;
  const int minute = 2880 + number * 40 - lateness;
  const int day = minute / (24 * 60);
  Action action;
  action[store::kActId] = MakeId(number);
  action[store::kLastUpdate] = u"2010/06/23 10:45:30";
  action[store::kStaDateTime] =
      core::FormatDate(1990 + day / 336, day / 28 % 12 + 1, day % 28 + 1) + u' ' +
      core::FormatTime(minute / 60 % 24, minute % 60, 0);
  action[store::kEndDateTime] = action[store::kStaDateTime];
  if (number % 2 == 0) {
    action[store::kLatitude] = u"35.681236";
    action[store::kLongitude] = u"139.767125";
  }
  action[store::kSubject] = u"打ち合わせと資料の準備";
  action[store::kPlace] = u"会社－＞自宅";
  action[store::kCategory1] = u"仕事";
  action[store::kCategory2] = u"移動";
  action[store::kMemo] = u"次回までに見積もりを直す。電車の中で本を読んだ。\r\n夕食は外で。";
  action[store::kExtItems] = u"";
  return action;
}

std::string benchFolder;  // main makes it and takes it away

std::string HostPath(const std::string& name) {
  return benchFolder + "/" + name;
}

// A data file of `count` Actions, made once.
std::string FileOf(int count) {
  static std::map<int, std::string> files;
  std::string& hostPath = files[count];
  if (!hostPath.empty()) return hostPath;
  hostPath = HostPath(std::to_string(count) + ".sdf");
  if (datafile::CreateDataFile(*platform::FromHostPath(hostPath)) != 0) std::abort();
  store::Engine& engine = *store::dbSession().Session;
  engine.BeginTransaction();
  for (int i = 0; i < count; ++i) {
    const Action action = MakeAction(i);
    std::array<store::Field, store::kActionColumnCount> fields;
    for (size_t c = 0; c < fields.size(); ++c) fields[c] = {store::kActionColumns[c], action[c]};
    engine.Insert(u"t_UserData", fields);
  }
  if (engine.Commit() != 0) std::abort();
  store::DisconnectDataFile();
  return hostPath;
}

// A copy that a benchmark may write to.
std::string CopyOf(int count) {
  static int copies = 0;
  const std::string copy = HostPath("copy" + std::to_string(++copies) + ".sdf");
  std::filesystem::copy_file(FileOf(count), copy);
  return copy;
}

class Connected {
 public:
  explicit Connected(const std::string& hostPath) {
    if (store::ConnectDataFile(*platform::FromHostPath(hostPath)) != 0) std::abort();
  }
  ~Connected() { store::DisconnectDataFile(); }
  store::CUserDataTable& Users() { return *store::dbSession().UserTable; }
};

// The first write of a session switches the journal, which a writing benchmark does not measure.
void SwitchJournal() {
  if (store::dbSession().LongTable->SetLong(u"Bench", 1) != 0) std::abort();
}

class Raw {
 public:
  explicit Raw(const std::string& hostPath) {
    if (sqlite3_open(hostPath.c_str(), &database_) != SQLITE_OK) std::abort();
  }
  ~Raw() {
    sqlite3_finalize(statement_);
    sqlite3_close(database_);
  }

  void Execute(const char* sql) { sqlite3_exec(database_, sql, nullptr, nullptr, nullptr); }

  sqlite3_stmt* Prepare(const char* sql) {
    if (sqlite3_prepare_v2(database_, sql, -1, &statement_, nullptr) != SQLITE_OK) std::abort();
    return statement_;
  }

  void BindText(int parameter, const std::u16string& text) {
    utf8_ = platform::ToUtf8(text);
    sqlite3_bind_text(statement_, parameter, utf8_.data(), static_cast<int>(utf8_.size()),
                      SQLITE_TRANSIENT);
  }

  void BindAction(const Action& action) {
    for (int i = 0; i < store::kActionColumnCount; ++i) {
      const auto& text = action[static_cast<size_t>(i)];
      if (!text) {
        sqlite3_bind_null(statement_, i + 1);
      } else if (i == store::kLatitude || i == store::kLongitude) {
        sqlite3_bind_double(statement_, i + 1, std::atof(platform::ToUtf8(*text).c_str()));
      } else {
        BindText(i + 1, *text);
      }
    }
  }

  void Step(int expected) {
    if (sqlite3_step(statement_) != expected) std::abort();
  }

  std::u16string Text(int column) {
    const auto bytes = reinterpret_cast<const char*>(sqlite3_column_text(statement_, column));
    return platform::ToUtf16(
        {bytes, static_cast<size_t>(sqlite3_column_bytes(statement_, column))});
  }

  void ReadAction(Action& action) {
    for (int i = 0; i < store::kActionColumnCount; ++i) {
      auto& text = action[static_cast<size_t>(i)];
      if (sqlite3_column_type(statement_, i) == SQLITE_NULL) {
        text.reset();
      } else if (i == store::kLatitude || i == store::kLongitude) {
        char number[64];
        const int size =
            std::snprintf(number, sizeof number, "%f", sqlite3_column_double(statement_, i));
        text = std::u16string(number, number + size);
      } else {
        text = Text(i);
      }
    }
  }

  void ReadById(int number, Action& action) {
    BindText(1, MakeId(number));
    Step(SQLITE_ROW);
    ReadAction(action);
    sqlite3_reset(statement_);
  }

 private:
  sqlite3* database_ = nullptr;
  sqlite3_stmt* statement_ = nullptr;
  std::string utf8_;
};

constexpr char kSelectById[] = "select * from t_UserData where f_nchActId = ?";
constexpr char kSameJournal[] = "PRAGMA synchronous=FULL; PRAGMA journal_mode=WAL";

// Ids that lie far apart, so that no two reads in a row share their pages.
int Scattered(int64_t turn, int count) {
  return static_cast<int>(turn * 7919 % count);
}

void BM_Reload_Raw(benchmark::State& state) {
  Raw raw(FileOf(static_cast<int>(state.range(0))));
  sqlite3_stmt* const statement = raw.Prepare(
      "select f_nchActId,f_nchStaDateTime from t_UserData order by f_nchStaDateTime asc");
  core::TextList ids, starts;
  for (auto _ : state) {
    ids.Clear();
    starts.Clear();
    while (sqlite3_step(statement) == SQLITE_ROW) {
      ids.Append(raw.Text(0));
      starts.Append(raw.Text(1));
    }
    sqlite3_reset(statement);
  }
  if (ids.Count() != static_cast<size_t>(state.range(0))) std::abort();
}

// Of everything, as at the start and when another connection has written.
void BM_Reload_Store(benchmark::State& state) {
  const Connected connected(FileOf(static_cast<int>(state.range(0))));
  store::CDbSession& session = store::dbSession();
  core::CAppState app;
  for (auto _ : state) {
    session.Starts = std::make_unique<store::SortedStarts>(*session.Session);
    if (store::ReloadActionIndex(app) != 0) std::abort();
  }
  if (app.IndexCount != state.range(0)) std::abort();
}

// As a tap of the recorder leaves it: one row is changed and one is new.
void BM_Reload_AfterOwnWrites(benchmark::State& state) {
  Connected connected(CopyOf(static_cast<int>(state.range(0))));
  SwitchJournal();
  core::CAppState app;
  if (store::ReloadActionIndex(app) != 0) std::abort();
  int number = static_cast<int>(state.range(0));
  for (auto _ : state) {
    state.PauseTiming();
    Action closed = MakeAction(number - 1), opened = MakeAction(number++);
    const bool written = connected.Users().Update(*closed[store::kActId], closed) == 0 &&
                         connected.Users().Insert(opened) == 0;
    state.ResumeTiming();
    if (!written || store::ReloadActionIndex(app) != 0) std::abort();
  }
  if (app.IndexCount != number) std::abort();
}

void BM_Insert_Raw(benchmark::State& state) {
  Raw raw(CopyOf(100000));
  raw.Execute(kSameJournal);
  sqlite3_stmt* const statement =
      raw.Prepare("insert into t_UserData values (?,?,?,?,?,?,?,?,?,?,?,?)");
  int number = 1000000;
  for (auto _ : state) {
    state.PauseTiming();
    const Action action = MakeAction(++number);
    state.ResumeTiming();
    raw.BindAction(action);
    raw.Step(SQLITE_DONE);
    sqlite3_reset(statement);
  }
}

void BM_Insert_Store(benchmark::State& state) {
  Connected connected(CopyOf(100000));
  SwitchJournal();
  int number = 1000000;
  for (auto _ : state) {
    state.PauseTiming();
    Action action = MakeAction(++number);
    state.ResumeTiming();
    if (connected.Users().Insert(action) != 0) std::abort();
  }
}

void BM_Update_Raw(benchmark::State& state) {
  Raw raw(CopyOf(100000));
  raw.Execute(kSameJournal);
  sqlite3_stmt* const statement = raw.Prepare(
      "update t_UserData set f_nchActId=?1,f_dtLastUpdate=?2,f_nchStaDateTime=?3,"
      "f_nchEndDateTime=?4,f_fltLatitude=?5,f_fltLongitude=?6,f_nvcSubject=?7,f_nvcPlace=?8,"
      "f_nvcCategory1=?9,f_nvcCategory2=?10,f_nvcMemo=?11,f_nvcExtItems=?12 where f_nchActId=?1");
  int64_t turn = 0;
  for (auto _ : state) {
    state.PauseTiming();
    const Action action = MakeAction(Scattered(++turn, 100000));
    state.ResumeTiming();
    raw.BindAction(action);
    raw.Step(SQLITE_DONE);
    sqlite3_reset(statement);
  }
}

void BM_Update_Store(benchmark::State& state) {
  Connected connected(CopyOf(100000));
  SwitchJournal();
  int64_t turn = 0;
  for (auto _ : state) {
    state.PauseTiming();
    Action action = MakeAction(Scattered(++turn, 100000));
    const std::u16string id = *action[store::kActId];
    state.ResumeTiming();
    if (connected.Users().Update(id, action) != 0) std::abort();
  }
}

void BM_ReadById_Raw(benchmark::State& state) {
  Raw raw(FileOf(100000));
  raw.Prepare(kSelectById);
  int64_t turn = 0;
  for (auto _ : state) {
    Action action;
    raw.ReadById(Scattered(++turn, 100000), action);
    benchmark::DoNotOptimize(action);
  }
}

void BM_ReadById_Store(benchmark::State& state) {
  Connected connected(FileOf(100000));
  int64_t turn = 0;
  for (auto _ : state) {
    Action action;
    if (connected.Users().ReadById(MakeId(Scattered(++turn, 100000)), action) != 0) std::abort();
    benchmark::DoNotOptimize(action);
  }
}

void BM_Page_Raw(benchmark::State& state) {
  Raw raw(FileOf(100000));
  raw.Prepare(kSelectById);
  int64_t turn = 0;
  for (auto _ : state) {
    const int first = Scattered(++turn, 100000 - kPageRows);
    for (int i = 0; i < kPageRows; ++i) {
      Action action;
      raw.ReadById(first + i, action);
      benchmark::DoNotOptimize(action);
    }
  }
}

// As a view fills itself: the place in the index, then its rows by id, one select each.
void ReadPage(benchmark::State& state, bool ofADay) {
  Connected connected(FileOf(100000));
  core::CAppState app;
  if (store::ReloadActionIndex(app) != 0) std::abort();
  store::CUserDataTable& users = connected.Users();
  int64_t turn = 0;
  for (auto _ : state) {
    const auto wanted = static_cast<size_t>(Scattered(++turn, 100000 - 2 * kPageRows));
    const std::u16string date(app.ActStarts.At(wanted).substr(0, 10));
    size_t first;
    if (ofADay) {
      first = static_cast<size_t>(
          store::FindActionIndexLower(app, date, u"00:00:00", store::LowerMode::kAtOrAfter));
    } else {
      const int page = store::FindActionIndexByPosition(app, date, u"24:00:00", kPageRows);
      first = static_cast<size_t>(std::max(0, app.IndexCount - (page + 1) * kPageRows));
    }
    for (size_t i = 0; i < kPageRows; ++i) {
      Action action;
      if (users.Select(store::SelectByIdSql(app.ActIds.At(first + i))) != 0 ||
          users.GetNextRS(action) != 0) {
        std::abort();
      }
      users.CloseRS();
      benchmark::DoNotOptimize(action);
    }
  }
}

void BM_Page_StoreDay(benchmark::State& state) {
  ReadPage(state, true);
}

void BM_Page_StoreList(benchmark::State& state) {
  ReadPage(state, false);
}

BENCHMARK(BM_Reload_Raw)->RangeMultiplier(10)->Range(10000, 1000000)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_Reload_Store)
    ->RangeMultiplier(10)
    ->Range(10000, 1000000)
    ->Unit(benchmark::kMillisecond);
BENCHMARK(BM_Reload_AfterOwnWrites)
    ->RangeMultiplier(10)
    ->Range(10000, 1000000)
    ->Unit(benchmark::kMillisecond);
BENCHMARK(BM_Insert_Raw)->Unit(benchmark::kMicrosecond)->UseRealTime();
BENCHMARK(BM_Insert_Store)->Unit(benchmark::kMicrosecond)->UseRealTime();
BENCHMARK(BM_Update_Raw)->Unit(benchmark::kMicrosecond)->UseRealTime();
BENCHMARK(BM_Update_Store)->Unit(benchmark::kMicrosecond)->UseRealTime();
BENCHMARK(BM_ReadById_Raw)->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_ReadById_Store)->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_Page_Raw)->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_Page_StoreDay)->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_Page_StoreList)->Unit(benchmark::kMicrosecond);

}  // namespace

int main(int argc, char** argv) {
  WordlessHost host;
  platform::SetHost(&host);
  benchmark::Initialize(&argc, argv);
  benchFolder = std::filesystem::temp_directory_path() / "morvenly-bench-XXXXXX";
  if (mkdtemp(benchFolder.data()) == nullptr) std::abort();
  benchmark::RunSpecifiedBenchmarks();
  std::filesystem::remove_all(benchFolder);
  benchmark::Shutdown();
}
