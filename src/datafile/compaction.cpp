#include "datafile/compaction.h"

#include "core/paths.h"
#include "core/text.h"
#include "platform/device_paths.h"
#include "platform/files.h"
#include "platform/host.h"
#include "recorder/recorder_state.h"
#include "store/action_index.h"
#include "store/column.h"
#include "store/file_lock.h"
#include "store/foreign_log.h"
#include "store/session.h"
#include "store/trouble.h"

namespace datafile {
namespace {

using platform::files;
using platform::Icon;
using platform::ShowNotice;
using Text = std::u16string;

constexpr int kTemporaryNames = 100;

void TellStopped() {
  ShowNotice(u"データファイル圧縮を中止しました。", u"データファイル圧縮中止", Icon::kInformation);
}

void TellFailedPreparation() {
  ShowNotice(u"データファイル圧縮準備にてエラーが発生しました。", u"エラー", Icon::kStop);
}

void TellFailed() {
  ShowNotice(store::WithReason(u"データファイル圧縮中にエラーが発生しました。\n処理を中止します。"),
             u"エラー", Icon::kStop);
}

// The question's answer; No is followed by its message.
bool Agrees(Text question, Text title) {
  const bool agrees = platform::AskYesNo(std::move(question), std::move(title), Icon::kQuestion,
                                         platform::kNoButton);
  if (!agrees) TellStopped();
  return agrees;
}

// Empty if all of them are taken.
Text FreeTemporaryPath(const Text& folder) {
  for (int number = 0; number < kTemporaryNames; ++number) {
    Text path = folder + u"\\$$TmpAUD." + core::ZeroPadded(number, 3);
    if (!files().Exists(path)) return path;
  }
  return {};
}

// The old file is the backup before the copy takes its name: at no moment does a start find none.
bool ChangePlaces(const Text& path, const Text& backup, const Text& copy) {
  if (!files().KeepAs(path, backup)) return false;
  if (files().Rename(copy, path)) return true;
  if (files().IsSameFile(path, backup)) {
    files().Remove(backup);
  } else {
    files().RenameToFree(backup, path);
  }
  return false;
}

}  // namespace

Text BackupName(std::u16string_view fileName) {
  static constexpr std::u16string_view kBackup = u"bak";
  const Text extension = core::FileExtension(fileName);
  const bool replaces = fileName.find(u'.') != Text::npos && !store::SameName(extension, kBackup);
  const size_t kept = replaces ? fileName.rfind(u'.') : fileName.size();
  return Text(fileName.substr(0, kept)) + u'.' + Text(kBackup);
}

CompactResult CompactDataFile(std::u16string_view path) {
  if (!files().Exists(path)) {
    ShowNotice(u"指定のデータファイルは存在しません。\nファイル名を見直してください。",
               u"ファイル名エラー", Icon::kStop);
    return kNoSuchFile;
  }
  // A link stays one: what it leads to is compacted, in the folder where that lies.
  const Text file = files().FollowLink(path).value_or(u"");
  Text folder, name;
  if (core::SplitPath(file, folder, name) != 0) {
    ShowNotice(u"指定されたデータファイル名が不正です。", u"ファイル名不正", Icon::kStop);
    return kNoFileName;
  }
  const std::unique_ptr<store::FileLock> lock = store::FileLock::Take(*platform::ToHostPath(file));
  if (!lock || store::HasForeignLog(file)) {
    store::NoteTrouble(lock ? store::Trouble::kForeignLog : store::Trouble::kInUse);
    TellFailed();
    return kCompactFailed;
  }
  const Text backup = folder + u'\\' + BackupName(name);
  if (!Agrees(u"データファイル\"" + file + u"\"を圧縮してもよろしいですか？\n" +
                  u"圧縮後、元のファイルは\"" + backup + u"\"にリネームされます。",
              u"データファイル圧縮確認")) {
    return kCompactRefused;
  }
  if (files().Exists(backup)) {
    if (!Agrees(u"元のデータファイルのリネーム後と同名のファイル\"" + backup +
                    u"\"が存在します。\n" +
                    u"このデータファイル削除後、データファイルの圧縮を実行しますか？",
                u"同名ファイル存在")) {
      return kBackupKept;
    }
    store::Engine::Remove(backup);  // kept on purpose: gone even where the copy fails
  }
  const Text copy = FreeTemporaryPath(folder);
  if (copy.empty()) {
    TellFailedPreparation();
    return kNoTemporaryName;
  }
  bool done = false;
  {
    const platform::WaitCursor waiting;
    done = !store::Failed(store::Engine::Compact(file, copy)) && ChangePlaces(file, backup, copy);
  }
  if (done) return kCompacted;
  store::Engine::Remove(copy);
  TellFailed();
  return kCompactFailed;
}

CompactCommandResult OnBtnCompact(core::CAppState& app, std::u16string_view path) {
  if (path != app.DataFile &&
      !Agrees(u"指定のデータファイル名と現在のデータファイル名が異なりますがよろしいですか？",
              u"データファイル名確認")) {
    return kOtherNameRefused;
  }
  recorder::CloseRecorderSession(app);
  store::NoteTrouble(store::Trouble::kUnknown);
  const CompactResult compacted = CompactDataFile(path);
  const CompactCommandResult reopened = store::Failed(store::ConnectDataFile(app.DataFile))
                                            ? kNotReopened
                                        : store::ReloadActionIndex(app) != 0 ? kReopenedUnread
                                                                             : kCommandDone;
  if (reopened != kCommandDone) {
    ShowNotice(u"データファイル読込み中にエラーが発生しました。", u"エラー", Icon::kStop);
    return reopened;
  }
  if (compacted == kCompacted) {
    ShowNotice(u"データファイルの圧縮が正常に終了しました。", u"圧縮完了", Icon::kInformation);
  }
  return kCommandDone;
}

}  // namespace datafile
