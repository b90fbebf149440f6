// Timewarrior, a time tracker of the command line, over as many intervals as a large diary has
// Actions: what a tap is compared with. It writes text files and waits for no disk.
#pragma once

#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <filesystem>
#include <fstream>
#include <string>
#include <thread>

class Timewarrior {
 public:
  static bool IsInstalled() { return std::system("timew --version >/dev/null 2>&1") == 0; }

  // Makes its data: `count` closed intervals, thirty a day, and a running one after them since
  // an hour ago. `withUndoLog`: and the log that their starts would have left.
  Timewarrior(const std::string& name, int count, bool withUndoLog)
      : folder_(std::filesystem::temp_directory_path() / name), running_(count) {
    std::filesystem::create_directories(folder_ / "data");
    std::filesystem::create_directory(folder_ / "extensions");
    std::ofstream(folder_ / "timewarrior.cfg");
    std::ofstream(folder_ / "data/tags.data")
        << "{\n  \"travel\":{\"count\":" << count / 2
        << "},\n  \"work\":{\"count\":" << count / 2 + 1 << "}\n}";
    std::ofstream undo;
    if (withUndoLog) undo.open(folder_ / "data/undo.data");
    for (int i = 0; i <= count; ++i) {
      const std::string start = TimeOf(i);
      std::ofstream month(
          folder_ / "data" / (start.substr(0, 4) + '-' + start.substr(4, 2) + ".data"),
          std::ios::app);
      month << "inc " << start;
      if (i < count) month << " - " << TimeOf(i + 1);
      month << " # " << TagOf(i) << '\n';
      if (withUndoLog && i > 0) undo << TransactionOf(i);
    }
  }
  ~Timewarrior() { std::filesystem::remove_all(folder_); }
  Timewarrior(const Timewarrior&) = delete;
  Timewarrior& operator=(const Timewarrior&) = delete;

  struct Cost {
    double clockSeconds;
    double cpuSeconds;
  };

  // Starts the next interval, which closes the running one.
  Cost StartNext() {
    std::this_thread::sleep_for(std::chrono::seconds(1));  // no two may start in one second
    const char* const tag = TagOf(++running_);
    const auto begin = std::chrono::steady_clock::now();
    const pid_t child = fork();
    if (child == 0) {
      setenv("TIMEWARRIORDB", folder_.c_str(), 1);
      if (std::freopen("/dev/null", "w", stdout) == nullptr) _exit(1);
      execlp("timew", "timew", "start", tag, static_cast<char*>(nullptr));
      _exit(1);
    }
    int status = 0;
    rusage used{};
    if (wait4(child, &status, 0, &used) != child || status != 0) std::abort();
    const std::chrono::duration<double> taken = std::chrono::steady_clock::now() - begin;
    return {taken.count(), SecondsOf(used.ru_utime) + SecondsOf(used.ru_stime)};
  }

 private:
  static double SecondsOf(const timeval& time) {
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) / 1e6;
  }

  // Start of an interval, as Timewarrior writes it.
  std::string TimeOf(int interval) const {
    const std::time_t start = runningSince_ - std::time_t{running_ - interval} * 86400 / 30;
    char text[40];
    std::strftime(text, sizeof text, "%Y%m%dT%H%M%SZ", std::gmtime(&start));
    return text;
  }

  // Another one each time: the same would be no new interval.
  static const char* TagOf(int interval) { return interval % 2 == 0 ? "work" : "travel"; }

  std::string Interval(const char* id, int interval, const std::string& end) const {
    return "{\"id\":" + std::string(id) + ",\"start\":\"" + TimeOf(interval) + '"' + end +
           ",\"tags\":[\"" + TagOf(interval) + "\"]}\n";
  }

  // What the start of an interval leaves in the log.
  std::string TransactionOf(int interval) const {
    const std::string end = ",\"end\":\"" + TimeOf(interval) + '"';
    return "txn:\n  type: interval\n  before: " + Interval("1", interval - 1, "") +
           "  after: \n  type: interval\n  before: \n  after: " + Interval("1", interval - 1, end) +
           "  type: interval\n  before: \n  after: " + Interval("0", interval, "");
  }

  std::filesystem::path folder_;
  std::time_t runningSince_ = std::time(nullptr) - 3600;
  int running_;  // the number of the running interval
};
