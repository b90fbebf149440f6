#include "backup/candidate.h"

#include <array>
#include <cerrno>
#include <memory>
#include <string_view>

#include "backup/backup_names.h"
#include "datafile/data_file.h"
#include "platform/device_paths.h"
#include "platform/files.h"
#include "platform/host.h"
#include "store/engine.h"
#include "store/file_lock.h"
#include "store/foreign_log.h"
#include "store/session.h"
#include "store/trouble.h"

namespace backup {
namespace {

using platform::files;
using store::NoteTrouble;
using store::Trouble;
using Text = std::u16string;

constexpr size_t kBlock = 1 << 16;

bool FailToWrite() {
  store::NoteSystemError(errno);
  return false;
}

// By its first bytes: a film that was chosen by mistake isn't copied first.
bool LooksLikeDatabase(std::u16string_view path) {
  constexpr std::string_view kMagic("SQLite format 3\0", 16);
  const auto file = files().OpenForReading(path);
  if (!file) {
    NoteTrouble(Trouble::kNotOpened);
    return false;
  }
  std::array<char, kMagic.size()> head{};
  return file->Read(head.data(), head.size()) == static_cast<int64_t>(head.size()) &&
         std::string_view(head.data(), head.size()) == kMagic;
}

}  // namespace

bool CopyBytes(std::u16string_view from, std::u16string_view to) {
  const auto source = files().OpenForReading(from);
  if (!source) {
    NoteTrouble(Trouble::kNotOpened);
    return false;
  }
  errno = 0;
  const auto copy = files().CreateInPlace(to);
  if (!copy) return FailToWrite();
  std::array<char, kBlock> block;
  int64_t size = 0;
  while ((size = source->Read(block.data(), block.size())) > 0) {
    errno = 0;
    if (!copy->Write({block.data(), static_cast<size_t>(size)})) return FailToWrite();
  }
  return size == 0;
}

bool HasLog(std::u16string_view path) {
  return files().Exists(Text(path) += u"-wal") || files().Exists(Text(path) += u"-journal");
}

Candidate::~Candidate() {
  if (!hasFolder_) return;
  store::Engine::Remove(path_);
  files().RemoveFolder(folder_);
}

std::optional<Summary> Candidate::Take(std::u16string_view chosen) {
  const platform::WaitCursor waiting;
  const Text source = RealPath(chosen);
  const auto lock = store::FileLock::Take(platform::ToHostPath(source).value_or(""));
  if (!lock || store::HasForeignLog(source)) {
    NoteTrouble(lock ? Trouble::kForeignLog : Trouble::kInUse);
    return {};
  }
  if (!LooksLikeDatabase(source)) return {};
  errno = 0;
  hasFolder_ = files().MakeFolder(folder_);
  if (!hasFolder_) {
    FailToWrite();
    return {};
  }
  for (const std::u16string_view suffix : {u"-journal", u"-wal", u""}) {
    const Text part = source + Text(suffix);
    const bool isNeeded = suffix.empty() || files().Exists(part);
    if (isNeeded && !CopyBytes(part, path_ + Text(suffix))) return {};
  }
  const std::unique_ptr<store::Engine> engine = store::Engine::Open(path_);
  if (!engine) return {};
  engine->TakeCharge();
  std::optional<Summary> found = CheckWhole(*engine);
  if (found) formatVersion_ = found->formatVersion;
  return found;
}

Outcome Candidate::Upgrade(core::CAppState& app) {
  if (formatVersion_ >= datafile::kFormatVersion) return Outcome::kDone;
  if (store::Failed(store::ConnectDataFile(path_))) return Outcome::kFailed;
  const int upgraded = datafile::UpgradeDataFile(app);
  store::DisconnectDataFile();
  if (upgraded == -4 || upgraded == 0) return Outcome::kDone;
  if (upgraded != -1) return Outcome::kFailed;
  platform::ShowNotice(u"フォーマットの更新が中止されました。", u"更新中止",
                       platform::Icon::kInformation);
  return Outcome::kTold;
}

bool Candidate::MoveTo(std::u16string_view diary) {
  errno = 0;
  const bool moved = !HasLog(path_) && files().SyncToDisk(path_) && files().Rename(path_, diary);
  return moved || FailToWrite();
}

}  // namespace backup
