// Reads an exchange file whole, in memory, and checks every line of it, so that a bad one changes
// nothing. The file is in the code page or in UTF-8 (see core::EncodingOf).
#pragma once

#include <limits>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "core/app_state.h"
#include "exchange/progress.h"

namespace exchange {

// In degrees; stands for a position that the file doesn't give.
inline constexpr double kNoPosition = std::numeric_limits<double>::max();

struct ImportRecord {
  std::u16string ActId;                     // empty in files of kVer1
  std::u16string StaDateTime, EndDateTime;  // 19 characters
  double Latitude = kNoPosition;
  double Longitude = kNoPosition;
  std::u16string Subject, Place, Category1, Category2, Memo;
  std::optional<std::u16string> ExtItems;  // absent where the file gives none
};

// By start; records of one start in the order of the file.
using ImportList = std::vector<ImportRecord>;

// Results of ReadImportFile.
inline constexpr int kCannotOpen = -101;
inline constexpr int kTooFewColumns = -111;
inline constexpr int kBadTimes = -112;
inline constexpr int kBadActId = -113;
inline constexpr int kCannotRead = -12;
inline constexpr int kBadBytes = -14;

// Reads a file of a FormatVer up to its first empty line. 0; or one of the above, and `list` holds
// nothing. `lineNumber` counts from 1, after the header line, 0 for a file that can't be opened.
// `detail` is the number of the last column that a line reaches, counted from 0 with the id's
// (kTooFewColumns), the code of CheckActionTimes (kBadTimes) or of CheckActId (kBadActId),
// otherwise the result. kBadBytes is a line with a NUL or with bytes that mean nothing in the
// file's encoding.
int ReadImportFile(ImportList& list, std::u16string_view path, int version, int& lineNumber,
                   int& detail, const Progress& progress = {});

}  // namespace exchange
