// The file system as the program sees it: byte streams and names, under paths of the device's form
// (see device_paths.h). main sets the one Files of the process; a test sets its own for a scope.
// Interface thread only.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace platform {

inline constexpr uint32_t kAttributeReadOnly = 0x01;   // its owner may not write it
inline constexpr uint32_t kAttributeHidden = 0x02;     // its name begins with a point
inline constexpr uint32_t kAttributeDirectory = 0x10;  // a folder
// Whether anything stands there is unknown: the disk fails, or a folder on the way is closed to us.
inline constexpr uint32_t kAttributeUnknown = 0x80000000;

// An open file. Destroying it closes it.
class File {
 public:
  virtual ~File() = default;
  // Reads up to `size` bytes from the current position: their count, 0 at the end, -1 on failure.
  virtual int64_t Read(void* data, size_t size) = 0;
  // Makes `position`, in bytes from the beginning, the current one; false on failure.
  virtual bool Seek(uint64_t position) = 0;
  // Writes all of `bytes` at the current position; false if any of them could not be written.
  virtual bool Write(std::string_view bytes) = 0;
  // Forces what was written to the disk, and the name of a file that was created; false on failure.
  virtual bool Sync() = 0;
};

struct FolderEntry {
  std::u16string name;
  bool isFolder = false;
};

class Files {
 public:
  virtual ~Files() = default;
  // All three answer nullptr on failure. Create empties an existing file, and CreateInPlace makes
  // one in the place of what stands there, be it a link. A new file is readable and writable by its
  // owner alone.
  virtual std::unique_ptr<File> OpenForReading(std::u16string_view path) = 0;
  virtual std::unique_ptr<File> Create(std::u16string_view path) = 0;
  virtual std::unique_ptr<File> CreateInPlace(std::u16string_view path) = 0;
  // Takes away what others than the owner may do with a file; somebody else's is left alone.
  virtual void Narrow(std::u16string_view path) = 0;
  // The attributes of what stands at `path` (links followed), or none if nothing does.
  virtual std::optional<uint32_t> Attributes(std::u16string_view path) = 0;
  // Both paths lead to the same file, whatever links and repeated backslashes they go through.
  virtual bool IsSameFile(std::u16string_view a, std::u16string_view b) = 0;
  // What a link at `path` leads to in the end; `path` itself if it is none. Nothing if the program
  // cannot name it.
  virtual std::optional<std::u16string> FollowLink(std::u16string_view path) = 0;
  // Each answers true on success.
  virtual bool Remove(std::u16string_view path) = 0;
  // An empty folder. Of a link to a folder the link alone goes.
  virtual bool RemoveFolder(std::u16string_view path) = 0;
  // Replaces a file that stands at `to`, in one step; a power cut does not undo it.
  virtual bool Rename(std::u16string_view from, std::u16string_view to) = 0;
  // The same where nothing stands at `to`, not even a link; false if anything does.
  virtual bool RenameToFree(std::u16string_view from, std::u16string_view to) = 0;
  // A second name for a file, so that it never lacks one; its only name, where the file system
  // gives no two. False if something stands at `to`.
  virtual bool KeepAs(std::u16string_view from, std::u16string_view to) = 0;
  // Brings a file that was written otherwise, and its name in its folder, to the disk.
  virtual bool SyncToDisk(std::u16string_view path) = 0;
  // A new folder is open to its owner alone.
  virtual bool MakeFolder(std::u16string_view path) = 0;
  // The folders and the regular files in a folder (links followed), in no order, as far as a path
  // of the device's form can name them; none if it is no folder or cannot be read.
  virtual std::optional<std::vector<FolderEntry>> List(std::u16string_view folder) = 0;

  // True, too, if there is no telling: what may stand there isn't to be made again.
  bool Exists(std::u16string_view path) { return Attributes(path).has_value(); }
};

Files& files();
// Makes `newFiles` the process's file system and returns the former one. Not owned. Until it is
// called, files() is the host's own file system.
Files* SetFiles(Files* newFiles);

}  // namespace platform
