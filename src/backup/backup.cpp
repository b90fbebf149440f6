#include "backup/backup.h"

#include <cerrno>
#include <memory>
#include <optional>

#include "backup/backup_names.h"
#include "backup/candidate.h"
#include "backup/summary.h"
#include "core/paths.h"
#include "core/text.h"
#include "platform/device_paths.h"
#include "platform/files.h"
#include "platform/host.h"
#include "store/file_lock.h"
#include "store/session.h"
#include "store/trouble.h"

namespace backup {
namespace {

using platform::files;
using platform::Icon;
using platform::ShowNotice;
using Text = std::u16string;

constexpr char16_t kTitle[] = u"バックアップ";

bool IsFolder(std::u16string_view path) {
  return (files().Attributes(path).value_or(0) & platform::kAttributeDirectory) != 0;
}

// What stands at `path` may be replaced. A log beside it may hold writes that are nowhere else, and
// would be taken for the copy's own: neither it nor its file is touched.
bool MayReplace(std::u16string_view path) {
  const Text name = u"'" + Text(path);
  const bool isDiary = store::dbSession().Session->Keeps(path);
  const char16_t* const why = IsFolder(path) ? u"' はフォルダのため、"
                              : isDiary      ? u"' は使用中のデータファイルのため、"
                              : HasLog(path) ? u"' のそばに書込み記録が残っているため、"
                                             : nullptr;
  if (why != nullptr) {
    ShowNotice(name + why + u"保存できません。別の名前を指定してください。", kTitle, Icon::kStop);
    return false;
  }
  return !files().Exists(path) ||
         platform::AskYesNo(name + u"' は既に存在します。\n置き換えますか。", kTitle,
                            Icon::kQuestion, platform::kNoButton);
}

// Whole, and as many Actions in it as in the diary.
std::optional<Summary> WriteChecked(std::u16string_view path) {
  store::Engine& diary = *store::dbSession().Session;
  store::dbSession().UserTable->CloseRS();  // no copy is made while rows are being read
  const std::optional<Summary> wanted = ReadSummary(diary);
  if (!wanted || store::Failed(diary.CopyTo(path))) return {};
  const std::unique_ptr<store::Engine> copy = store::Engine::Open(path);
  const std::optional<Summary> written = copy ? CheckWhole(*copy) : std::nullopt;
  return written && written->actions == wanted->actions ? written : std::nullopt;
}

bool TakeName(const Text& copy, std::u16string_view path) {
  const auto lock = store::FileLock::Take(platform::ToHostPath(path).value_or(""));
  if (!lock || HasLog(path)) {
    store::NoteTrouble(lock ? store::Trouble::kForeignLog : store::Trouble::kInUse);
    return false;
  }
  errno = 0;
  if (files().Rename(copy, path)) return true;
  store::NoteSystemError(errno);
  return false;
}

}  // namespace

void MakeBackup(std::u16string_view path) {
  if (!MayReplace(path)) return;
  store::NoteTrouble(store::Trouble::kUnknown);
  const Text unfinished = core::FreePath(Text(path) += kUnfinished);
  std::optional<Summary> written;
  {
    const platform::WaitCursor waiting;
    written = WriteChecked(unfinished);
    if (!written || !TakeName(unfinished, path)) {
      written.reset();
      store::Engine::Remove(unfinished);
    }
  }
  if (!written) {
    ShowNotice(store::WithReason(u"'" + Text(path) + u"' にバックアップを作成できませんでした。"),
               kTitle, Icon::kStop);
    return;
  }
  ShowNotice(core::ZeroPadded(written->actions, 1) + u"個のアクションを '" + Text(path) +
                 u"' に保存しました。",
             kTitle, Icon::kInformation);
}

}  // namespace backup
