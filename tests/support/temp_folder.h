// A folder of the test's own on the real disk, removed with the object.
#pragma once

#include <gtest/gtest.h>

#include <string>
#include <string_view>

namespace testing_support {

class TempFolder {
 public:
  // In `parent`, or where the tests have theirs if it cannot be made there.
  explicit TempFolder(const std::string& parent = testing::TempDir());
  ~TempFolder();
  TempFolder(const TempFolder&) = delete;
  TempFolder& operator=(const TempFolder&) = delete;

  const std::string& HostPath() const { return hostPath_; }
  std::string HostPath(std::string_view name) const { return hostPath_ + "/" + std::string(name); }
  // Path of a file in it, in the device's form.
  std::u16string Path(std::u16string_view name) const;

 private:
  std::string hostPath_;
};

// The whole content of a file; empty if there is none.
std::string ReadWholeFile(const std::string& hostPath);
void WriteWholeFile(const std::string& hostPath, std::string_view content);

}  // namespace testing_support
