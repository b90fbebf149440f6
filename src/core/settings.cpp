// The settings' start values, and the start-up and shutdown stages with their messages.
#include "core/settings.h"

#include <initializer_list>
#include <string>

#include "core/date_time.h"
#include "core/paths.h"
#include "core/settings_choices.h"
#include "platform/files.h"
#include "platform/host.h"
#include "platform/metrics.h"

namespace core {
namespace {

struct Font {
  std::u16string CAppState::*name;
  int CAppState::*size;
};

constexpr Font kViewFonts[] = {
    {&CAppState::DayVwGrdFntName, &CAppState::DayVwGrdFntSize},
    {&CAppState::WekVwGrdFntName, &CAppState::WekVwGrdFntSize},
    {&CAppState::MthVwGrdFntName, &CAppState::MthVwGrdFntSize},
    {&CAppState::MthVwLstFntName, &CAppState::MthVwLstFntSize},
    {&CAppState::LstVwGrdFntName, &CAppState::LstVwGrdFntSize},
    {&CAppState::MapVwGrdFntName, &CAppState::MapVwGrdFntSize},
    {&CAppState::MapVwLstFntName, &CAppState::MapVwLstFntSize},
};

void SetDefaultFonts(CAppState& app) {
  constexpr std::u16string_view kFontName = u"MS UI Gothic";
  for (const Font& font : kViewFonts) {
    app.*font.name = kFontName;
    app.*font.size = platform::Scaled(9);
  }
  app.RcdrFntName = kFontName;
  app.RcdrFntSize = platform::Scaled(10);
}

void SetWords(HistoryList& list, std::initializer_list<std::u16string_view> words) {
  list.Clear();
  for (const std::u16string_view word : words) list.Set(list.Entries().size(), word);
}

// A mode that the file lacks comes from the older key: half hours for 0, otherwise the clock.
void RepairTimeMode(int& mode, int setNowForCreate) {
  if (mode == kNewNotChosen) mode = setNowForCreate == 0 ? kNewAtHalfHour : kNewAtClock;
}

// A first run has no version: it starts with one screen a page, not with the default. So does the
// file of an old version that asks for fewer rows than are offered now.
void RepairListRange(CAppState& app) {
  constexpr std::u16string_view kLastVersionWithShortPages = u"2.3.2003.1122";
  const bool shortPage =
      app.FileVersion && *app.FileVersion <= kLastVersionWithShortPages && app.SeqViewRng < 10;
  if (!app.FileVersion || shortPage) app.SeqViewRng = kFitsScreen;
}

// 0, or -1 after the message.
int ReadOrInitialize(CAppState& app) {
  const std::u16string path = JoinModulePath(kSettingsFile);
  if (platform::files().Exists(path)) {
    platform::files().Narrow(path);
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
  app.StartupMode = kStartBrowsing;
  app.ViewModeSave = kOn;
  app.InitView = kViewDay;
  DaySeqVwLineNum = 0;
  app.SeqViewRng = 20;
  app.MonViewTapOpeMode = kMonthTapSelects;
  app.DayVwMltDayMode = kSingleDayMode;
  app.OkBtnVwMode = kOkButtonHidden;
  app.ToolBarVwMode = kToolBarHidden;
  SetDefaultFonts(app);
  app.SetNowForCreate = -1;
  app.TimeInitForNewMode = kNewNotChosen;
  app.TimeInitForFollowMode = kFollowToNow;
  app.PlaceSepaStr = u"－＞";
  app.NoMemPlaceSepaStr = kOff;
  app.EditOpeCont = kOff;
  app.DispListAfterFind = kOff;
  app.ViewAutoUpdate = kOff;
  app.AutoBackup = kOn;
  app.StaDtTmName = u"開始";
  app.EndDtTmName = u"終了";
  app.LatName = u"緯度";
  app.LonName = u"経度";
  app.SbjctName = u"件名";
  app.PlaceName = u"場所";
  app.Cate1Name = u"分類1";
  app.Cate2Name = u"分類2";
  app.MemoName = u"メモ";
  app.ActTxtMode = kActionTextOff;
  app.ItmSelMode = kPickInPlace;
  app.DataFile = JoinModulePath(kDefaultDataFile);
  for (size_t i = 0; i < app.HalfHourTable.size(); ++i) {
    app.HalfHourTable[i] = FormatHourMinute(static_cast<int>(i / 2), i % 2 == 0 ? 0 : 30);
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
  RepairListRange(app);
  RepairTimeMode(app.TimeInitForNewMode, app.SetNowForCreate);
  // Kept on purpose: it has a default, so that there is never anything to repair.
  RepairTimeMode(app.TimeInitForFollowMode, app.SetNowForCreate);
  if (app.DataFile.empty()) app.DataFile = JoinModulePath(kDefaultDataFile);
  app.ActIds.Clear();
  app.ActStarts.Clear();
  SetCurrentDay(DayOf(platform::host().Now()));
  return 0;
}

bool KeepsDataFile(std::u16string_view path) {
  return path == JoinModulePath(kDefaultDataFile) || IsStorablePath(path);
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
