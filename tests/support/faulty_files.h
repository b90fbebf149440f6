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
  kRename,
  kMakeFolder,
  kRead,
  kWrite,
  kSync,
  kAttributes
};

// The process's Files for the scope of the object, which must outlive the files that it opened.
class FaultyFiles : public platform::Files {
 public:
  static constexpr int kForever = std::numeric_limits<int>::max();

  FaultyFiles() : real_(*platform::SetFiles(this)) {}
  ~FaultyFiles() override { platform::SetFiles(&real_); }

  // The calls number `first` (from 1, counted from now) up to `last` fail. A failing write leaves
  // the first half of its bytes, as a disk does that is full. Replaces an earlier order for `call`.
  void Fail(FileCall call, int first, int last) {
    orders_[static_cast<size_t>(call)] = {first, last, 0};
  }
  void Fail(FileCall call, int nth = 1) { Fail(call, nth, nth); }
  // The process ends as by a kill at the call of that number, of any kind but a look at attributes,
  // from 0; below 0 never.
  void Die(int call) { callsUntilDeath_ = call; }
  // How often `call` came since its order, or since the beginning.
  int Count(FileCall call) const { return orders_[static_cast<size_t>(call)].count; }

  std::unique_ptr<platform::File> OpenForReading(std::u16string_view path) override;
  std::unique_ptr<platform::File> Create(std::u16string_view path) override;
  std::unique_ptr<platform::File> CreateInPlace(std::u16string_view path) override;
  void Narrow(std::u16string_view path) override { real_.Narrow(path); }
  bool Rename(std::u16string_view from, std::u16string_view to) override {
    return !Fails(FileCall::kRename) && real_.Rename(from, to);
  }
  bool RenameToFree(std::u16string_view from, std::u16string_view to) override {
    return !Fails(FileCall::kRename) && real_.RenameToFree(from, to);
  }
  bool KeepAs(std::u16string_view from, std::u16string_view to) override {
    return !Fails(FileCall::kRename) && real_.KeepAs(from, to);
  }
  bool SyncToDisk(std::u16string_view path) override {
    return !Fails(FileCall::kSync) && real_.SyncToDisk(path);
  }
  bool MakeFolder(std::u16string_view path) override {
    return !Fails(FileCall::kMakeFolder) && real_.MakeFolder(path);
  }
  std::optional<uint32_t> Attributes(std::u16string_view path) override {
    return Fails(FileCall::kAttributes) ? platform::kAttributeUnknown : real_.Attributes(path);
  }
  bool IsSameFile(std::u16string_view a, std::u16string_view b) override {
    return real_.IsSameFile(a, b);
  }
  std::optional<std::u16string> FollowLink(std::u16string_view path) override {
    return real_.FollowLink(path);
  }
  bool Remove(std::u16string_view path) override { return real_.Remove(path); }
  bool RemoveFolder(std::u16string_view path) override { return real_.RemoveFolder(path); }
  std::optional<std::vector<platform::FolderEntry>> List(std::u16string_view folder) override {
    return real_.List(folder);
  }

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
  int callsUntilDeath_ = -1;
  std::array<Order, static_cast<size_t>(FileCall::kAttributes) + 1> orders_;
};

}  // namespace testing_support
