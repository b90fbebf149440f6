// One table names every key in the order of the file and the field that holds it; reading and
// writing both go by it. Values are checked for their form, never for their range: the place that
// uses a setting decides what an unknown value means.
#include "core/settings.h"

#include <algorithm>
#include <initializer_list>
#include <iterator>
#include <memory>
#include <string>
#include <variant>

#include "core/lines.h"
#include "core/paths.h"
#include "core/text.h"
#include "platform/files.h"
#include "platform/host.h"
#include "platform/metrics.h"

namespace core {
namespace {

constexpr std::u16string_view kSettingsFile = u"Morvenly.dat";
constexpr std::u16string_view kFontName = u"MS UI Gothic";
constexpr size_t kMaxFontName = 31;

using TextField = std::u16string CAppState::*;
using NumberField = int CAppState::*;

// The kinds of key. Digits take a value of digits alone; FontSize a sign as well; FontName is cut
// to its room.
struct WrittenOnly {
  std::u16string_view text;
};
struct Version {};
struct FirstView {};
struct LineNumber {};
struct Digits {
  NumberField field;
};
struct FontSize {
  NumberField field;
};
struct FontName {
  TextField field;
};
struct Text {
  TextField field;
};
template <size_t N>
struct Width {
  std::array<int, N> CAppState::*field;
  size_t column;
};

using Kind = std::variant<WrittenOnly, Version, FirstView, LineNumber, Digits, FontSize, FontName,
                          Text, Width<4>, Width<5>>;

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
    {u"DataFile", Text{&App::DataFile}},
};

// The older form of TimeInitForNewMode: read, but not written any more.
constexpr Key kOldKey = {u"SetNowForCreate", Digits{&App::SetNowForCreate}};

template <typename... Cases>
struct Overloaded : Cases... {
  using Cases::operator()...;
};
template <typename... Cases>
Overloaded(Cases...) -> Overloaded<Cases...>;

void TakeDigits(std::u16string_view value, int& number) {
  if (AllDigits(value) == 0) number = ToInt32(value);
}

void TakeValue(CAppState& app, const Kind& kind, std::u16string_view value) {
  std::visit(Overloaded{
                 [](WrittenOnly) {},
                 [&](Version) { app.FileVersion = value; },
                 [&](FirstView) { TakeDigits(value, app.InitView); },
                 [&](LineNumber) { TakeDigits(value, DaySeqVwLineNum); },
                 [&](Digits key) { TakeDigits(value, app.*key.field); },
                 [&](FontSize key) {
                   if (IsSignedInteger(value) == 0) app.*key.field = ToInt32(value);
                 },
                 [&](FontName key) { app.*key.field = value.substr(0, kMaxFontName); },
                 [&](Text key) { app.*key.field = value; },
                 [&](const auto& width) { TakeDigits(value, (app.*width.field)[width.column]); },
             },
             kind);
}

std::u16string Number(int value) {
  return ZeroPadded(value, 1);
}

std::u16string ValueOf(const CAppState& app, const Kind& kind) {
  return std::visit(
      Overloaded{
          [](WrittenOnly key) { return std::u16string(key.text); },
          [](Version) { return std::u16string(kProgramVersion); },
          [&](FirstView) { return Number(app.ViewModeSave == 1 ? app.CurView : app.InitView); },
          [](LineNumber) { return Number(DaySeqVwLineNum); },
          [&](Digits key) { return Number(app.*key.field); },
          [&](FontSize key) { return Number(app.*key.field); },
          [&](FontName key) { return app.*key.field; },
          [&](Text key) { return app.*key.field; },
          [&](const auto& width) { return Number((app.*width.field)[width.column]); },
      },
      kind);
}

struct ListSection {
  std::u16string_view header;
  HistoryList CAppState::*list;
};

constexpr std::u16string_view kSystemHeader = u"[System]";

constexpr ListSection kListSections[] = {
    {u"[Place]", &App::PlaceHistory},         {u"[Memo]", &App::MemoHistory},
    {u"[Category1]", &App::Category1History}, {u"[Category2]", &App::Category2History},
    {u"[Find]", &App::FindHistory},
};

void ReadSystemLine(CAppState& app, std::u16string_view line) {
  const size_t colon = line.find(u':');
  if (colon == std::u16string_view::npos) return;
  const std::u16string_view name = line.substr(0, colon);
  const std::u16string_view value = line.substr(colon + 1);
  const auto key = std::find_if(std::begin(kKeys), std::end(kKeys),
                                [&](const Key& k) { return k.name == name; });
  if (key != std::end(kKeys)) {
    TakeValue(app, key->kind, value);
  } else if (name == kOldKey.name) {
    TakeValue(app, kOldKey.kind, value);
  }
}

// Reads the sections line by line: in none, in [System], or in one of the lists.
class SectionReader {
 public:
  explicit SectionReader(CAppState& app) : app_(app) {}

