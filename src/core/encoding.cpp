#include "core/encoding.h"

#include <cstdint>
#include <vector>

#include "platform/code_page.h"
#include "platform/utf.h"

namespace core {
namespace {

constexpr size_t kBlockSize = 65536;

// Takes a file piece by piece, and sees whether all of it means something.
class Trial {
 public:
  explicit Trial(Encoding encoding) : encoding_(encoding) {}

  void Take(std::string_view piece) {
    if (!holds_) return;
    rest_ += piece;
    const size_t whole = WholeLength(rest_, encoding_);
    holds_ = Decode(std::string_view(rest_).substr(0, whole), encoding_, text_);
    rest_.erase(0, whole);
  }
  // After the last piece.
  bool Holds() const { return holds_ && rest_.empty(); }

 private:
  Encoding encoding_;
  bool holds_ = true;
  std::string rest_;  // the beginning of a character
  std::u16string text_;
};

}  // namespace

bool Decode(std::string_view bytes, Encoding encoding, std::u16string& text) {
  if (encoding == Encoding::kCodePage) return platform::DecodeCodePage(bytes, text);
  text.clear();
  return platform::AppendUtf16(bytes, text);
}

bool Encode(std::u16string_view text, Encoding encoding, std::string& bytes) {
  if (encoding == Encoding::kCodePage) return platform::EncodeCodePage(text, bytes);
  bytes.clear();
  platform::AppendUtf8(text, bytes);
  return true;
}

size_t WholeLength(std::string_view bytes, Encoding encoding) {
  return encoding == Encoding::kCodePage ? platform::WholeLength(bytes)
                                         : platform::WholeUtf8Length(bytes);
}

std::optional<Encoding> EncodingOf(platform::File& file) {
  static const std::string mark = platform::ToUtf8({&kByteOrderMark, 1});
  Trial codePage(Encoding::kCodePage);
  Trial utf8(Encoding::kUtf8);
  std::vector<char> block(kBlockSize);
  int64_t count;
  bool atStart = true;
  while ((count = file.Read(block.data(), block.size())) > 0) {
    const std::string_view piece(block.data(), static_cast<size_t>(count));
    if (atStart && piece.starts_with(mark)) return Encoding::kUtf8;
    atStart = false;
    codePage.Take(piece);
    utf8.Take(piece);
  }
  if (count < 0) return {};
  return utf8.Holds() && !codePage.Holds() ? Encoding::kUtf8 : Encoding::kCodePage;
}

}  // namespace core
