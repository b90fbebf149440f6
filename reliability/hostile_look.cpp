#include "reliability/hostile_look.h"

#include <algorithm>
#include <ctime>
#include <iterator>
#include <span>

#include "core/settings_choices.h"
#include "edit/edit_action.h"
#include "exchange/action_lines.h"
#include "exchange/export.h"
#include "exchange/find_dialog.h"
#include "exchange/import.h"
#include "extitems/text_form.h"
#include "inspection/inspection.h"
#include "platform/utf.h"
#include "recorder/recorder_state.h"
#include "recorder/recording.h"
#include "store/action_index.h"
#include "store/session.h"
#include "views/day_view.h"
#include "views/list_view.h"
#include "views/map_picture.h"
#include "views/map_view.h"
#include "views/month_layout.h"
#include "views/navigation.h"
#include "views/selection.h"
#include "views/week_layout.h"

namespace reliability {
namespace {

// Of the processor, as the machine may be busy with something else.
double SecondsSpent() {
  timespec spent;
  clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &spent);
  return static_cast<double>(spent.tv_sec) + static_cast<double>(spent.tv_nsec) / 1e9;
}

template <size_t kSize>
void Put(std::string_view text, std::array<char, kSize>& place) {
  const auto end = std::copy_n(text.begin(), std::min(text.size(), kSize - 1), place.begin());
  *end = '\0';
}

// Notes how long each step takes.
class Watch {
 public:
  Watch(Onlooker& host, Outcome& outcome) : host_(host), outcome_(outcome) {}

  // The window shows a wait cursor of its own while the program starts.
  void Do(std::string_view step, const std::function<void()>& work, bool isStart = false) {
    host_.wasWaiting = isStart;
    const double begun = SecondsSpent();
    work();
    const double took = SecondsSpent() - begun;
    if (took > outcome_.slowest) {
      outcome_.slowest = took;
      Put(step, outcome_.slowestStep);
    }
    if (!host_.wasWaiting && took > outcome_.slowestBare) {
      outcome_.slowestBare = took;
      Put(step, outcome_.slowestBareStep);
    }
  }

