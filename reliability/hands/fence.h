// A fence round one folder: to the program nothing else is there, so that random hands can neither
// write nor find anything outside, and the same seed meets the same files on every machine.
#pragma once

#include <string>

#include "platform/posix_files.h"

namespace hands {

// The process's Files, and SQLite's, from its making to the end of the process.
class Fence : public platform::PosixFiles {
 public:
  // `folder` is a full path of the host's.
  explicit Fence(const std::string& folder);

  std::unique_ptr<platform::File> OpenForReading(std::u16string_view path) override;
  std::unique_ptr<platform::File> Create(std::u16string_view path) override;
  std::unique_ptr<platform::File> CreateInPlace(std::u16string_view path) override;
  void Narrow(std::u16string_view path) override;
  std::optional<uint32_t> Attributes(std::u16string_view path) override;
  bool IsSameFile(std::u16string_view a, std::u16string_view b) override;
  std::optional<std::u16string> FollowLink(std::u16string_view path) override;
  bool Remove(std::u16string_view path) override;
  bool RemoveFolder(std::u16string_view path) override;
  bool Rename(std::u16string_view from, std::u16string_view to) override;
  bool RenameToFree(std::u16string_view from, std::u16string_view to) override;
  bool KeepAs(std::u16string_view from, std::u16string_view to) override;
  bool SyncToDisk(std::u16string_view path) override;
  bool MakeFolder(std::u16string_view path) override;
  std::optional<std::vector<platform::FolderEntry>> List(std::u16string_view folder) override;
};

}  // namespace hands