  void TakeLine(std::u16string_view line) {
    if (line.empty()) {
      inSystem_ = false;
      list_ = nullptr;
    } else if (inSystem_) {
      ReadSystemLine(app_, line);
    } else if (list_ != nullptr) {
      TakeListLine(line);
    } else {
      TakeHeader(line);
    }
  }

 private:
  // A section that stands twice begins again at the top of its list.
  void TakeHeader(std::u16string_view line) {
    inSystem_ = line == kSystemHeader;
    for (const ListSection& section : kListSections) {
      if (line == section.header) list_ = &(app_.*section.list);
    }
    position_ = 0;
  }

  void TakeListLine(std::u16string_view line) { list_->Set(position_++, line); }

  CAppState& app_;
  bool inSystem_ = false;
  HistoryList* list_ = nullptr;
  size_t position_ = 0;
};

// The lines of the file as WriteSettings sends them, to a sink that answers false on failure.
template <typename Sink>
bool EachLine(const CAppState& app, Sink write) {
  if (!write(kSystemHeader)) return false;
  for (const Key& key : kKeys) {
    if (!write(std::u16string(key.name) + u':' + ValueOf(app, key.kind))) return false;
  }
  if (!write(u"")) return false;
  for (const ListSection& section : kListSections) {
    if (!write(section.header)) return false;
    for (const std::u16string& entry : (app.*section.list).Entries()) {
      if (!write(entry)) return false;
    }
    if (!write(u"")) return false;
  }
  return true;
}

void SetWords(HistoryList& list, std::initializer_list<std::u16string_view> words) {
  list.Clear();
  for (const std::u16string_view word : words) list.Set(list.Entries().size(), word);
}

// The value that the older key stands for: half hours for 0, otherwise the clock.
void RepairTimeMode(int& mode, int setNowForCreate) {
  if (mode == -1) mode = setNowForCreate == 0 ? 2 : 1;
}

constexpr int kRangeFitsScreen = 0;
constexpr std::u16string_view kLastVersionWithShortPages = u"2.3.2003.1122";

void RepairListRange(CAppState& app) {
  if (!app.FileVersion) {
    app.SeqViewRng = kRangeFitsScreen;
  } else if (*app.FileVersion <= kLastVersionWithShortPages && app.SeqViewRng < 10) {
    app.SeqViewRng = kRangeFitsScreen;
  }
}

// 0, or -1 after the message.
int ReadOrInitialize(CAppState& app) {
  const std::u16string path = JoinModulePath(kSettingsFile);
  if (platform::files().Exists(path)) {
    if (ReadSettings(app, path) == 0) return 0;
    platform::ShowNotice(u"設定ファイルが読込めません。\nプログラムを終了します。", u"起動時エラー",
                         platform::Icon::kStop);
    return -1;
  }
  platform::ShowNotice(u"設定ファイルが見つからないので初期化します。", u"設定ファイルエラー",
                       platform::Icon::kInformation);
  SetDefaultLists(app);
  return 0;
}

}  // namespace

