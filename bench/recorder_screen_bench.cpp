// One tap of the recorder in a diary of 100,000 Actions, from the click to the repainted list:
// closes the running Action, opens the next, and has everything on the disk. Beside it the same
// writes made by SQLite's own interface, and Timewarrior starting its next interval on as many.
#include <benchmark/benchmark.h>
#include <sqlite3.h>

#include <QApplication>
#include <chrono>

#include "core/date_time.h"
#include "core/text.h"
#include "large_diary.h"
#include "platform/qt/application_look.h"
#include "platform/utf.h"
#include "recorder_taps.h"
#include "timewarrior.h"

namespace {

void Execute(sqlite3* database, const std::string& sql) {
  if (sqlite3_exec(database, sql.c_str(), nullptr, nullptr, nullptr) != SQLITE_OK) std::abort();
}

// Lets the oldest Actions be a chain that is still running.
void MakeChain(const LargeDiary& diary, int64_t length) {
  sqlite3* database = nullptr;
  sqlite3_open(diary.HostPath().c_str(), &database);
  const std::string count = std::to_string(length);
  Execute(database,
          "insert into t_RcdrData select rowid - 1, f_nchActId from t_UserData limit " + count);
  Execute(database,
          "update t_LongData set f_i4Value = " + count + " where f_nvcItem = 'RcdrHistNum'");
  Execute(database,
          "update t_TextData set f_nvcValue = (select f_nchActId from t_RcdrData where "
          "f_i4SNo = " +
              count + " - 1) where f_nvcItem = 'RcdrPreActId'");
  sqlite3_close(database);
}

// The argument is the length of the chain that the list shows.
void Tap(benchmark::State& state) {
  const LargeDiary diary("morvenly_recorder_bench.sdf");
  MakeChain(diary, state.range(0));
  OnScreen(diary.Path(), [&](recorder::CRecorderDlg& dialog) {
    TapOnScreen screen(dialog);
    screen.Tap();  // the first one is measured by itself
    for (auto _ : state) screen.Tap();
  });
}

// The first tap after a start.
void FirstTap(benchmark::State& state) {
  const LargeDiary diary("morvenly_recorder_bench.sdf");
  for (auto _ : state) {
    OnScreen(diary.Path(), [&](recorder::CRecorderDlg& dialog) {
      TapOnScreen screen(dialog);
      const auto begin = std::chrono::steady_clock::now();
      screen.Tap();
      const std::chrono::duration<double> taken = std::chrono::steady_clock::now() - begin;
      state.SetIterationTime(taken.count());
    });
  }
}

// The five writes of a tap, one commit each, and the disk waited for once.
class RawChain {
 public:
  explicit RawChain(const LargeDiary& diary) {
    sqlite3_open(diary.HostPath().c_str(), &database_);
    Execute(database_, "PRAGMA journal_mode=WAL; PRAGMA synchronous=NORMAL");
    close_ = Prepare(
        "update t_UserData set f_dtLastUpdate = ?1, f_nchEndDateTime = ?1, f_nvcPlace = "
        "?2 where f_nchActId = ?3");
    open_ = Prepare(
        "insert into t_UserData values (?3, ?1, ?1, ?1, null, null, '', ?2, '', '', '', null)");
    count_ = Prepare("update t_LongData set f_i4Value = ?1 where f_nvcItem = 'RcdrHistNum'");
    append_ = Prepare("insert into t_RcdrData values (?1, ?2)");
    running_ = Prepare("update t_TextData set f_nvcValue = ?1 where f_nvcItem = 'RcdrPreActId'");
  }
  ~RawChain() {
    for (sqlite3_stmt* statement : {close_, open_, count_, append_, running_})
      sqlite3_finalize(statement);
    sqlite3_close(database_);
  }

  void Record(int number) {
    const std::string former = "ID" + platform::ToUtf8(core::ZeroPadded(number - 1, 16));
    const std::string id = "ID" + platform::ToUtf8(core::ZeroPadded(number, 16));
    Run(close_, {"2020/06/23 10:45:30", "", former});
    Run(open_, {"2020/06/23 10:45:30", "", id});
    Run(count_, {std::to_string(number)});
    Run(append_, {std::to_string(number), id});
    Run(running_, {id});
    sqlite3_file* log = nullptr;
    sqlite3_file_control(database_, "main", SQLITE_FCNTL_JOURNAL_POINTER, &log);
    if (log->pMethods->xSync(log, SQLITE_SYNC_FULL) != SQLITE_OK) std::abort();
  }

 private:
  sqlite3_stmt* Prepare(const char* sql) {
    sqlite3_stmt* statement = nullptr;
    if (sqlite3_prepare_v2(database_, sql, -1, &statement, nullptr) != SQLITE_OK) std::abort();
    return statement;
  }
  void Run(sqlite3_stmt* statement, const std::vector<std::string>& texts) {
    int parameter = 0;
    for (const std::string& text : texts) {
      sqlite3_bind_text(statement, ++parameter, text.c_str(), -1, SQLITE_TRANSIENT);
    }
    if (sqlite3_step(statement) != SQLITE_DONE) std::abort();
    sqlite3_reset(statement);
  }

  sqlite3* database_ = nullptr;
  sqlite3_stmt *close_, *open_, *count_, *append_, *running_;
};

void SameWritesRaw(benchmark::State& state) {
  const LargeDiary diary("morvenly_recorder_bench_raw.sdf");
  RawChain chain(diary);
  int number = kLargeDiaryActions;
  chain.Record(number);
  for (auto _ : state) chain.Record(++number);
}

void StartNextByTimewarrior(benchmark::State& state, bool withUndoLog) {
  if (!Timewarrior::IsInstalled()) return state.SkipWithError("not installed");
  Timewarrior timewarrior("morvenly_bench_timewarrior", kLargeDiaryActions, withUndoLog);
  double cpuSeconds = 0;
  for (auto _ : state) {
    const Timewarrior::Cost cost = timewarrior.StartNext();
    state.SetIterationTime(cost.clockSeconds);
    cpuSeconds += cost.cpuSeconds;
  }
  // Of the started process; the library's own column is of this one, which waits.
  state.counters["cpu_ms"] =
      benchmark::Counter(cpuSeconds * 1000.0, benchmark::Counter::kAvgIterations);
}

BENCHMARK(Tap)->Arg(30)->Arg(1000)->Iterations(100)->UseRealTime()->Unit(benchmark::kMillisecond);
BENCHMARK(FirstTap)->Iterations(10)->UseManualTime()->Unit(benchmark::kMillisecond);
BENCHMARK(SameWritesRaw)->Iterations(100)->UseRealTime()->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(StartNextByTimewarrior, fresh, false)
    ->Iterations(15)
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(StartNextByTimewarrior, withItsUndoLogGrown, true)
    ->Iterations(15)
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond);

}  // namespace

int main(int argc, char** argv) {
  if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
  platform::SetHost(&host);
  QApplication application(argc, argv);
  platform::qt::DressApplication(application);
  benchmark::Initialize(&argc, argv);
  benchmark::RunSpecifiedBenchmarks();
}
