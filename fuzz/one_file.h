// A file system for fuzz targets: one content that every name reads and writes.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/files.h"

namespace fuzz {

class OneFile : public platform::Files {
 public:
  std::string content;

  std::unique_ptr<platform::File> OpenForReading(std::u16string_view) override {
    return std::make_unique<Stream>(content);
  }
  std::unique_ptr<platform::File> Create(std::u16string_view) override {
    content.clear();
    return std::make_unique<Stream>(content);
  }
  std::unique_ptr<platform::File> CreateInPlace(std::u16string_view path) override {
    return Create(path);
  }
  void Narrow(std::u16string_view) override {}
  std::optional<uint32_t> Attributes(std::u16string_view) override { return 0; }
  bool Remove(std::u16string_view) override { return true; }
  bool Rename(std::u16string_view, std::u16string_view) override { return true; }
  bool KeepAs(std::u16string_view, std::u16string_view) override { return true; }
  bool RenameToFree(std::u16string_view, std::u16string_view) override { return true; }
  bool IsSameFile(std::u16string_view, std::u16string_view) override { return false; }
  std::optional<std::u16string> FollowLink(std::u16string_view path) override {
    return std::u16string(path);
  }
  bool MakeFolder(std::u16string_view) override { return true; }
  bool RemoveFolder(std::u16string_view) override { return true; }
  bool SyncToDisk(std::u16string_view) override { return true; }
  std::optional<std::vector<platform::FolderEntry>> List(std::u16string_view) override {
    return {};
  }

 private:
  class Stream : public platform::File {
   public:
    explicit Stream(std::string& bytes) : bytes_(bytes) {}
    int64_t Read(void* data, size_t size) override {
      const size_t count = bytes_.copy(static_cast<char*>(data), size, at_);
      at_ += count;
      return static_cast<int64_t>(count);
    }
    bool Seek(uint64_t position) override {
      at_ = std::min<uint64_t>(position, bytes_.size());
      return true;
    }
    bool Write(std::string_view bytes) override {
      bytes_ += bytes;
      return true;
    }
    bool Sync() override { return true; }

   private:
    std::string& bytes_;
    size_t at_ = 0;
  };
};

}  // namespace fuzz
