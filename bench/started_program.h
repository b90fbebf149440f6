// A program that's started from a folder of its own, until its window is painted: for the benchmark
// of a start and for that of growth.
#pragma once

#include <sqlite3.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <QApplication>
#include <QTimer>
#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>

#include "app/startup.h"
#include "datafile/data_file.h"
#include "platform/device_paths.h"
#include "platform/qt/application_look.h"
#include "platform/qt/qt_host.h"
#include "store/action_index.h"
#include "store/session.h"

inline constexpr int kReportHandle = 3;  // where a child reports that its window is painted

// Ends the process once the first paint of a window is through.
class FirstPaint : public QObject {
 protected:
  bool eventFilter(QObject* watched, QEvent* event) override {
    if (event->type() == QEvent::Paint && watched->isWidgetType()) {
      QTimer::singleShot(0, [] {
        [[maybe_unused]] const ssize_t written = write(kReportHandle, "!", 1);
        _exit(0);
      });
    }
    return false;
  }
};

inline int RunProgram(int argc, char** argv) {
  platform::qt::QtHost programHost;
  platform::SetHost(&programHost);
  const platform::ScreenPlan plan = platform::qt::ScaleToScreen(argc, argv);
  QApplication application(argc, argv);
  platform::qt::DressApplication(application);
  FirstPaint firstPaint;
  application.installEventFilter(&firstPaint);
  return app::WinMain(programHost, plan, app::FirstScreen::kBySetting);
}

// A folder as an installed program has it: this program, its settings and its data file, with
// thirty Actions a day up to today. Closed once, as a program that was used before has left it.
inline std::filesystem::path MakeFolder(int actions) {
  std::string pattern = std::filesystem::temp_directory_path() / "morvenly-bench-XXXXXX";
  const std::filesystem::path folder = mkdtemp(pattern.data());
  std::filesystem::copy_file("/proc/self/exe", folder / "Morvenly");
  std::ofstream(folder / "Morvenly.dat") << "[System]\r\nVersion:3.2.2010.1114\r\n\r\n";

  const std::string dataFile = folder / "user.sdf";
  datafile::CreateDataFile(*platform::FromHostPath(dataFile));
  store::DisconnectDataFile();
  sqlite3* database = nullptr;
  sqlite3_open(dataFile.c_str(), &database);
  const std::string fill =
      "insert into t_UserData with recursive n(i) as (select 0 union all select i + 1 from n where "
      "i < " +
      std::to_string(actions - 1) +
      "), a(i, day, hour, minute) as (select i, strftime('%Y/%m/%d', 'now', 'localtime', "
      "'-' || (i / 30) || ' days'), 8 + i % 30 / 2, i % 2 * 30 from n) "
      "select printf('ID%016d', i), '2026/01/01 00:00:00', "
      "printf('%s %02d:%02d:00', day, hour, minute), "
      "printf('%s %02d:%02d:00', day, hour, minute + 25), null, null, null, '会社', '仕事', "
      "'打合せ', '次の版の相談', null from a order by day, hour, minute";
  const int filled = sqlite3_exec(database, fill.c_str(), nullptr, nullptr, nullptr);
  sqlite3_close(database);
  core::CAppState app;
  const bool isOpen = store::ConnectDataFile(*platform::FromHostPath(dataFile)) == 0;
  if (filled != SQLITE_OK || !isOpen || store::LoadActionIndex(app) != 0) std::abort();
  store::DisconnectDataFile();
  return folder;
}

struct Cost {
  double clockSeconds;
  double cpuSeconds;
  long peakKilobytes;  // of its memory
};

inline double SecondsOf(const timeval& time) {
  return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) / 1e6;
}

inline Cost StartUntilPainted(const std::filesystem::path& folder, const char* mode) {
  int report[2];
  if (pipe(report) != 0) std::abort();
  const auto start = std::chrono::steady_clock::now();
  const pid_t child = fork();
  if (child == 0) {
    dup2(report[1], kReportHandle);
    if (chdir(folder.c_str()) != 0) _exit(1);
    execl("./Morvenly", "Morvenly", mode, static_cast<char*>(nullptr));
    _exit(1);
  }
  close(report[1]);
  char mark = 0;
  const bool painted = read(report[0], &mark, 1) == 1;
  const auto end = std::chrono::steady_clock::now();
  close(report[0]);
  rusage used{};
  wait4(child, nullptr, 0, &used);
  if (!painted) std::abort();
  return {std::chrono::duration<double>(end - start).count(),
          SecondsOf(used.ru_utime) + SecondsOf(used.ru_stime), used.ru_maxrss};
}
