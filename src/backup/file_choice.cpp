#include "backup/file_choice.h"

#include <string>
#include <utility>

#include "backup/backup_names.h"
#include "core/paths.h"
#include "platform/files.h"
#include "platform/host.h"

namespace backup {
namespace {

using filedialog::FileSelectParams;
using platform::files;
using Text = std::u16string;

FileSelectParams Ask(const core::CAppState& app, int mode, Text caption, Text name) {
  const Text folder = BackupFolder(app.DataFile);
  const bool isThere =
      (files().Attributes(folder).value_or(0) & platform::kAttributeDirectory) != 0;
  const Text extension = core::FileExtension(RealPath(app.DataFile));
  const Text pattern = u"*." + (extension.empty() ? u"*" : extension);
  FileSelectParams params;
  params.Mode = mode;
  params.Caption = std::move(caption);
  params.FilterText =
      u"データファイル (" + pattern + u")|" + pattern + u"|すべてのファイル (*.*)|*.*";
  params.StartFolder = isThere ? folder : core::FolderOf(folder);
  params.StartName = std::move(name);
  return params;
}

}  // namespace

FileSelectParams AskForBackup(const core::CAppState& app) {
  const Text folder = BackupFolder(app.DataFile);
  core::EnsureFolder(folder);
  const Text name = DatedName(app.DataFile, core::DayOf(platform::host().Now()));
  return Ask(app, filedialog::kSelectToSave, u"バックアップの保存先",
             core::NameOf(core::FreePath(folder + u'\\' + name)));
}

void DropEmptyFolder(const core::CAppState& app) {
  files().RemoveFolder(BackupFolder(app.DataFile));
}

FileSelectParams AskForRestore(const core::CAppState& app) {
  return Ask(app, filedialog::kSelectToOpen, u"復元するバックアップ", {});
}

}  // namespace backup
