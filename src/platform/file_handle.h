// A file descriptor with an owner.
#pragma once

#include <unistd.h>

#include <utility>

namespace platform {

class FileHandle {
 public:
  explicit FileHandle(int handle = -1) : handle_(handle) {}
  FileHandle(FileHandle&& other) noexcept : handle_(std::exchange(other.handle_, -1)) {}
  FileHandle& operator=(FileHandle&& other) noexcept {
    std::swap(handle_, other.handle_);
    return *this;
  }
  ~FileHandle() {
    if (handle_ >= 0) close(handle_);
  }

  int Get() const { return handle_; }  // -1: none
  explicit operator bool() const { return handle_ >= 0; }

 private:
  int handle_;
};

}  // namespace platform
