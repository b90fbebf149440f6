// A file is read in blocks; a line that lies within one is decoded where it lies.
#include "core/lines.h"

#include <algorithm>
#include <cstdint>

#include "platform/code_page.h"

namespace core {
namespace {

constexpr size_t kBlockSize = 65536;

// Neither byte is ever the second one of a pair of the code page.
bool IsLineEnd(char c) {
  return c == '\r' || c == '\n';
}

}  // namespace

LineReader::LineReader(platform::File& file) : file_(file), block_(kBlockSize) {}

// Called when the block is used up. False at the end of the file and on a failure.
bool LineReader::Fill() {
  const int64_t count = failed_ ? -1 : file_.Read(block_.data(), block_.size());
  failed_ = count < 0;
  position_ = 0;
  end_ = failed_ ? 0 : static_cast<size_t>(count);
  return end_ > 0;
}

int LineReader::ReadTextLine(std::u16string& text, size_t& byteLength) {
  text.clear();
  byteLength = 0;
  std::string pieces;  // of a line that reaches over the block's end
  for (;;) {
    if (position_ == end_ && !Fill()) {
      if (failed_) return -12;
      text = platform::DecodeCodePage(pieces);
      byteLength = pieces.size();
      return -1;
    }
    // The LF of a CR LF is passed over only now: it may lie in the next block.
    if (lineFeedMayFollow_) {
      lineFeedMayFollow_ = false;
      if (block_[position_] == '\n') {
        ++position_;
        continue;
      }
    }
    const auto begin = block_.begin() + static_cast<ptrdiff_t>(position_);
    const auto blockEnd = block_.begin() + static_cast<ptrdiff_t>(end_);
    const auto lineEnd = std::find_if(begin, blockEnd, IsLineEnd);
    std::string_view piece(begin, lineEnd);
    position_ += piece.size();
    if (lineEnd == blockEnd) {
      pieces += piece;
      continue;
    }
    lineFeedMayFollow_ = *lineEnd == '\r';
    ++position_;
    if (!pieces.empty()) {
      pieces += piece;
      piece = pieces;
    }
    text = platform::DecodeCodePage(piece);
    byteLength = piece.size();
    return 0;
  }
}

int WriteTextLine(platform::File& file, std::u16string_view text) {
  return file.Write(platform::EncodeCodePage(text) + "\r\n") ? 0 : -1;
}

}  // namespace core
