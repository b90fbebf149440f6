// Plays the whole program at random, life after life, each in a process of its own with the next
// seed. Ends with 1 at the first life that ends in a crash, a sanitizer's report or a fault, and
// says how to repeat it; or if a screen was never reached in all the time.
#include <getopt.h>
#include <spawn.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include "life.h"
#include "mainwindow/command_table.h"
#include "watch.h"

namespace {

using Clock = std::chrono::steady_clock;

constexpr int kStepsALife = 6000;
constexpr long kMostKilobytes = 1 << 20;  // of memory in a life, under the sanitizers
constexpr int kSecondsForAll = 300;       // that reach every screen on a slow machine, too

constexpr const char* kUsage = R"(Usage: random_hands [OPTION]...
Taps, drags, types, rotates and waits at random over the whole program.

      --seconds N   play for N seconds (120)
      --seed S      begin with the life of this seed (by the clock)
      --steps N     play that life alone, up to this step, in this process
)";

constexpr const char* kScreens[] = {
    "QComboBoxPrivateContainer",
    "QMenu",
    "QMessageBox",
    "edit::CEditActionDlg",
    "exchange::CExchangeDlg",
    "exchange::CFindDlg",
    "extitems::CItemEditorDlg",
    "filedialog::CFileSelectDlg",
    "options::AboutDlg",
    "options::OptionsSheet",
    "pickers::TimeSelectDlg",
    "pickers::ValueInputDlg",
    "pickers::ValueSelectDlg",
    "platform::qt::MonthCalendar",
    "recorder::CRecorderDlg",
    "tidy::TidyDlg",
    "views::ActionList",
    "views::MapCanvas",
};

struct Options {
  int seconds = 120;
  unsigned seed = static_cast<unsigned>(
      std::chrono::system_clock::now().time_since_epoch().count() / 1000000000 % 100000000);
  int steps = 0;
  std::string report;  // of a life for the lives' keeper
};

Options Read(int argc, char** argv) {
  static constexpr std::array<option, 5> kWords = {{{"seconds", required_argument, nullptr, 't'},
                                                    {"seed", required_argument, nullptr, 's'},
                                                    {"steps", required_argument, nullptr, 'n'},
                                                    {"report", required_argument, nullptr, 'r'},
                                                    {nullptr, 0, nullptr, 0}}};
  Options options;
  for (int word; (word = getopt_long(argc, argv, "", kWords.data(), nullptr)) != -1;) {
    if (word == 't') options.seconds = std::atoi(optarg);
    if (word == 's') options.seed = static_cast<unsigned>(std::strtoul(optarg, nullptr, 10));
    if (word == 'n') options.steps = std::atoi(optarg);
    if (word == 'r') options.report = optarg;
    if (word == '?') {
      std::fputs(kUsage, stderr);
      std::exit(2);
    }
  }
  return options;
}

// The status of the process that has played the life, and the memory that it took.
int RunLife(unsigned seed, int seconds, const std::string& report, long& kilobytes) {
  std::vector<std::string> words = {"random_hands",
                                    "--seed",
                                    std::to_string(seed),
                                    "--steps",
                                    std::to_string(kStepsALife),
                                    "--seconds",
                                    std::to_string(seconds),
                                    "--report",
                                    report};
  std::vector<char*> argv;
  for (std::string& word : words) argv.push_back(word.data());
  argv.push_back(nullptr);
  pid_t child = 0;
  if (posix_spawn(&child, "/proc/self/exe", nullptr, nullptr, argv.data(), environ) != 0) return -1;
  int status = -1;
  struct rusage used {};
  wait4(child, &status, 0, &used);
  kilobytes = used.ru_maxrss;
  return status;
}

void AddReport(const std::string& report, hands::Counts& counts) {
  std::ifstream in(report);
  long count = 0;
  std::string what;
  while (in >> count && in.ignore() && std::getline(in, what)) counts[what] += count;
}

// Whether every screen was reached.
bool PrintReached(const hands::Counts& counts) {
  for (const auto& [what, count] : counts) std::printf("%9ld  %s\n", count, what.c_str());
  const auto isReached = [&](const std::string& what) {
    if (counts.contains(what)) return true;
    std::printf("never reached: %s\n", what.c_str());
    return false;
  };
  for (const auto& row : mainwindow::Commands()) {
    if (!row.text.empty()) isReached("command " + std::to_string(row.id));
  }
  bool areAll = true;
  for (const char* screen : kScreens) areAll &= isReached(std::string("screen ") + screen);
  return areAll;
}

int PlayLives(const Options& options) {
  setenv("ASAN_OPTIONS", "handle_abort=1", 0);
  setenv("UBSAN_OPTIONS", "print_stacktrace=1", 0);
  const std::string report =
      std::filesystem::temp_directory_path() / ("random_hands-" + std::to_string(getpid()));
  const auto begin = Clock::now();
  const auto left = [&] {
    return options.seconds - static_cast<int>((Clock::now() - begin) / std::chrono::seconds(1));
  };
  hands::Counts counts;
  long mostKilobytes = 0;
  unsigned seed = options.seed;
  for (; left() > 0; ++seed) {
    long kilobytes = 0;
    const int status = RunLife(seed, left(), report, kilobytes);
    AddReport(report, counts);
    unlink(report.c_str());
    mostKilobytes = std::max(mostKilobytes, kilobytes);
    if (status == 0 && kilobytes < kMostKilobytes) continue;
    std::printf(
        "The life of seed %u ended with %s %d and took %ld KB. Again: --seed %u --steps %d\n", seed,
        WIFSIGNALED(status) ? "signal" : "code",
        WIFSIGNALED(status) ? WTERMSIG(status) : WEXITSTATUS(status), kilobytes, seed, kStepsALife);
    return EXIT_FAILURE;
  }
  const bool areAllReached = PrintReached(counts);
  std::printf("%u lives in %d s, seeds %u to %u, %ld KB at most\n", seed - options.seed,
              options.seconds, options.seed, seed - 1, mostKilobytes);
  return areAllReached || options.seconds < kSecondsForAll ? EXIT_SUCCESS : EXIT_FAILURE;
}

}  // namespace

int main(int argc, char** argv) {
  const Options options = Read(argc, argv);
  if (options.steps == 0) return PlayLives(options);
  const bool isAlone = options.report.empty();
  return hands::Live({options.seed, options.steps, isAlone ? 1 << 20 : options.seconds,
                      isAlone ? "/dev/stdout" : options.report},
                     argc, argv);
}
