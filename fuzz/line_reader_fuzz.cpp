// Any bytes, handed to the line reader in pieces of any size, read as the same lines that plain
// splitting finds.
#include <algorithm>
#include <vector>

#include "core/lines.h"
#include "input.h"
#include "platform/code_page.h"

namespace {

class Pieces : public platform::File {
 public:
  Pieces(std::string_view content, size_t size) : content_(content), size_(size) {}

  int64_t Read(void* data, size_t size) override {
    const size_t count = content_.copy(static_cast<char*>(data), std::min(size, size_));
    content_.remove_prefix(count);
    return static_cast<int64_t>(count);
  }
  bool Seek(uint64_t) override { return false; }
  bool Write(std::string_view) override { return false; }
  bool Sync() override { return false; }

 private:
  std::string_view content_;
  size_t size_;
};

std::vector<std::string> Split(std::string_view content) {
  std::vector<std::string> lines(1);
  for (size_t i = 0; i < content.size(); ++i) {
    const bool pairEnds = content[i] == '\n' && i > 0 && content[i - 1] == '\r';
    if (pairEnds) continue;
    if (content[i] == '\r' || content[i] == '\n') {
      lines.emplace_back();
    } else {
      lines.back() += content[i];
    }
  }
  return lines;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  if (size == 0) return 0;
  const std::string_view content = fuzz::AsBytes(data + 1, size - 1);
  Pieces file(content, size_t{data[0]} + 1);
  core::LineReader reader(file);
  const std::vector<std::string> expected = Split(content);
  for (size_t i = 0; i < expected.size(); ++i) {
    std::u16string text;
    size_t byteLength = 0;
    const int result = reader.ReadTextLine(text, byteLength);
    fuzz::Require(result == (i + 1 < expected.size() ? 0 : -1));
    fuzz::Require(byteLength == expected[i].size());
    fuzz::Require(text == platform::DecodeCodePage(expected[i]));
  }
  return 0;
}