 private:
  Onlooker& host_;
  Outcome& outcome_;
};

void TellMessages(const Host& host, Outcome& outcome) {
  outcome.messages += static_cast<int>(host.messages.size());
  if (!host.messages.empty() && outcome.firstMessage[0] == '\0') {
    Put(host.messages.front(), outcome.firstMessage);
  }
}

void LookAtWeek(const core::CAppState& app) {
  views::WeekData week;
  views::ReadWeek(app, week);
  const views::WeekGrid grid = views::LayoutWeek(240, 268);
  int box = -1;
  for (const views::WeekItem& item :
       std::span(week.WeekItems).first(std::min<size_t>(week.WeekItems.size(), 100))) {
    const views::Rect rect = views::BoxRect(grid, item);
    views::BoxAt(grid, week.WeekItems, rect.x, rect.y);
    views::BoxText(item);
    box = views::NextBox(week.WeekItems, box, views::BoxStep::kAfter, 0);
    views::NextBox(week.WeekItems, box, views::BoxStep::kDown, 3);
  }
}

void LookAtMonth(const core::CAppState& app) {
  const views::MonthData month = views::CountMonth(app, core::CurYear, core::CurMonth);
  const views::MonthLayout layout = views::LayoutMonth({0, 0, 240, 268}, true, true);
  for (int cell = 0; cell < views::kMonthCells; ++cell) {
    views::CellText(month.MonthCells[static_cast<size_t>(cell)]);
    views::KindOfCell(month, cell, core::CurrentDay());
    views::CellRect(layout, cell);
  }
  views::MonthTitle(app, month);
  views::FillMonthList(app);
}

void LookAtList(core::CAppState& app) {
  app.CurView = core::kViewList;
  views::GoToPageOfCurDate(app);
  for (const views::Step step : {views::Step::kForward, views::Step::kBigBack, views::Step::kBack,
                                 views::Step::kBigForward}) {
    views::SetDataListView(app);
    views::ListTitle(app);
    views::TakeStep(app, step);
  }
  app.CurView = core::kViewDay;
}

void LookAtMap(const core::CAppState& app) {
  views::MapPane pane;
  pane.Resize(240, 160);
  views::SetDataMapViewForLV(app, pane);
  views::PictureOf(pane);
  pane.HitTest({120, 80});
  views::FxMapMove(pane, std::array{0});
  pane.Zoom(100.0);
  views::PictureOf(pane);
}

void LookAtDay(core::CAppState& app) {
  for (const int mode : {int{core::kSpanningDayMode}, core::kSpanningDayMode + 1}) {
    app.DayVwMltDayMode = mode;
    const views::ViewRows rows = views::SetDataDayView(app);
    const int last = std::min(static_cast<int>(rows.RowActIds.size()), 20);
    for (int row = -1; row <= last; ++row) {
      views::SelectRow(app, rows, row);
    }
    if (!rows.RowActIds.empty()) views::OnEditDispMap(app, rows, 0);
  }
}

void LookAtViews(core::CAppState& app, Watch& watch) {
  static constexpr core::Day kDays[] = {{2010, 6, 23},  {2010, 6, 1}, {2009, 12, 31}, {2010, 7, 30},
                                        {9999, 12, 31}, {100, 1, 1},  {2010, 2, 31},  {0, 0, 0}};
  for (const core::Day& day : kDays) {
    core::SetCurrentDay(day);
    watch.Do("day", [&] { LookAtDay(app); });
    watch.Do("week", [&] { LookAtWeek(app); });
    watch.Do("month", [&] { LookAtMonth(app); });
    watch.Do("list", [&] { LookAtList(app); });
    watch.Do("map", [&] { LookAtMap(app); });
  }
  core::SetCurrentDay(kDays[0]);
}

void LookAtAction(core::CAppState& app, edit::OpenMode mode) {
  edit::CEditAction screen(app);
  if (!screen.Open(mode)) return;
  screen.ShownMemo();
  extitems::ExtItemList items;
  extitems::ParseExtItems(items, screen.ExtItems());
  screen.OnCommand(edit::kIdMemo);
  screen.EditorRows();
  screen.DropEditor();
  screen.dirty = false;
  screen.OnCommand(edit::kIdNext);
  screen.OnCommand(edit::kIdPrevious);
  screen.OnCommand(edit::kIdShowPosition);
}

void LookAtActions(core::CAppState& app, Watch& watch) {
  for (const int text : {core::kOff, core::kOn}) {
    app.ActTxtMode = text;
    for (int n = 0; n < 6; ++n) {
      app.SelIndex = app.IndexCount * n / 6;
      watch.Do("edit", [&] { LookAtAction(app, n == 5 ? edit::kOpenFollow : edit::kOpenChange); });
    }
  }
  app.SelIndex = -1;
}

void Find(core::CAppState& app) {
  exchange::CFind find(app);
  find.fields.text = u"%社_a";
  find.fields.inPlace = find.fields.inMemo = true;
  find.fields.staDate = u"2010/01/01";
  find.OnFind();
  LookAtDay(app);
  LookAtList(app);
  store::ReloadActionIndex(app);
}

void Export(Program& program, const std::filesystem::path& folder) {
  const platform::WaitCursor waiting;  // as its screen has
  std::filesystem::create_directory(folder / "out");
  for (const int version :
       {exchange::kVer1, exchange::kVer2, exchange::kVer3, exchange::kVer3Utf8}) {
    exchange::RunExport(program.App(), program.Path(u"out\\out.csv"), version);
  }
  std::filesystem::remove_all(folder / "out");
}

// The Actions that can be read, but for the recorder's, which it changes.
Picture ActionsOf(Program& program) {
  Picture actions = program.Look();
  std::erase_if(actions, [](const std::string& line) {
    return !line.starts_with("Action ") || line == "Action gone" || line.find("道") != line.npos;
  });
  return actions;
}

// As far as the engine can say. Of a damaged file it's not promised that a write to a damaged page
// leaves the rest of it readable.
bool IsSound() {
  static constexpr std::u16string_view kColumns[] = {u"integrity_check"};
  std::unique_ptr<store::RowSet> rows;
  std::array<std::optional<std::u16string>, 1> found;
  store::Engine& engine = *store::dbSession().Session;
  return !store::Failed(engine.OpenRows(u"PRAGMA integrity_check(1)", rows)) &&
         !store::Failed(rows->Bind(kColumns)) && rows->Next(found) == store::S_OK &&
         found[0] == u"ok";
}

void NewAction(Program& program) {
  program.App().SelIndex = -1;
  edit::CEditAction screen(program.App());
  if (!screen.Open(edit::kOpenNew)) return;
  screen.fields.place = u"書いた場所";
  screen.fields.memo = u"書いたメモ";
  screen.dirty = true;
  screen.OnCommand(edit::kIdWrite);
}

void Tap(core::CAppState& app) {
  recorder::CRecorder recorder(app);
  recorder.Open();
  recorder.fields.place = u"押した場所";
  recorder.OnBtnRec();
  recorder.OnBtnStop();
  recorder.Close();
}

// A file that is refused leaves no trace.
void Import(Program& program, const std::filesystem::path& folder, Outcome& outcome) {
  for (int version = exchange::kVer1; version <= exchange::kVer3Utf8; ++version) {
    const std::string name = "in" + std::to_string(version) + ".csv";
    const int reader = std::min<int>(version, exchange::kVer3);  // which knows both encodings
    if (!std::filesystem::exists(folder / name)) continue;
    for (const int mode : {exchange::kReadAdd, exchange::kReadReplace}) {
      const Picture before = ActionsOf(program);
      const int result =
          exchange::RunImport(program.App(), program.Path(platform::ToUtf16(name)), reader, mode);
      if (result == -1 && ActionsOf(program) != before) {
        Put("a refused import has written", outcome.finding);
      }
    }
  }
}

}  // namespace

