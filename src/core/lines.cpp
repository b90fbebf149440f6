// A file is read in blocks; a line that lies within one is decoded where it lies.
#include "core/lines.h"

#include <algorithm>
#include <cstdint>

#include "platform/code_page.h"

namespace core {
namespace {

constexpr size_t kBlockSize = 65536;

// Results of ReadTextLine.
constexpr int kNoMoreLines = -1;
constexpr int kReadFailed = -12;
constexpr int kRefused = -14;

// Neither byte is ever the second one of a pair of the code page, or within a character of UTF-8.
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

void LineReader::ReadStrictly(Encoding encoding) {
  encoding_ = encoding;
  strict_ = true;
}

void LineReader::Decode(std::string_view bytes, std::u16string& text) {
  const bool allMean = core::Decode(bytes, encoding_, text);
  if (strict_ && (!allMean || bytes.find('\0') != std::string_view::npos)) refused_ = true;
}

void LineReader::Append(std::string_view bytes, std::u16string& text) {
  Decode(bytes, piece_);
  if (!limit_) {
    text += piece_;
    return;
  }
  for (const char16_t unit : piece_) {
    const bool separates = unit == limit_->separator;
    if (separates) ++separators_;
    fieldUnits_ = separates ? 0 : fieldUnits_ + 1;
    if (separators_ < limit_->fields && fieldUnits_ <= limit_->longest) text += unit;
  }
}

int LineReader::ReadTextLine(std::u16string& text, size_t& byteLength) {
  text.clear();
  byteLength = separators_ = fieldUnits_ = 0;
  refused_ = false;
  const bool ended = TakeLine(text, byteLength);
  const bool marked = strict_ && atStart_ && encoding_ == Encoding::kUtf8;
  if (marked && text.starts_with(kByteOrderMark)) text.erase(0, 1);
  atStart_ = false;
  if (failed_) return kReadFailed;
  if (refused_) return kRefused;
  return ended ? 0 : kNoMoreLines;
}

// False if there was no line end any more.
bool LineReader::TakeLine(std::u16string& text, size_t& byteLength) {
  std::string rest;  // of what lies before a block's end, not decoded yet: the start of a character
  for (;;) {
    if (position_ == end_ && !Fill()) {
      Append(rest, text);
      return false;
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
      Decode(piece, text);
    } else {
      rest += piece;
      const size_t ready = lineEnd == blockEnd ? WholeLength(rest, encoding_) : rest.size();
      Append(std::string_view(rest).substr(0, ready), text);
      rest.erase(0, ready);
    }
    if (lineEnd == blockEnd) continue;
    lineFeedMayFollow_ = *lineEnd == '\r';
    ++position_;
    return true;
  }
}

int WriteTextLine(platform::File& file, std::u16string_view text) {
  return file.Write(platform::EncodeCodePage(text) + "\r\n") ? 0 : -1;
}

}  // namespace core