void SetDefaults(CAppState& app) {
  app.FileVersion.reset();
  app.StartupMode = 0;
  app.ViewModeSave = 1;
  app.InitView = kViewDay;
  DaySeqVwLineNum = 0;
  app.SeqViewRng = 20;
  app.MonViewTapOpeMode = 1;
  app.DayVwMltDayMode = 1;
  app.OkBtnVwMode = 1;
  app.ToolBarVwMode = 1;
  for (const Key& key : kKeys) {
    if (const auto* name = std::get_if<FontName>(&key.kind)) app.*name->field = kFontName;
    if (const auto* size = std::get_if<FontSize>(&key.kind)) app.*size->field = platform::Scaled(9);
  }
  app.RcdrFntSize = platform::Scaled(10);
  app.SetNowForCreate = -1;
  app.TimeInitForNewMode = -1;
  app.TimeInitForFollowMode = 1;
  app.PlaceSepaStr = u"－＞";
  app.NoMemPlaceSepaStr = 0;
  app.EditOpeCont = 0;
  app.DispListAfterFind = 0;
  app.StaDtTmName = u"開始";
  app.EndDtTmName = u"終了";
  app.LatName = u"緯度";
  app.LonName = u"経度";
  app.SbjctName = u"件名";
  app.PlaceName = u"場所";
  app.Cate1Name = u"分類1";
  app.Cate2Name = u"分類2";
  app.MemoName = u"メモ";
  app.ActTxtMode = 1;
  app.ItmSelMode = 1;
  app.DataFile = JoinModulePath(u"user.sdf");
  for (size_t i = 0; i < app.HalfHourTable.size(); ++i) {
    app.HalfHourTable[i] = ZeroPadded(static_cast<int>(i / 2), 2) + (i % 2 == 0 ? u":00" : u":30");
  }
}

void SetDefaultLists(CAppState& app) {
  SetWords(app.PlaceHistory, {u"会社", u"学校", u"自宅", u"レストラン", u"公園"});
  SetWords(app.Category1History, {u"仕事", u"アルバイト", u"授業", u"クラブ", u"遊び", u"スポーツ",
                                  u"食事", u"散歩", u"その他"});
  SetWords(app.Category2History,
           {u"デスクワーク", u"打合せ", u"出張", u"コンビニ", u"ガソリンスタンド", u"おしゃべり",
            u"映画", u"買い物", u"スキー", u"水泳"});
  app.MemoHistory.Clear();
  app.FindHistory.Clear();
}

int InitApp(CAppState& app) {
  MenuBarHeight = platform::Scaled(26);
  platform::host().SeedDraw(platform::host().TickCount());
  SetDefaults(app);
  if (ReadOrInitialize(app) != 0) return -1;
  // A first run has no version: it starts with one screen a page, not with the default.
  RepairListRange(app);
  RepairTimeMode(app.TimeInitForNewMode, app.SetNowForCreate);
  RepairTimeMode(app.TimeInitForFollowMode, app.SetNowForCreate);
  if (app.DataFile.empty()) app.DataFile = JoinModulePath(u"user.sdf");
  app.ActIds.Clear();
  app.ActStarts.Clear();
  const platform::LocalTime now = platform::host().Now();
  CurYear = now.year;
  CurMonth = now.month;
  CurDay = now.day;
  return 0;
}

int ReadSettings(CAppState& app, std::u16string_view path) {
  for (const ListSection& section : kListSections) (app.*section.list).Clear();
  app.DayVwPrtColWdh.fill(-1);
  app.DayVwLndColWdh.fill(-1);
  app.MapVwPrtColWdh.fill(-1);
  app.MapVwLndColWdh.fill(-1);
  const std::unique_ptr<platform::File> file = platform::files().OpenForReading(path);
  if (!file) return -1;
  LineReader lines(*file);
  SectionReader sections(app);
  std::u16string line;
  size_t byteLength;
  int result;
  while ((result = lines.ReadTextLine(line, byteLength)) == 0) sections.TakeLine(line);
  return result == -1 ? 0 : -9;
}

int WriteSettings(const CAppState& app, std::u16string_view path) {
  // Written beside the old file and put in its place when it is whole: a full disk or a crash
  // costs the changes of this run and not the settings.
  const std::u16string newPath = std::u16string(path) + u".new";
  std::unique_ptr<platform::File> file = platform::files().Create(newPath);
  if (!file) return -1;
  size_t linesWritten = 0;
  bool whole = EachLine(app, [&](std::u16string_view line) {
    if (WriteTextLine(*file, line) != 0) return false;
    ++linesWritten;
    return true;
  });
  whole = whole && file->Sync();
  file.reset();
  if (!whole || !platform::files().Rename(newPath, path)) platform::files().Remove(newPath);
  return linesWritten == 0 ? -2 : 0;
}

int SaveSettings(const CAppState& app) {
  const int result = WriteSettings(app, JoinModulePath(kSettingsFile));
  if (result != 0) {
    platform::ShowNotice(u"設定ファイルの書込みに失敗しました。", u"書込みエラー",
                         platform::Icon::kStop);
  }
  return result;
}

}  // namespace core
