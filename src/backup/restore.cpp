#include "backup/restore.h"

#include <memory>
#include <optional>
#include <string>

#include "backup/backup_names.h"
#include "backup/candidate.h"
#include "backup/summary.h"
#include "core/paths.h"
#include "datafile/data_file.h"
#include "platform/device_paths.h"
#include "platform/files.h"
#include "platform/host.h"
#include "recorder/recorder_state.h"
#include "store/action_index.h"
#include "store/file_lock.h"
#include "store/session.h"
#include "store/trouble.h"

namespace backup {
namespace {

using platform::files;
using platform::Icon;
using store::NoteTrouble;
using store::Trouble;
using Text = std::u16string;

constexpr char16_t kTitle[] = u"復元";
constexpr int kNotRead = -3;  // of ReloadActionIndex, and below

Restored TellNotRestored(const Text& why) {
  platform::ShowNotice(store::WithReason(why), kTitle, Icon::kStop);
  return Restored::kNo;
}

bool Agrees(std::u16string_view chosen, const Summary& found, const Text& kept) {
  const auto present = ReadSummary(*store::dbSession().Session);
  const Text now = present ? SummaryText(*present) : Text(u"読み込めません");
  const Text shown = core::NameOf(core::FolderOf(kept)) + u'\\' + core::NameOf(kept);
  return platform::AskYesNo(u"データファイルを '" + core::NameOf(chosen) +
                                u"' の内容に置き換えます。\n現在: " + now + u"\n復元後: " +
                                SummaryText(found) + u"\n現在の内容は '" + shown +
                                u"' に残ります。\n復元しますか。",
                            kTitle, Icon::kQuestion, platform::kNoButton);
}

// Byte by byte; `to` has the whole copy, or is as it was.
bool CopyFile(const Text& from, const Text& to) {
  const Text unfinished = core::FreePath(to + Text(kUnfinished));
  const bool isCopied = CopyBytes(from, unfinished) && files().SyncToDisk(unfinished) &&
                        files().Rename(unfinished, to);
  if (!isCopied) files().Remove(unfinished);
  return isCopied;
}

// The closed diary, even if it's damaged.
bool KeepDiary(const Text& diary, const Text& kept) {
  core::EnsureFolder(core::FolderOf(kept));
  return !files().Exists(kept) && CopyFile(diary, kept);
}

// With no data file open. Nothing of the diary has changed if it fails.
Outcome TakePlace(core::CAppState& app, Candidate& candidate, const Text& diary, const Text& kept) {
  const auto lock = store::FileLock::Take(*platform::ToHostPath(diary));
  if (!lock) NoteTrouble(Trouble::kInUse);
  if (lock && HasLog(diary)) NoteTrouble(Trouble::kBusy);
  if (!lock || HasLog(diary)) return Outcome::kFailed;
  const Outcome upgraded = candidate.Upgrade(app);
  if (upgraded != Outcome::kDone) return upgraded;
  const platform::WaitCursor waiting;
  if (!KeepDiary(diary, kept)) return Outcome::kFailed;
  files().Remove(diary + u"-shm");
  if (candidate.MoveTo(diary)) return Outcome::kDone;
  files().Remove(kept);
  return Outcome::kFailed;
}

// The lists are read again, whatever file it is now.
bool Reopen(core::CAppState& app) {
  app.SelActId.clear();
  app.SelIndex = -1;
  if (store::Failed(store::ConnectDataFile(app.DataFile))) return false;
  return store::ReloadActionIndex(app) > kNotRead;
}

// What can't be opened makes way for what was there before.
bool PutBack(const Text& kept, const Text& diary) {
  store::DisconnectDataFile();
  return CopyFile(kept, diary);
}

Restored Replace(core::CAppState& app, Candidate& candidate, const Text& diary, const Text& kept) {
  recorder::CloseRecorderSession(app);
  const bool isSame = RealPath(app.DataFile) == diary;  // unless it was displaced meanwhile
  Outcome outcome = isSame ? TakePlace(app, candidate, diary, kept) : Outcome::kFailed;
  const Text failure = store::WithReason(u"復元できませんでした。");
  bool isOpen = Reopen(app);
  if (outcome == Outcome::kDone && !isOpen && store::LastTrouble() != Trouble::kInUse) {
    outcome = Outcome::kFailed;
    isOpen = PutBack(kept, diary) && Reopen(app);
  }
  if (!isOpen) {
    TellNotRestored(u"データファイル '" + diary + u"' を開けません。\nプログラムを終了します。");
    return Restored::kNoDataFile;
  }
  if (outcome == Outcome::kFailed) platform::ShowNotice(failure, kTitle, Icon::kStop);
  if (outcome != Outcome::kDone) return Restored::kNo;
  platform::ShowNotice(u"復元しました。\n元の内容は '" + kept + u"' にあります。", kTitle,
                       Icon::kInformation);
  return Restored::kYes;
}

}  // namespace

Restored Restore(core::CAppState& app, std::u16string_view chosen) {
  NoteTrouble(Trouble::kUnknown);
  store::Engine& engine = *store::dbSession().Session;
  if (engine.Keeps(chosen)) {
    return TellNotRestored(u"'" + Text(chosen) + u"' は開いているデータファイルです。");
  }
  if (store::Failed(engine.ConfirmPlace()) || !engine.IsInPlace()) {
    NoteTrouble(Trouble::kDisplaced);
    return TellNotRestored(u"復元できません。");
  }
  const Text diary = RealPath(app.DataFile);
  if ((files().Attributes(diary).value_or(0) & platform::kAttributeReadOnly) != 0) {
    NoteTrouble(Trouble::kReadOnly);
    return TellNotRestored(u"復元できません。");
  }
  Candidate candidate(core::FreePath(diary + u".restore"));
  const std::optional<Summary> found = candidate.Take(chosen);
  if (!found) {
    const bool isStrange = store::LastTrouble() == Trouble::kUnknown;
    return TellNotRestored(u"'" + Text(chosen) +
                           (isStrange ? u"' はデータファイルではないため、復元できません。"
                                      : u"' を復元できません。"));
  }
  const Text folder = BackupFolder(diary) + u'\\';
  const Text kept = core::FreePath(folder + MomentName(diary, platform::host().Now()));
  if (!Agrees(chosen, *found, kept)) return Restored::kNo;
  return Replace(app, candidate, diary, kept);
}

}  // namespace backup
