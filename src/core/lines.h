// Reading and writing files of lines, in the system code page unless a reader is asked for another.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "core/encoding.h"
#include "platform/files.h"

namespace core {

// Reads the lines of an open file, which is borrowed, in blocks.
class LineReader {
 public:
  explicit LineReader(platform::File& file);

  // Lines of fields, for a file that nobody vouches for: of a line that is longer than a block only
  // the first `fields` fields are kept, and of each at most the first `longest` 16-bit units. So
  // no line takes more memory than that, however long it is.
  void LimitFields(char16_t separator, size_t fields, size_t longest);

  // For a file that nobody vouches for, too: to be read in `encoding`, a byte order mark before the
  // first line passed over, and no line taken that has a NUL or bytes that mean nothing.
  void ReadStrictly(Encoding encoding);

  // One line without its end: CR, LF or CR LF. 0; -1 at the end of the file, with what was read of
  // an unended last line in `text`; -12 on a read failure; -14 for a line that ReadStrictly doesn't
  // take, the last one included. `byteLength` counts the line's bytes without its end. A line has
  // no length limit but that of LimitFields.
  int ReadTextLine(std::u16string& text, size_t& byteLength);

 private:
  struct FieldLimit {
    char16_t separator;
    size_t fields;
    size_t longest;
  };

  bool Fill();
  bool TakeLine(std::u16string& text, size_t& byteLength);
  void Decode(std::string_view bytes, std::u16string& text);
  void Append(std::string_view bytes, std::u16string& text);

  platform::File& file_;
  std::vector<char> block_;
  size_t position_ = 0;
  size_t end_ = 0;
  bool failed_ = false;
  bool lineFeedMayFollow_ = false;  // the last line ended in CR
  Encoding encoding_ = Encoding::kCodePage;
  bool strict_ = false;
  bool atStart_ = true;   // of the file
  bool refused_ = false;  // the line so far, by ReadStrictly
  std::u16string piece_;  // of a line, decoded
  std::optional<FieldLimit> limit_;
  size_t separators_ = 0;  // of the line so far, and the units after the last of them
  size_t fieldUnits_ = 0;
};

// Writes `text` and CR LF. 0, or -1 on failure.
int WriteTextLine(platform::File& file, std::u16string_view text);

}  // namespace core
