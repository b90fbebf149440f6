#include "reliability/diary_week.h"

#include <fstream>
#include <iterator>
#include <sstream>

#include "backup/backup.h"
#include "backup/daily_copy.h"
#include "backup/restore.h"
#include "backup/summary.h"
#include "core/settings.h"
#include "datafile/compaction.h"
#include "datafile/data_file.h"
#include "edit/edit_action.h"
#include "exchange/action_lines.h"
#include "exchange/export.h"
#include "exchange/import.h"
#include "platform/device_paths.h"
#include "platform/utf.h"
#include "recorder/recorder_state.h"
#include "recorder/recording.h"
#include "store/action_index.h"
#include "store/session.h"
#include "tidy/tidy.h"
#include "undo/undo.h"
#include "views/selection.h"

namespace reliability {
namespace {

using Text = std::u16string;
namespace fs = std::filesystem;

std::string Bytes(const fs::path& path) {
  std::ifstream in(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(in), {}};
}

// Without ids and stamps.
std::string ExportedBytes(const fs::path& path) {
  std::istringstream lines(Bytes(path));
  std::string bytes;
  for (std::string line; std::getline(lines, line); bytes += '\n') {
    bytes += line.substr(std::min(line.size(), line.find('\t', line.find('\t') + 1)));
  }
  return bytes;
}

std::string WholeOrNot(const fs::path& path) {
  const auto engine = store::Engine::Open(*platform::FromHostPath(path.string()));
  const auto summary = engine ? backup::CheckWhole(*engine) : std::nullopt;
  return summary ? std::to_string(summary->actions) + " Actions" : "damaged";
}

std::string LineOf(const store::Action& action) {
  std::string line;
  for (int column = store::kStaDateTime; column < store::kActionColumnCount; ++column) {
    const auto& text = action[static_cast<size_t>(column)];
    line += text ? platform::ToUtf8(*text) : "(none)";
    line += '|';
  }
  return line;
}

std::string LineOf(std::u16string_view id) {
  store::Action action;
  return store::dbSession().UserTable->ReadById(id, action) == store::S_OK ? LineOf(action)
                                                                           : "gone";
}

size_t memoLength = 0;

void Write(Program& program, edit::OpenMode mode, int position, std::u16string_view place,
           std::u16string_view memo) {
  program.App().SelIndex = position;
  edit::CEditAction screen(program.App());
  if (!screen.Open(mode)) return;
  screen.fields.place = place;
  screen.fields.memo = memo;
  screen.dirty = true;
  screen.OnCommand(edit::kIdWrite);
}

void New(Program& program, int hour, std::u16string_view place) {
  program.TheHost().now.hour = hour;
  Write(program, edit::kOpenNew, -1, place, Text(memoLength, u'長'));
}

void Record(Program& program, int hour, std::u16string_view place,
            void (recorder::CRecorder::*command)()) {
  program.TheHost().now.hour = hour;
  recorder::CRecorder recorder(program.App());
  recorder.Open();
  recorder.fields.place = place;
  (recorder.*command)();
  recorder.Close();
}

void Import(Program& program, int mode) {
  exchange::RunImport(program.App(), program.Path(u"in.csv"), exchange::kVer3, mode);
}

constexpr Step kWeek[] = {
    {"first start", [](Program& program) { program.Start(); }},
    {"new", [](Program& program) { New(program, 10, u"自宅"); }},
    {"copy of the day",
     [](Program&) {
       if (backup::FinishDailyCopy()) backup::TellDailyFailure();
     }},
    {"another", [](Program& program) { New(program, 11, u"会社"); }},
    {"change",
     [](Program& program) { Write(program, edit::kOpenChange, 1, u"駅", u"変更\r\nした"); }},
    {"recorder: first tap",
     [](Program& program) { Record(program, 12, u"公園", &recorder::CRecorder::OnBtnRec); }},
    {"recorder: tap",
     [](Program& program) { Record(program, 13, u"学校", &recorder::CRecorder::OnBtnRec); }},
    {"recorder: step back",
     [](Program& program) { Record(program, 14, u"学校", &recorder::CRecorder::OnBtnBack); }},
    {"recorder: tap on",
     [](Program& program) { Record(program, 15, u"映画館", &recorder::CRecorder::OnBtnRec); }},
    {"recorder: stop",
     [](Program& program) { Record(program, 16, u"", &recorder::CRecorder::OnBtnStop); }},
    {"recorder: go on",
     [](Program& program) { Record(program, 17, u"", &recorder::CRecorder::OnBtnStop); }},
    {"export",
     [](Program& program) {
       exchange::RunExport(program.App(), program.Path(u"out.csv"), exchange::kVer3);
     }},
    {"import, add", [](Program& program) { Import(program, exchange::kReadAdd); }},
    {"import, replace", [](Program& program) { Import(program, exchange::kReadReplace); }},
    {"delete",
     [](Program& program) {
       const Text id(program.App().ActIds.At(0));
       views::FxDeleteAction(program.App(), id);
     }},
    {"taken back", [](Program& program) { undo::Take(program.App(), store::Turn::kUndo); }},
    {"done again", [](Program& program) { undo::Take(program.App(), store::Turn::kRedo); }},
    {"set right",
     [](Program& program) {
       core::SetCurDate(u"2010/06/23");
       tidy::TidyDay day(program.App());
       if (!day.Read() || day.Chain().spans.empty()) return;
       day.Run(tidy::ExtendBefore(day.Chain(), day.Chain().links.back()), u"空きを埋める");
     }},
    {"backup", [](Program& program) { backup::MakeBackup(program.Path(u"mine.sdf")); }},
    {"new after it", [](Program& program) { New(program, 18, u"海"); }},
    {"compaction",
     [](Program& program) { datafile::OnBtnCompact(program.App(), program.App().DataFile); }},
    {"restore",
     [](Program& program) { backup::Restore(program.App(), program.Path(u"mine.sdf")); }},
    {"last one", [](Program& program) { New(program, 19, u"山"); }},
    {"settings", [](Program& program) { core::SaveSettings(program.App()); }},
    {"next start",
     [](Program& program) {
       program.Close();
       program.Start();
     }},
};

}  // namespace

Host::Host(const fs::path& folder)
    : programPath_(*platform::FromHostPath(folder.string()) + u"\\Morvenly") {}

platform::Answer Host::ShowMessage(const platform::Message& message) {
  using platform::Answer;
  using platform::Buttons;
  if (message.buttons == Buttons::kOk) {
    messages.push_back(platform::ToUtf8(message.title + u"|" + message.text));
    return Answer::kOk;
  }
  const bool givesUp = message.text.find(u"初期化") != Text::npos;
  const bool yes = isNew || !givesUp;
  if (message.buttons == Buttons::kOkCancel) return yes ? Answer::kOk : Answer::kCancel;
  if (!yes) messages.push_back(platform::ToUtf8(message.title + u"|" + message.text));
  return yes ? Answer::kYes : Answer::kNo;
}

Program::Program(const fs::path& folder, Host& host) : folder_(folder), host_(host) {
  platform::SetHost(&host);
  app_ = std::make_unique<core::CAppState>();
  core::g_App = app_.get();
}

Program::~Program() {
  Close();
  core::g_App = nullptr;
}

void Program::Close() {
  if (store::dbSession().Session) recorder::CloseRecorderSession(*app_);
  store::DisconnectDataFile();
}

Text Program::Path(std::u16string_view name) const {
  return *platform::FromHostPath(folder_.string()) + u"\\" + Text(name);
}

bool Program::Start() {
  if (store::dbSession().Session) return true;
  app_ = std::make_unique<core::CAppState>();
  core::g_App = app_.get();
  if (core::InitApp(*app_) != 0) return false;
  backup::KeepDailyCopies();
  app_->SeqViewRng = 20;
  return !datafile::EndsProcess(datafile::OpenDataFile(*app_));
}

Picture Program::Look() {
  Picture picture;
  if (store::dbSession().Session) {
    picture.insert("an open diary");
    core::CAppState index;
    if (store::LoadActionIndex(index) != 0) picture.insert("an unreadable index");
    for (int i = 0; i < index.IndexCount; ++i) {
      picture.insert("Action " + LineOf(index.ActIds.At(static_cast<size_t>(i))));
    }
    if (recorder::LoadRecorderData(index) != 0) picture.insert("an unreadable recorder");
    for (size_t i = 0; i < index.RcdrHistory.Count(); ++i) {
      picture.insert("chain " + std::to_string(i) + " " + LineOf(index.RcdrHistory.At(i)));
    }
    if (!index.RcdrPreActId.empty()) picture.insert("running " + LineOf(index.RcdrPreActId));
  }
  for (const auto& entry : fs::recursive_directory_iterator(folder_)) {
    // The copy of the day comes and goes meanwhile.
    const std::string name = entry.path().lexically_relative(folder_).string();
    const bool isDiary = name.ends_with(".sdf") || name.ends_with(".bak");
    if (name.starts_with("backup/")) {
      if (isDiary && WholeOrNot(entry.path()) == "damaged") picture.insert("damaged " + name);
      continue;
    }
    std::error_code gone;
    if (!entry.is_regular_file(gone) || name.starts_with("user.sdf") || name == "in.csv") continue;
    const bool isExported = name.ends_with(".csv");
    picture.insert("file " + name + " " +
                   (isDiary      ? WholeOrNot(entry.path())
                    : isExported ? ExportedBytes(entry.path())
                                 : Bytes(entry.path())));
  }
  return picture;
}

std::span<const Step> Week(unsigned variation) {
  memoLength = variation * 179 % 2000;
  return kWeek;
}

}  // namespace reliability
