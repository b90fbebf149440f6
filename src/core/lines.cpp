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

void LineReader::LimitFields(char16_t separator, size_t fields, size_t longest) {
  limit_ = {separator, fields, longest};
}

void LineReader::Append(std::u16string_view decoded, std::u16string& text) {
  if (!limit_) {
    text += decoded;
    return;
  }
  for (const char16_t unit : decoded) {
    const bool separates = unit == limit_->separator;
    if (separates) ++separators_;
    fieldUnits_ = separates ? 0 : fieldUnits_ + 1;
    if (separators_ < limit_->fields && fieldUnits_ <= limit_->longest) text += unit;
  }
}

int LineReader::ReadTextLine(std::u16string& text, size_t& byteLength) {
  text.clear();
  byteLength = separators_ = fieldUnits_ = 0;
  std::string rest;  // of what lies before a block's end, not decoded yet: half of a pair
  for (;;) {
    if (position_ == end_ && !Fill()) {
      if (failed_) return -12;
      Append(platform::DecodeCodePage(rest), text);
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
    const std::string_view piece(begin, lineEnd);
    position_ += piece.size();
    const bool wholeLine = lineEnd != blockEnd && byteLength == 0;
    byteLength += piece.size();
    if (wholeLine) {
      text = platform::DecodeCodePage(piece);
    } else {
      rest += piece;
      const size_t ready = lineEnd == blockEnd ? platform::WholeLength(rest) : rest.size();
      Append(platform::DecodeCodePage(std::string_view(rest).substr(0, ready)), text);
      rest.erase(0, ready);
    }
    if (lineEnd == blockEnd) continue;
    lineFeedMayFollow_ = *lineEnd == '\r';
    ++position_;
    return 0;
  }
}

int WriteTextLine(platform::File& file, std::u16string_view text) {
  return file.Write(platform::EncodeCodePage(text) + "\r\n") ? 0 : -1;
}

}  // namespace core
