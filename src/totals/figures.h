// Totals as texts: on the screen, on the clipboard, in a file.
#pragma once

#include <string>
#include <vector>

#include "totals/groups.h"

namespace totals {

// "744:30", rounded down to whole minutes.
std::u16string HoursText(Seconds time);
// "744.50", rounded to hundredths.
std::u16string DecimalHours(Seconds time);
// "45.2%" of `all`; of nothing it is nothing.
std::u16string ShareText(Seconds time, Seconds all);

// The lines above the bars.
struct Summary {
  std::u16string sum;      // "合計 744:30"
  std::u16string count;    // "120件"
  std::u16string written;  // "書いた時間 700:00"
  std::u16string rest;     // "書かれていない時間 20:00"
  std::u16string note;     // what else is to be known; mostly empty
};
Summary Summarize(const Totals& totals);

// What stands beside a bar's name and, below it, beside the bar.
struct BarFigures {
  std::u16string figures;  // "12:34 45.2%", "12:34" where there is little room
  std::u16string details;  // "12件 1日0:24", "45.2% 12件"
};
BarFigures FiguresOf(const Group& group, const Totals& totals, bool isNarrow);
std::u16string CountAndMean(const Group& group, const Totals& totals);

// What the levels are called, the diary's own names for its fields.
std::u16string ByName(const core::CAppState& app, By by);

// A line for each group and inner group, after one of headings: name, inner name, h:mm, decimal
// hours, share, count, mean a day as h:mm and in decimals. A name that a spreadsheet would take for
// a formula begins with an apostrophe.
using Table = std::vector<std::vector<std::u16string>>;
Table MakeTable(const core::CAppState& app, const Rows& rows, const Choices& choices,
                const Totals& totals);
// For the clipboard: tabs between, a line break in a text is a blank.
std::u16string TabbedText(const Table& table);
// RFC 4180 in UTF-8, with the byte order mark by which spreadsheets know it.
std::string CsvBytes(const Table& table);

}  // namespace totals
