// One table names every key in the order of the file and the field that holds it; reading and
// writing both go by it.
#include "core/settings_keys.h"

#include <algorithm>
#include <cstdint>
#include <iterator>
#include <limits>
#include <string>
#include <variant>

#include "core/paths.h"
#include "core/settings.h"
#include "core/settings_choices.h"
#include "core/text.h"
#include "core/version.h"

namespace core {
namespace {

constexpr size_t kMaxFontName = 31;

// The kinds of key. A number takes digits alone, a font size a sign as well; a font name is cut to
// its room; the others are texts as they stand, or have a rule of their own below.
struct WrittenOnly {
  std::u16string_view text;
};
struct Version {};
struct FirstView {};
struct LineNumber {};
struct Digits {
  int CAppState::*field;
};
// Kept on purpose: its default -1 is written, but is no digits when it comes back. ReadSettings has
// put it there before.
template <size_t N>
struct Width {
  std::array<int, N> CAppState::*field;
  size_t column;
};
// Written only where it differs from its default, so that whoever never changes it keeps the file
// as it was.
struct Added {
  int CAppState::*field;
  int standard = 0;
};
struct FontSize {
  int CAppState::*field;
};
struct FontName {
  std::u16string CAppState::*field;
};
struct Text {
  std::u16string CAppState::*field;
};
struct DataFilePath {};

using Kind = std::variant<WrittenOnly, Version, FirstView, LineNumber, Digits, Width<4>, Width<5>,
                          Added, FontSize, FontName, Text, DataFilePath>;

struct Key {
  std::u16string_view name;
  Kind kind;
};

using App = CAppState;  // for the table's sake

constexpr Key kKeys[] = {
    {u"Program Name", WrittenOnly{kProgramName}},
    {u"Version", Version{}},
    {u"Copyright", WrittenOnly{kCopyright}},
    {u"StartupMode", Digits{&App::StartupMode}},
    {u"ViewModeSave", Digits{&App::ViewModeSave}},
    {u"InitView", FirstView{}},
    {u"DaySeqVwLineNum", LineNumber{}},
    {u"SeqViewRng", Digits{&App::SeqViewRng}},
    {u"MonViewTapOpeMode", Digits{&App::MonViewTapOpeMode}},
    {u"DayVwMltDayMode", Digits{&App::DayVwMltDayMode}},
    {u"OkBtnVwMode", Digits{&App::OkBtnVwMode}},
    {u"ToolBarVwMode", Digits{&App::ToolBarVwMode}},
    {u"DayVwGrdFntName", FontName{&App::DayVwGrdFntName}},
    {u"DayVwGrdFntSize", FontSize{&App::DayVwGrdFntSize}},
    {u"WekVwGrdFntName", FontName{&App::WekVwGrdFntName}},
    {u"WekVwGrdFntSize", FontSize{&App::WekVwGrdFntSize}},
    {u"MthVwGrdFntName", FontName{&App::MthVwGrdFntName}},
    {u"MthVwGrdFntSize", FontSize{&App::MthVwGrdFntSize}},
    {u"MthVwLstFntName", FontName{&App::MthVwLstFntName}},
    {u"MthVwLstFntSize", FontSize{&App::MthVwLstFntSize}},
    {u"LstVwGrdFntName", FontName{&App::LstVwGrdFntName}},
    {u"LstVwGrdFntSize", FontSize{&App::LstVwGrdFntSize}},
    {u"MapVwGrdFntName", FontName{&App::MapVwGrdFntName}},
    {u"MapVwGrdFntSize", FontSize{&App::MapVwGrdFntSize}},
    {u"MapVwLstFntName", FontName{&App::MapVwLstFntName}},
    {u"MapVwLstFntSize", FontSize{&App::MapVwLstFntSize}},
    {u"RcdrFntName", FontName{&App::RcdrFntName}},
    {u"RcdrFntSize", FontSize{&App::RcdrFntSize}},
    {u"DayVwPrtColWdh00", Width<4>{&App::DayVwPrtColWdh, 0}},
    {u"DayVwPrtColWdh01", Width<4>{&App::DayVwPrtColWdh, 1}},
    {u"DayVwPrtColWdh02", Width<4>{&App::DayVwPrtColWdh, 2}},
    {u"DayVwPrtColWdh03", Width<4>{&App::DayVwPrtColWdh, 3}},
    {u"DayVwLndColWdh00", Width<4>{&App::DayVwLndColWdh, 0}},
    {u"DayVwLndColWdh01", Width<4>{&App::DayVwLndColWdh, 1}},
    {u"DayVwLndColWdh02", Width<4>{&App::DayVwLndColWdh, 2}},
    {u"DayVwLndColWdh03", Width<4>{&App::DayVwLndColWdh, 3}},
    {u"MapVwPrtColWdh00", Width<5>{&App::MapVwPrtColWdh, 0}},
    {u"MapVwPrtColWdh01", Width<5>{&App::MapVwPrtColWdh, 1}},
    {u"MapVwPrtColWdh02", Width<5>{&App::MapVwPrtColWdh, 2}},
    {u"MapVwPrtColWdh03", Width<5>{&App::MapVwPrtColWdh, 3}},
    {u"MapVwPrtColWdh04", Width<5>{&App::MapVwPrtColWdh, 4}},
    {u"MapVwLndColWdh00", Width<5>{&App::MapVwLndColWdh, 0}},
    {u"MapVwLndColWdh01", Width<5>{&App::MapVwLndColWdh, 1}},
    {u"MapVwLndColWdh02", Width<5>{&App::MapVwLndColWdh, 2}},
    {u"MapVwLndColWdh03", Width<5>{&App::MapVwLndColWdh, 3}},
    {u"MapVwLndColWdh04", Width<5>{&App::MapVwLndColWdh, 4}},
    {u"TimeInitForNewMode", Digits{&App::TimeInitForNewMode}},
    {u"TimeInitForFollowMode", Digits{&App::TimeInitForFollowMode}},
    {u"PlaceSepaStr", Text{&App::PlaceSepaStr}},
    {u"NoMemPlaceSepaStr", Digits{&App::NoMemPlaceSepaStr}},
    {u"EditOpeCont", Digits{&App::EditOpeCont}},
    {u"DispListAfterFind", Digits{&App::DispListAfterFind}},
    {u"StaDtTmName", Text{&App::StaDtTmName}},
    {u"EndDtTmName", Text{&App::EndDtTmName}},
    {u"LatName", Text{&App::LatName}},
    {u"LonName", Text{&App::LonName}},
    {u"SbjctName", Text{&App::SbjctName}},
    {u"PlaceName", Text{&App::PlaceName}},
    {u"Cate1Name", Text{&App::Cate1Name}},
    {u"Cate2Name", Text{&App::Cate2Name}},
    {u"MemoName", Text{&App::MemoName}},
    {u"ActTxtMode", Digits{&App::ActTxtMode}},
    {u"ItmSelMode", Digits{&App::ItmSelMode}},
    {u"DataFile", DataFilePath{}},
    {u"ViewAutoUpdate", Added{&App::ViewAutoUpdate}},
    {u"AutoBackup", Added{&App::AutoBackup, kOn}},
    {u"WindowWidth", Added{&App::WindowWidth}},
    {u"WindowHeight", Added{&App::WindowHeight}},
    {u"WindowMaximized", Added{&App::WindowMaximized}},
};

static_assert([] {
  for (const Key& key : kKeys) {
    const auto isSame = [&key](const Key& other) { return other.name == key.name; };
    if (std::count_if(std::begin(kKeys), std::end(kKeys), isSame) != 1) return false;
  }
  return true;
}());

// The older form of TimeInitForNewMode: read, but not written any more.
constexpr Key kOldKey = {u"SetNowForCreate", Digits{&App::SetNowForCreate}};

template <typename... Cases>
struct Overloaded : Cases... {
  using Cases::operator()...;
};
template <typename... Cases>
Overloaded(Cases...) -> Overloaded<Cases...>;

// Digits after an optional sign; a number beyond 32 bits gives the nearest that they hold, so that
// no row of digits turns into a negative setting.
int NearestInt32(std::u16string_view text) {
  constexpr int64_t kBeyond = int64_t{1} << 32;
  int64_t value = 0;
  for (const char16_t c : text) {
    if (c != u'-' && c != u'+') value = std::min(value * 10 + (c - u'0'), kBeyond);
  }
  if (text.front() == u'-') value = -value;
  return static_cast<int>(std::clamp<int64_t>(value, std::numeric_limits<int32_t>::min(),
                                              std::numeric_limits<int32_t>::max()));
}

void TakeDigits(std::u16string_view value, int& number) {
  if (AllDigits(value) == 0) number = NearestInt32(value);
}

void TakeValue(CAppState& app, const Kind& kind, std::u16string_view value) {
  std::visit(Overloaded{
                 [](WrittenOnly) {},
                 [&](Version) { app.FileVersion = value; },
                 [&](FirstView) { TakeDigits(value, app.InitView); },
                 [&](LineNumber) { TakeDigits(value, DaySeqVwLineNum); },
                 [&](Digits key) { TakeDigits(value, app.*key.field); },
                 [&](Added key) { TakeDigits(value, app.*key.field); },
                 [&](const auto& width) { TakeDigits(value, (app.*width.field)[width.column]); },
                 [&](FontSize key) {
                   if (IsSignedInteger(value) == 0) app.*key.field = NearestInt32(value);
                 },
                 [&](FontName key) { app.*key.field = value.substr(0, kMaxFontName); },
                 [&](Text key) { app.*key.field = value; },
                 [&](DataFilePath) { app.DataFile = value; },
             },
             kind);
}

std::u16string Number(int value) {
  return ZeroPadded(value, 1);
}

// Of the file beside the program no path is written, which means the same: a copy of the program's
// folder writes into its own file, and no code page has to hold the folder's name.
std::u16string DataFileValue(const std::u16string& path) {
  return path == JoinModulePath(kDefaultDataFile) ? std::u16string() : path;
}

std::u16string ValueOf(const CAppState& app, const Kind& kind) {
  return std::visit(
      Overloaded{
          [](WrittenOnly key) { return std::u16string(key.text); },
          [](Version) { return std::u16string(kProgramVersion); },
          [&](FirstView) { return Number(app.ViewModeSave == kOn ? app.CurView : app.InitView); },
          [](LineNumber) { return Number(DaySeqVwLineNum); },
          [&](Digits key) { return Number(app.*key.field); },
          [&](Added key) { return Number(app.*key.field); },
          [&](const auto& width) { return Number((app.*width.field)[width.column]); },
          [&](FontSize key) { return Number(app.*key.field); },
          [&](FontName key) { return app.*key.field; },
          [&](Text key) { return app.*key.field; },
          [&](DataFilePath) { return DataFileValue(app.DataFile); },
      },
      kind);
}

bool IsWritten(const CAppState& app, const Kind& kind) {
  const auto* added = std::get_if<Added>(&kind);
  return added == nullptr || app.*added->field != added->standard;
}

}  // namespace

void TakeSetting(CAppState& app, std::u16string_view key, std::u16string_view value) {
  const auto isKey = [key](const Key& row) { return row.name == key; };
  const auto row = std::find_if(std::begin(kKeys), std::end(kKeys), isKey);
  if (row != std::end(kKeys)) {
    TakeValue(app, row->kind, value);
  } else if (isKey(kOldKey)) {
    TakeValue(app, kOldKey.kind, value);
  }
}

bool EachSetting(
    const CAppState& app,
    const std::function<bool(std::u16string_view key, std::u16string_view value)>& write) {
  return std::all_of(std::begin(kKeys), std::end(kKeys), [&](const Key& key) {
    return !IsWritten(app, key.kind) || write(key.name, ValueOf(app, key.kind));
  });
}

}  // namespace core
