#include "support/temp_folder.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>

#include "platform/device_paths.h"

namespace testing_support {

TempFolder::TempFolder(const std::string& parent) {
  std::string pattern = parent + "/morvenly-test-XXXXXX";
  if (mkdtemp(pattern.data()) == nullptr) {
    pattern = testing::TempDir() + "/morvenly-test-XXXXXX";
    if (mkdtemp(pattern.data()) == nullptr) std::abort();
  }
  hostPath_ = std::filesystem::canonical(pattern).string();
}

TempFolder::~TempFolder() {
  std::error_code ignored;
  std::filesystem::remove_all(hostPath_, ignored);
}

std::u16string TempFolder::Path(std::u16string_view name) const {
  return *platform::FromHostPath(hostPath_) + u'\\' + std::u16string(name);
}

std::string ReadWholeFile(const std::string& hostPath) {
  std::ifstream in(hostPath, std::ios::binary);
  return std::string(std::istreambuf_iterator<char>(in), {});
}

void WriteWholeFile(const std::string& hostPath, std::string_view content) {
  std::ofstream(hostPath, std::ios::binary)
      .write(content.data(), static_cast<std::streamsize>(content.size()));
}

}  // namespace testing_support
