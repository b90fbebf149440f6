// What the pages of the options edit: a copy of the settings, which takes its place on OK, page by
// page, of those pages alone that were opened.
#pragma once

#include <array>
#include <string>
#include <string_view>

#include "core/app_state.h"

namespace options {

enum Page { kGeneral, kDisplay, kEditing, kFind, kNames, kData };
inline constexpr int kPageCount = 6;
using OpenedPages = std::array<bool, kPageCount>;

// The screens whose font can be chosen. The month and the map each have two fonts, which take one
// choice.
inline constexpr std::array<std::u16string_view, 6> kFontTargets = {
    u"閲覧画面(1日)",  u"閲覧画面(1週)",    u"閲覧画面(1ヶ月)",
    u"閲覧画面(一覧)", u"閲覧画面(マップ)", u"レコーダー画面"};

struct FontValue {
  std::u16string name;  // empty: the system's
  int size = -1;        // below 0: the system's
};

// A field holds the setting of its name.
struct OptionValues {
  int StartupMode = 0;
  int ViewModeSave = 0;
  int InitView = 0;
  int OkBtnVwMode = 0;
  int ActTxtMode = 0;
  int ItmSelMode = 0;

  std::array<FontValue, kFontTargets.size()> fonts;
  int SeqViewRng = 0;
  int MonViewTapOpeMode = 0;
  int ViewAutoUpdate = 0;

  int TimeInitForNewMode = 0;
  int TimeInitForFollowMode = 0;
  std::u16string PlaceSepaStr;
  int NoMemPlaceSepaStr = 0;
  int EditOpeCont = 0;

  int DispListAfterFind = 0;

  std::u16string StaDtTmName, EndDtTmName, LatName, LonName, PlaceName, Cate1Name, Cate2Name,
      MemoName;

  std::u16string DataFile;
  int AutoBackup = 0;
};

OptionValues ReadValues(const core::CAppState& app);

// All but DataFile, which is no mere setting. InitView stays while the view is saved at the end;
// the page of names empties SbjctName, which no page edits.
void ApplyValues(const OptionValues& values, const OpenedPages& opened, core::CAppState& app);

}  // namespace options
