#include "datafile/data_file.h"

#include <cerrno>
#include <cstdint>
#include <string>

#include "core/paths.h"
#include "core/text.h"
#include "datafile/displaced_file.h"
#include "platform/files.h"
#include "platform/host.h"
#include "recorder/recorder_state.h"
#include "store/action_index.h"
#include "store/session.h"
#include "store/trouble.h"

namespace datafile {
namespace {

using platform::AskYesNo;
using platform::Icon;
using platform::ShowNotice;
using Text = std::u16string;

// Whatever the working folder holds, a path without a root leads nowhere.
bool IsRooted(std::u16string_view path) {
  return path.empty() || path.starts_with(u'\\');
}

// 0 if nothing stands there. "\user.sdf" leaves an empty folder before its backslash: the root.
uint32_t FolderAttributes(std::u16string_view folder) {
  if (!IsRooted(folder)) return 0;
  return platform::files().Attributes(folder.empty() ? u"\\" : folder).value_or(0);
}

void TellReadError() {
  ShowNotice(u"データファイル読込み中にエラーが発生しました。", u"エラー", Icon::kStop);
}

OpenResult TellNotOpened(const Text& path) {
  ShowNotice(store::WithReason(u"データファイル '" + path + u"' を開けません。") +
                 u"\nプログラムを終了します。",
             u"起動時エラー", Icon::kStop);
  return kNotOpened;
}

// No file is open any more, and the program is about to end.
ChangeResult TellLost() {
  ShowNotice(store::WithReason(u"データファイル読込み中にエラーが発生しました。"), u"エラー",
             Icon::kStop);
  return kConnectionLost;
}

// Says that a file is none of ours, or damaged, or cannot be read for the moment.
void TellNotOurs(const Text& text) {
  const store::Trouble trouble = store::LastTrouble();
  const bool saysMore = trouble == store::Trouble::kBusy || trouble == store::Trouble::kReadOnly ||
                        trouble == store::Trouble::kForeignSql || trouble == store::Trouble::kDisk;
  ShowNotice(saysMore ? store::WithReason(text) : text, u"データファイル不正", Icon::kStop);
}

OpenResult TellForeign() {
  TellNotOurs(u"データファイルの内容が不正です。\nプログラムを終了します。");
  store::DisconnectDataFile();
  return kFormatRefused;
}

// The connected file's format, brought up to date if the user agrees. A refusal has been reported.
OpenResult CheckFormat(core::CAppState& app) {
  switch (UpgradeDataFile(app)) {
    case kCurrent:
      return kOpened;
    case kUpgraded:
      return kOpenedUpgraded;
    case kUpgradeRefused:
      ShowNotice(u"フォーマットの更新が中止されました。\nプログラムを終了します。", u"更新中止",
                 Icon::kInformation);
      break;
    case kNotOurs:
      return TellForeign();
    case kUpgradeFailed:
      ShowNotice(store::WithReason(
                     u"データファイルのフォーマット更新に失敗しました。\nプログラムを終了します。"),
                 u"フォーマット更新失敗", Icon::kStop);
  }
  store::DisconnectDataFile();
  return kFormatRefused;
}

OpenResult ConnectChecked(core::CAppState& app) {
  return store::Failed(store::ConnectDataFile(app.DataFile)) ? TellNotOpened(app.DataFile)
                                                             : CheckFormat(app);
}

// The file is missing: another one is connected, or start-up ends.
OpenResult TakeMissingFile(core::CAppState& app) {
  Text newPath;
  const ResolveResult resolved = ResolveMissingDataFile(app, app.DataFile, newPath);
  if (resolved == kResolveFailed) {  // kept on purpose: whatever failed, the number is 0
    ShowNotice(
        store::WithReason(u"データファイルの初期化に失敗しました。(0)\nプログラムを終了します。"),
        u"データファイル初期化失敗", Icon::kStop);
  }
  if (resolved != kReady) return kNoneTaken;
  app.DataFile = newPath;
  if (store::dbSession().Session) return kOpenedOther;  // a new one, made just now
  const OpenResult connected = ConnectChecked(app);
  return connected == kOpened ? kOpenedOther : connected;
}

// What has come there while the question stood is taken as it is.
bool CreateAndName(std::u16string_view path, Text& newPath) {
  if (!platform::files().Exists(path) && CreateDataFile(path) != 0) return false;
  newPath = path;
  return true;
}

// The folder is missing: the file of the same name beside the program, if the user agrees.
ResolveResult ResolveBesideProgram(const Text& folder, const Text& name, Text& newPath) {
  static constexpr char16_t kTitle[] = u"データファイル初期化確認";
  const Text missing = u"データファイルを格納したフォルダ '" + folder + u"' が見つかりません。\n";
  const Text beside = core::JoinModulePath(name);
  if (platform::files().Exists(beside)) {
    const Text question =
        missing + u"アプリケーションフォルダ下のデータファイル '" + beside + u"' に変更しますか。";
    if (!AskYesNo(question, kTitle)) return kOtherRefused;
    newPath = beside;
    return kReady;
  }
  const Text question = missing + u"アプリケーションフォルダ下にデータファイルを作成しますか。";
  if (!AskYesNo(question, kTitle)) return kNewRefused;
  return CreateAndName(beside, newPath) ? kReady : kResolveFailed;
}

void TellUnchanged(UpgradeResult upgraded) {
  if (upgraded == kUpgradeRefused) {
    ShowNotice(u"フォーマットの更新が中止されました。", u"更新中止", Icon::kInformation);
  } else if (upgraded == kNotOurs) {
    TellNotOurs(u"データファイルの内容が不正です。\nデータファイルの変更を中止します。");
  } else {
    ShowNotice(store::WithReason(u"データファイルのフォーマット更新に失敗しました。\n"
                                 u"データファイルの変更を中止します。"),
               u"フォーマット更新失敗", Icon::kStop);
  }
}

ChangeResult ChangeToExisting(core::CAppState& app, std::u16string_view path) {
  const platform::Message question{u"指定されたデータファイルに変更します。",
                                   u"データファイル変更確認", Icon::kQuestion,
                                   platform::Buttons::kOkCancel};
  if (platform::host().ShowMessage(question) != platform::Answer::kOk) return kNotChanged;
  recorder::CloseRecorderSession(app);
  if (store::Failed(store::ConnectDataFile(path))) return TellLost();
  const UpgradeResult upgraded = UpgradeDataFile(app);
  if (upgraded == kCurrent || upgraded == kUpgraded) {
    app.DataFile = path;
    return kChanged;
  }
  TellUnchanged(upgraded);
  recorder::CloseRecorderSession(app);
  return store::Failed(store::ConnectDataFile(app.DataFile)) ? TellLost() : kChanged;
}

// Asks for what a file that does not exist yet needs. False if it is not to be made.
bool AgreeToCreate(std::u16string_view path) {
  Text folder, name;
  if (core::SplitPath(path, folder, name) != 0) {
    ShowNotice(u"指定されているデータファイル名が不正です。", u"データファイル名不正", Icon::kStop);
    return false;
  }
  // Kept on purpose: a folder with any further attribute counts as missing here, and EnsureFolder
  // then finds it present.
  if (FolderAttributes(folder) == platform::kAttributeDirectory) {
    return AskYesNo(u"指定されたデータファイルは存在しません。初期化しますか。",
                    u"データファイル初期化確認");
  }
  if (!AskYesNo(u"指定されたフォルダは存在しません。作成しますか。", u"フォルダ作成確認")) {
    return false;
  }
  core::EnsureFolder(folder);  // without it the creation fails, and says so
  return true;
}

ChangeResult ChangeToNew(core::CAppState& app, std::u16string_view path) {
  if (!AgreeToCreate(path)) return kNotChanged;
  if (platform::files().Exists(path)) return ChangeToExisting(app, path);  // it has come meanwhile
  recorder::CloseRecorderSession(app);
  const int created = CreateDataFile(path);
  if (created < 0) {
    ShowNotice(store::WithReason(u"データファイルの初期化に失敗しました。(" +
                                     core::ZeroPadded(created, 1) + u")\nプログラムを終了します。",
                                 created),
               u"データファイル初期化失敗", Icon::kStop);
    return kConnectionLost;
  }
  app.DataFile = path;
  return kChanged;
}

// What came there while the file was made stays, and so does a link that leads nowhere. A journal
// that a former file left there would be rolled into the new one: it goes before the new file
// comes, unless its own still stands there, which stays whole until the new one has taken its
// place.
bool TakePlace(const Text& newPath, std::u16string_view path, bool replaces) {
  if (!platform::files().Exists(path)) store::Engine::RemoveBeside(path);
  const bool taken = replaces ? platform::files().Rename(newPath, path)
                              : platform::files().RenameToFree(newPath, path);
  if (!taken && errno == EEXIST) store::NoteTrouble(store::Trouble::kTaken);
  if (taken && replaces) store::Engine::RemoveBeside(path);
  return taken;
}

}  // namespace

store::HRESULT CreateDataFile(std::u16string_view path) {
  const platform::WaitCursor waiting;
  const bool replaces = platform::files().Exists(path);
  const Text newPath = core::FreePath(Text(path) + u".new");
  store::HRESULT result = store::CreateEmptyDataFile(newPath);
  if (result >= 0) result = WriteSystemInfo();
  if (result >= 0) result = recorder::InitRecorderValues();
  store::DisconnectDataFile();
  // A full disk may show only as the log is brought into the file.
  if (result >= 0 && platform::files().Exists(newPath + u"-wal")) {
    store::NoteTrouble(store::Trouble::kDiskFull);
    result = store::E_FAIL;
  }
  if (result >= 0 && !TakePlace(newPath, path, replaces)) result = store::E_FAIL;
  if (result < 0) {
    store::Engine::Remove(newPath);
    return result;
  }
  return store::ConnectDataFile(path);
}

OpenResult OpenDataFile(core::CAppState& app) {
  store::DisconnectDataFile();
  store::dbSession().SettleDisplaced = SettleDisplaced;
  const bool exists = IsRooted(app.DataFile) && platform::files().Exists(app.DataFile);
  const OpenResult result = exists ? ConnectChecked(app) : TakeMissingFile(app);
  if (EndsProcess(result)) return result;
  switch (store::LoadActionIndex(app)) {
    case 0:
      return result;
    case -3:
      return TellForeign();
    default:
      TellReadError();
      return kIndexUnread;
  }
}

ResolveResult ResolveMissingDataFile(core::CAppState&, std::u16string_view path,
                                     std::u16string& newPath) {
  Text folder, name;
  if (core::SplitPath(path, folder, name) != 0) {
    ShowNotice(u"指定されているデータファイル名'" + Text(path) + u"'が不正です。",
               u"データファイル名不正", Icon::kStop);
    return kResolveFailed;
  }
  if ((FolderAttributes(folder) & platform::kAttributeDirectory) == 0) {
    return ResolveBesideProgram(folder, name, newPath);
  }
  platform::host().BringForward();
  const Text question = u"データファイル '" + Text(path) + u"' が見つかりません。初期化しますか。";
  if (!AskYesNo(question, u"データファイル初期化確認")) return kNewRefused;
  return CreateAndName(path, newPath) ? kReady : kResolveFailed;
}

ChangeResult ChangeDataFile(core::CAppState& app, std::u16string_view path) {
  const bool exists = platform::files().Exists(path);
  const ChangeResult changed = exists ? ChangeToExisting(app, path) : ChangeToNew(app, path);
  if (changed != kChanged) return changed;
  store::ReloadActionIndex(app);
  app.RcdrLoaded = false;
  app.SelActId.clear();
  return kChanged;
}

}  // namespace datafile
