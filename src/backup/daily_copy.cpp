#include "backup/daily_copy.h"

#include <cerrno>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "backup/backup_names.h"
#include "core/app_state.h"
#include "core/settings_choices.h"
#include "platform/files.h"
#include "store/session.h"
#include "store/trouble.h"

namespace backup {
namespace {

using core::Day;
using platform::files;
using Text = std::u16string;

struct State {
  Text dataFile;  // of the last look, and its day
  Day day;
  platform::WindowId window = 0;
  int command = 0;
  std::optional<Text> failure;  // that is still to be reported
  bool hasTold = false;
};

State& state() {
  static State state;
  return state;
}

void NoteFailure(const Text& path) {
  if (state().hasTold) return;
  state().failure =
      store::WithReason(u"今日のバックアップ '" + path + u"' を作成できませんでした。") +
      u"\n記録はこのまま続けられます。";
}

bool TakeName(const Text& path) {
  const Text copy = path + Text(kUnfinished);
  errno = 0;
  if (files().Rename(copy, path)) return true;
  store::NoteSystemError(errno);
  store::Engine::Remove(copy);
  return false;
}

void RemoveOutdated(const Text& folder, const Text& dataFile, const Day& today) {
  std::vector<Text> names;
  auto entries = files().List(folder);
  if (!entries) return;
  for (platform::FolderEntry& entry : *entries) {
    if (!entry.isFolder) names.push_back(std::move(entry.name));
  }
  for (const Text& name : OutdatedCopies(names, dataFile, today)) {
    store::Engine::Remove((folder + u'\\') += name);
  }
}

bool HoldsActions(store::Engine& engine) {
  std::unique_ptr<store::RowSet> rows;
  return !store::Failed(engine.OpenRows(u"select f_nchActId from t_UserData limit 1", rows)) &&
         rows->Next({}) == store::S_OK;
}

void Start(store::Engine& engine, const Text& dataFile, const Day& today) {
  const Text folder = BackupFolder(dataFile);
  const Text path = folder + u'\\' + DailyName(dataFile, today);
  if (files().Exists(path) || !HoldsActions(engine)) return;
  const auto post = [window = state().window, command = state().command] {
    if (window != 0) platform::host().PostCommand(window, command);
  };
  errno = 0;
  if (!files().Exists(folder) && !files().MakeFolder(folder)) {
    store::NoteSystemError(errno);
    NoteFailure(path);
    return post();
  }
  const auto finish = [=](store::HRESULT result) {
    if (store::Failed(result) || !TakeName(path)) return NoteFailure(path);
    RemoveOutdated(folder, dataFile, today);
  };
  engine.StartCopy(path + Text(kUnfinished), post, finish);
}

void BeforeWrite(store::Engine& engine) {
  const core::CAppState* app = core::g_App;
  if (app == nullptr || app->AutoBackup != core::kOn) return;
  if (!engine.WasOpenedAs(app->DataFile)) return;
  const Day today = core::DayOf(platform::host().Now());
  if (state().day == today && state().dataFile == app->DataFile) return;
  state().day = today;
  state().dataFile = app->DataFile;
  Start(engine, app->DataFile, today);
}

}  // namespace

void KeepDailyCopies() {
  state() = {};
  store::dbSession().BeforeWrite = BeforeWrite;
}

void PostDailyCopies(platform::WindowId window, int command) {
  state().window = window;
  state().command = command;
}

bool FinishDailyCopy() {
  if (store::dbSession().Session) store::dbSession().Session->FinishCopy();
  return state().failure.has_value();
}

void TellDailyFailure() {
  if (!state().failure) return;
  state().hasTold = true;
  platform::ShowNotice(*std::exchange(state().failure, std::nullopt), u"自動バックアップ",
                       platform::Icon::kWarning);
}

}  // namespace backup
