// The host's own file system. A path that the host cannot name fails like one that isn't there.
#pragma once

#include "platform/files.h"

namespace platform {

// After a failed stat: nothing stands at its path. Any other error leaves that open.
bool MeansAbsent(int error);

class PosixFiles : public Files {
 public:
  // Regular files only: a folder, a pipe or a device does not open.
  std::unique_ptr<File> OpenForReading(std::u16string_view path) override;
  std::unique_ptr<File> Create(std::u16string_view path) override;
  std::unique_ptr<File> CreateInPlace(std::u16string_view path) override;
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
  std::optional<std::vector<FolderEntry>> List(std::u16string_view folder) override;
};

}  // namespace platform
