// What grows with the diary: a start, the recorder's first tap and the following ones, a step of a
// day in each view, a page of the list, a find, and memory, with 1,000 to 1,000,000 Actions. Prints
// a table, and draws it with --picture FILE. The yardstick is the column of the smallest diary; for
// a find, straight SQLite.
#include <QImage>
#include <algorithm>
#include <cmath>
#include <cstdio>
#include <ctime>
#include <map>
#include <sstream>
#include <vector>

#include "core/settings_choices.h"
#include "exchange/find.h"
#include "mainwindow/main_window.h"
#include "recorder_taps.h"
#include "started_program.h"
#include "views/commands.h"

namespace {

constexpr std::array<int, 4> kSizes = {1'000, 10'000, 100'000, 1'000'000};
constexpr int kStarts = 9;
constexpr int kTurns = 21;

// Milliseconds of the processor and by the clock.
struct Took {
  double cpu = 0;
  double clock = 0;
};

double Median(std::vector<double> values) {
  std::nth_element(values.begin(), values.begin() + values.size() / 2, values.end());
  return values[values.size() / 2];
}

Took MedianOf(const std::vector<Took>& turns) {
  std::vector<double> cpu, clock;
  for (const Took& turn : turns) {
    cpu.push_back(turn.cpu);
    clock.push_back(turn.clock);
  }
  return {Median(cpu), Median(clock)};
}

template <typename Work>
Took Measure(Work work) {
  const auto begin = std::chrono::steady_clock::now();
  const std::clock_t cpu = std::clock();
  work();
  const std::chrono::duration<double, std::milli> taken = std::chrono::steady_clock::now() - begin;
  return {static_cast<double>(std::clock() - cpu) * 1000.0 / CLOCKS_PER_SEC, taken.count()};
}

template <typename Work>
Took MedianOfTurns(Work work) {
  std::vector<Took> turns;
  for (int turn = 0; turn < kTurns; ++turn) turns.push_back(Measure(work));
  return MedianOf(turns);
}

void Report(const char* what, Took took) {
  std::printf("%s\t%f\t%f\n", what, took.cpu, took.clock);
}

// In the child: everything but the start, with the diary in the current folder.
void StepThroughViews(std::u16string_view diary) {
  static constexpr std::pair<const char*, core::View> kViews[] = {
      {"day, a step", core::kViewDay},   {"day that spans, a step", core::kViewDay},
      {"week, a step", core::kViewWeek}, {"month, a step", core::kViewMonth},
      {"map, a step", core::kViewMap},   {"list, a page", core::kViewList}};
  if (store::ConnectDataFile(diary) != 0) std::abort();
  core::CAppState app;
  store::ReloadActionIndex(app);
  app.SeqViewRng = 30;
  core::SetCurDate(app.ActStarts.At(app.ActStarts.Count() - 200).substr(0, 10));
  for (const auto& [what, view] : kViews) {
    app.InitView = view;
    app.DayVwMltDayMode = std::string_view(what).find("spans") == std::string_view::npos ? 1 : 2;
    mainwindow::CMainWnd window(app);
    window.resize(240, 320);
    window.show();
    QImage picture(window.size(), QImage::Format_RGB32);
    bool forward = false;
    Report(what, MedianOfTurns([&] {
             forward = !forward;
             window.OnCommand(forward ? views::kStepForward : views::kStepBack);
             window.render(&picture);
           }));
  }
  store::DisconnectDataFile();
}

void Find(std::u16string_view diary) {
  if (store::ConnectDataFile(diary) != 0) std::abort();
  core::CAppState app;
  store::ReloadActionIndex(app);
  Report("find",
         MedianOfTurns([&] { exchange::FindActions(app, {}, u"版", exchange::kFindInMemo); }));
  store::DisconnectDataFile();
  sqlite3* database = nullptr;
  sqlite3_stmt* select = nullptr;
  sqlite3_open("user.sdf", &database);
  sqlite3_prepare_v2(database,
                     "select f_nchActId,f_nchStaDateTime from t_UserData where f_nvcMemo like "
                     "'%版%' order by f_nchStaDateTime",
                     -1, &select, nullptr);
  Report("find, straight SQLite", MedianOfTurns([&] {
           core::TextList ids, starts;
           const auto text = [&](int column) {
             const void* characters = sqlite3_column_text16(select, column);
             return std::u16string_view(static_cast<const char16_t*>(characters));
           };
           while (sqlite3_step(select) == SQLITE_ROW) {
             ids.Append(text(0));
             starts.Append(text(1));
           }
           sqlite3_reset(select);
         }));
  sqlite3_finalize(select);
  sqlite3_close(database);
}

void TapTheRecorder(std::u16string_view diary) {
  constexpr int kSessions = 9;
  std::vector<Took> firstTaps;
  Took tap;
  for (int session = 0; session < kSessions; ++session) {
    OnScreen(diary, [&](recorder::CRecorderDlg& dialog) {
      TapOnScreen screen(dialog);
      firstTaps.push_back(Measure([&] { screen.Tap(); }));
      if (session == 0) tap = MedianOfTurns([&] { screen.Tap(); });
    });
  }
  Report("recorder, the first tap", MedianOf(firstTaps));
  Report("recorder, a tap", tap);
}

double PeakMegabytes() {
  rusage used{};
  getrusage(RUSAGE_SELF, &used);
  return static_cast<double>(used.ru_maxrss) / 1024;
}

int Drive(int argc, char** argv) {
  platform::SetHost(&host);
  QApplication application(argc, argv);
  platform::qt::DressApplication(application);
  const std::u16string diary =
      *platform::FromHostPath((std::filesystem::current_path() / "user.sdf").string());
  core::CAppState app;
  if (store::ConnectDataFile(diary) != 0) std::abort();
  Report("index, as a start reads it", Measure([&] { store::LoadActionIndex(app); }));
  Report("index, the rest of it", Measure([&] { store::ReadWholeActionIndex(app); }));
  Report("memory with all of the index, MB", {PeakMegabytes(), PeakMegabytes()});
  store::DisconnectDataFile();
  StepThroughViews(diary);
  Find(diary);
  TapTheRecorder(diary);
  return 0;
}

using Column = std::map<std::string, Took>;

// As a kill or another program's write leaves the folder, nothing is kept of the index.
void Start(const std::filesystem::path& folder, Column& column) {
  std::vector<Took> turns, turnsWithoutIndex;
  double kilobytes = 0;
  const std::filesystem::path kept = folder / "user.sdf-index", aside = folder / "aside";
  const auto start = [&](std::vector<Took>& to) {
    const Cost cost = StartUntilPainted(folder, "--program");
    to.push_back({cost.cpuSeconds * 1000, cost.clockSeconds * 1000});
    kilobytes = std::max(kilobytes, static_cast<double>(cost.peakKilobytes));
  };
  for (int turn = 0; turn < kStarts; ++turn) start(turns);
  column["memory at a start's peak, MB"] = {kilobytes / 1024, kilobytes / 1024};
  const bool isKept = std::filesystem::exists(kept);
  if (isKept) std::filesystem::rename(kept, aside);
  for (int turn = 0; turn < kStarts; ++turn) start(turnsWithoutIndex);
  if (isKept) std::filesystem::rename(aside, kept);
  column["start to the painted day"] = MedianOf(turns);
  column["start to the painted day, nothing kept"] = MedianOf(turnsWithoutIndex);
}

Column Run(int actions) {
  Column column;
  const std::filesystem::path folder = MakeFolder(actions);
  Start(folder, column);
  FILE* driven = popen(("cd '" + folder.string() + "' && ./Morvenly --drive").c_str(), "r");
  std::array<char, 200> line;
  while (std::fgets(line.data(), line.size(), driven) != nullptr) {
    std::istringstream words(line.data());
    std::string what;
    Took took;
    if (std::getline(words, what, '\t') && words >> took.cpu >> took.clock) column[what] = took;
  }
  if (pclose(driven) != 0) std::abort();
  std::filesystem::remove_all(folder);
  return column;
}

void PrintTable(const std::vector<Column>& columns) {
  std::printf("| milliseconds of the processor, by the clock |");
  for (const int size : kSizes) std::printf(" %d |", size);
  std::printf(" last to first |\n|---|---|---|---|---|---|\n");
  for (const auto& [what, first] : columns.front()) {
    std::printf("| %s |", what.c_str());
    for (const Column& column : columns) {
      std::printf(" %.2f, %.2f |", column.at(what).cpu, column.at(what).clock);
    }
    std::printf(" %.2f |\n", columns.back().at(what).cpu / first.cpu);
  }
}

// Both axes by powers of ten: what doesn't grow is a level line.
void Draw(const char* path, const std::vector<Column>& columns) {
  static constexpr const char* kColours[] = {"#0072b2", "#d55e00", "#009e73", "#cc79a7",
                                             "#8a6d00", "#000000", "#56b4e9", "#777777"};
  std::ofstream picture(path);
  picture << "<svg xmlns='http://www.w3.org/2000/svg' viewBox='0 0 760 460' "
             "font-family='sans-serif' font-size='12'>"
             "<rect width='760' height='460' fill='#fff'/>\n";
  const auto x = [](size_t size) { return 60 + 130 * static_cast<double>(size); };
  const auto y = [](double ms) { return 300 - 80 * std::log10(std::max(ms, 0.02)); };
  for (int power = -1; power <= 3; ++power) {
    const double at = y(std::pow(10, power));
    picture << "<path d='M60 " << at << "H450' stroke='#ddd'/><text x='54' y='" << at + 4
            << "' text-anchor='end'>" << std::pow(10, power) << " ms</text>\n";
  }
  for (size_t size = 0; size < kSizes.size(); ++size) {
    picture << "<text x='" << x(size) << "' y='440' text-anchor='middle'>" << kSizes[size]
            << "</text>\n";
  }
  size_t line = 0;
  for (const auto& [what, first] : columns.front()) {
    if (what.find("MB") != std::string::npos) continue;
    const char* colour = kColours[line % std::size(kColours)];
    const char* dash = line < std::size(kColours) ? "none" : "5 3";
    picture << "<path fill='none' stroke='" << colour << "' stroke-dasharray='" << dash << "' d='";
    for (size_t size = 0; size < columns.size(); ++size) {
      picture << (size == 0 ? 'M' : 'L') << x(size) << ' ' << y(columns[size].at(what).cpu);
    }
    const double at = 40 + 24 * static_cast<double>(line++);
    picture << "'/><path stroke='" << colour << "' stroke-dasharray='" << dash << "' d='M480 " << at
            << "h30'/><text x='518' y='" << at + 4 << "'>" << what << "</text>\n";
  }
  picture << "</svg>\n";
}

}  // namespace

int main(int argc, char** argv) {
  const std::string mode = argc > 1 ? argv[1] : "";
  if (mode == "--program") return RunProgram(argc, argv);
  setenv("QT_QPA_PLATFORM", "offscreen", 1);
  if (mode == "--drive") return Drive(argc, argv);
  platform::SetHost(&host);
  const QApplication application(argc, argv);  // for the wait cursor while the files are made
  std::vector<Column> columns;
  for (const int size : kSizes) columns.push_back(Run(size));
  PrintTable(columns);
  if (mode == "--picture" && argc > 2) Draw(argv[2], columns);
}
