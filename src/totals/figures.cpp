#include "totals/figures.h"

#include <algorithm>

#include "core/text.h"
#include "platform/utf.h"

namespace totals {
namespace {

std::u16string Number(int64_t number) {
  return platform::ToUtf16(std::to_string(number));
}

// `value` in units, with one or two digits after the point, rounded.
std::u16string Decimals(int64_t value, int64_t unit, int digits) {
  const int scale = digits == 1 ? 10 : 100;
  const int64_t scaled = unit == 0 ? 0 : (value * scale + unit / 2) / unit;
  return Number(scaled / scale) + u"." + core::ZeroPadded(static_cast<int>(scaled % scale), digits);
}

Seconds MeanADay(const Group& group, const Totals& totals) {
  return totals.Days() == 0 ? 0 : group.time / totals.Days();
}

std::u16string CountText(const Group& group) {
  return (group.runs ? u"●" : u"") + Number(group.count) + u"件";
}

std::u16string OneLine(std::u16string text) {
  std::ranges::replace_if(
      text, [](char16_t c) { return c == u'\t' || c == u'\r' || c == u'\n'; }, u' ');
  return text;
}

// A spreadsheet works out what begins so, be it a name that came with somebody's file.
std::u16string PlainText(const std::u16string& text) {
  const bool isFormula =
      !text.empty() && std::u16string_view(u"=+-@\t\r").find(text[0]) != std::u16string_view::npos;
  return isFormula ? u"'" + text : text;
}

std::string Quoted(std::u16string_view text) {
  std::string bytes = platform::ToUtf8(text);
  if (bytes.find_first_of(",\"\r\n") == bytes.npos) return bytes;
  std::string quoted = "\"";
  for (const char c : bytes) quoted.append(c == '"' ? 2 : 1, c);
  return quoted + '"';
}

void AddLines(const Rows& rows, const Choices& choices, const Totals& totals,
              const std::vector<Group>& groups, const std::u16string& outerName, Table& table) {
  for (const Group& group : groups) {
    const bool isInner = group.key.inner != Key::kAny;
    const std::u16string name =
        NameOf(rows, LevelOf(choices, group.key), isInner ? group.key.inner : group.key.outer);
    const Seconds mean = MeanADay(group, totals);
    table.push_back({PlainText(isInner ? outerName : name), PlainText(isInner ? name : u""),
                     HoursText(group.time), DecimalHours(group.time),
                     ShareText(group.time, totals.sum), Number(group.count), HoursText(mean),
                     DecimalHours(mean)});
    AddLines(rows, choices, totals, group.inner, name, table);
  }
}

}  // namespace

std::u16string HoursText(Seconds time) {
  return Number(time / kHourSeconds) + u":" +
         core::ZeroPadded(static_cast<int>(time % kHourSeconds / kMinuteSeconds), 2);
}

std::u16string DecimalHours(Seconds time) {
  return Decimals(time, kHourSeconds, 2);
}

std::u16string ShareText(Seconds time, Seconds all) {
  return Decimals(time * 100, all, 1) + u"%";
}

Summary Summarize(const Totals& totals) {
  Summary summary{u"合計 " + HoursText(totals.sum),
                  Number(totals.count) + u"件",
                  u"書いた時間 " + HoursText(totals.written),
                  u"書かれていない時間 " + HoursText(totals.Unwritten()),
                  {}};
  if (totals.runs) summary.note = u"●記録中を含む";
  if (totals.leftOut > 0) {
    if (totals.runs) summary.note += u"　";
    summary.note += u"日時が不正な" + Number(totals.leftOut) + u"件を除く";
  }
  return summary;
}

BarFigures FiguresOf(const Group& group, const Totals& totals, bool isNarrow) {
  const std::u16string time = HoursText(group.time);
  const std::u16string share = ShareText(group.time, totals.sum);
  if (isNarrow) return {time, share + u" " + CountText(group)};
  return {time + u" " + share, CountAndMean(group, totals)};
}

std::u16string CountAndMean(const Group& group, const Totals& totals) {
  std::u16string text = CountText(group);
  if (totals.Days() > 1) text += u" 1日" + HoursText(MeanADay(group, totals));
  return text;
}

std::u16string ByName(const core::CAppState& app, By by) {
  switch (by) {
    case By::kNothing:
      return u"内訳なし";
    case By::kCategory1:
      return app.Cate1Name;
    case By::kCategory2:
      return app.Cate2Name;
    case By::kPlace:
      return app.PlaceName;
    case By::kWeekday:
      return u"曜日";
    case By::kHour:
      break;
  }
  return u"時間帯";
}

Table MakeTable(const core::CAppState& app, const Rows& rows, const Choices& choices,
                const Totals& totals) {
  const bool isPlaces = choices.by == By::kPlace && choices.within == By::kNothing;
  Table table = {{ByName(app, choices.by),
                  isPlaces                         ? u"移動"
                  : choices.within == By::kNothing ? u"内訳"
                                                   : ByName(app, choices.within),
                  u"時間", u"時間(小数)", u"割合", u"件数", u"1日平均", u"1日平均(小数)"}};
  AddLines(rows, choices, totals, totals.groups, {}, table);
  return table;
}

std::u16string TabbedText(const Table& table) {
  std::u16string text;
  for (const std::vector<std::u16string>& line : table) {
    for (size_t cell = 0; cell < line.size(); ++cell) {
      if (cell > 0) text += u'\t';
      text += OneLine(line[cell]);
    }
    text += u'\n';
  }
  return text;
}

std::string CsvBytes(const Table& table) {
  std::string bytes = "\xEF\xBB\xBF";
  for (const std::vector<std::u16string>& line : table) {
    for (size_t cell = 0; cell < line.size(); ++cell) {
      if (cell > 0) bytes += ',';
      bytes += Quoted(line[cell]);
    }
    bytes += "\r\n";
  }
  return bytes;
}

}  // namespace totals