platform::Answer Onlooker::ShowMessage(const platform::Message& message) {
  using platform::Answer;
  using platform::Buttons;
  if (agrees_) return Host::ShowMessage(message);
  messages.push_back(platform::ToUtf8(message.title + u"|" + message.text));
  return message.buttons == Buttons::kOk         ? Answer::kOk
         : message.buttons == Buttons::kOkCancel ? Answer::kCancel
                                                 : Answer::kNo;
}

void Onlooker::SetWaitCursor(bool waiting) {
  wasWaiting = wasWaiting || waiting;
}

uint32_t Onlooker::TickCount() {
  return static_cast<uint32_t>(SecondsSpent() * 1000);
}

void LookAtEverything(const std::filesystem::path& folder, Outcome& outcome) {
  Onlooker host(folder, false);
  Program program(folder, host);
  Watch watch(host, outcome);
  watch.Do(
      "start", [&] { outcome.opened = program.Start(); }, true);
  if (outcome.opened) {
    core::CAppState& app = program.App();
    outcome.actions = app.IndexCount;
    LookAtViews(app, watch);
    LookAtActions(app, watch);
    watch.Do("find", [&] { Find(app); });
    watch.Do("export", [&] { Export(program, folder); });
    watch.Do("recorder", [&] { recorder::LoadRecorderData(app); });
    watch.Do("inspection", [&] { outcome.isWhole = inspection::Inspect(app).IsGood(); });
  }
  TellMessages(host, outcome);
}

void Write(const std::filesystem::path& folder, Outcome& outcome) {
  Onlooker host(folder, true);
  Picture before;
  bool wasSound = false;
  {
    Program program(folder, host);
    outcome.opened = program.Start();
    if (outcome.opened) {
      before = ActionsOf(program);
      wasSound = IsSound();
      NewAction(program);
      outcome.wrote = host.messages.empty();
      TellMessages(host, outcome);
      Tap(program.App());
    }
    TellMessages(host, outcome);
  }
  if (!wasSound) return;
  host.messages.clear();
  Program program(folder, host);
  if (!program.Start()) {
    Put("doesn't start after a write: " + (host.messages.empty() ? "" : host.messages.back()),
        outcome.finding);
    return;
  }
  const Picture after = ActionsOf(program);
  Picture lost;
  std::ranges::set_difference(before, after, std::inserter(lost, lost.end()));
  if (!lost.empty()) Put("lost by a write: " + *lost.begin(), outcome.finding);
  const bool isThere = std::ranges::any_of(
      after, [](const std::string& line) { return line.find("書いた場所") != line.npos; });
  if (outcome.wrote && !isThere) Put("not written, and nobody was told", outcome.finding);
  Import(program, folder, outcome);
  if (!IsSound()) Put("damaged by a write", outcome.finding);
}

}  // namespace reliability
