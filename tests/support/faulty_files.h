// A file system for tests: the real one, of which chosen calls fail.
#pragma once

#include <array>
#include <cstddef>
#include <limits>

#include "platform/files.h"

namespace testing_support {

enum class FileCall {
  kOpenForReading,
  kCreate,
  kAttributes,
  kRemove,
  kRemoveFolder,
  kRename,
  kMakeFolder,
  kList,
  kRead,
  kWrite,
  kSync,
};

// The process's Files for the scope of the object, which must outlive the files that it opened.
class FaultyFiles : public platform::Files {
 public:
  static constexpr int kForever = std::numeric_limits<int>::max();

  FaultyFiles() : real_(*platform::SetFiles(this)) {}
  ~FaultyFiles() override { platform::SetFiles(&real_); }

  // The calls number `first` (from 1, counted from now) up to `last` fail. A failing write leaves
  // the first half of its bytes, as a disk does that is full. Replaces an earlier order for `call`.
  void Fail(FileCall call, int first, int last);
  void Fail(FileCall call, int nth = 1) { Fail(call, nth, nth); }
  // How often `call` came since its order, or since the beginning.
  int Count(FileCall call) const { return orders_[static_cast<size_t>(call)].count; }

  std::unique_ptr<platform::File> OpenForReading(std::u16string_view path) override;
  std::unique_ptr<platform::File> Create(std::u16string_view path) override;
  std::optional<uint32_t> Attributes(std::u16string_view path) override;
  bool IsSameFile(std::u16string_view a, std::u16string_view b) override;
  bool Remove(std::u16string_view path) override;
  bool RemoveFolder(std::u16string_view path) override;
  bool Rename(std::u16string_view from, std::u16string_view to) override;
  bool SyncToDisk(std::u16string_view path) override;
  bool MakeFolder(std::u16string_view path) override;
  std::optional<std::vector<platform::FolderEntry>> List(std::u16string_view folder) override;

 private:
  class FaultyFile;
  struct Order {
    int first = 0;
    int last = 0;
    int count = 0;
  };

  bool Fails(FileCall call);
  std::unique_ptr<platform::File> Wrap(std::unique_ptr<platform::File> file);

  platform::Files& real_;
  std::array<Order, static_cast<size_t>(FileCall::kSync) + 1> orders_;
};

}  // namespace testing_support
