// Reading and writing files of lines in the system code page.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "platform/files.h"

namespace core {

// Reads the lines of an open file, which is borrowed, in blocks.
class LineReader {
 public:
  explicit LineReader(platform::File& file);

  // One line without its end: CR, LF or CR LF. 0; -1 at the end of the file, with what was read of
  // an unended last line in `text`; -12 on a read failure. `byteLength` counts the line's bytes
  // without its end. A line has no length limit.
  int ReadTextLine(std::u16string& text, size_t& byteLength);

 private:
  bool Fill();

  platform::File& file_;
  std::vector<char> block_;
  size_t position_ = 0;
  size_t end_ = 0;
  bool failed_ = false;
  bool lineFeedMayFollow_ = false;  // the last line ended in CR
};

// Writes `text` and CR LF. 0, or -1 on failure.
int WriteTextLine(platform::File& file, std::u16string_view text);

}  // namespace core
