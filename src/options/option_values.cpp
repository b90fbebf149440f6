#include "options/option_values.h"

#include "core/settings_choices.h"

namespace options {
namespace {

using core::CAppState;
using Text = std::u16string;

template <typename Value>
struct Setting {
  Page page;
  Value OptionValues::*value;
  Value CAppState::*setting;
};

constexpr Setting<int> kNumbers[] = {
    {kGeneral, &OptionValues::StartupMode, &CAppState::StartupMode},
    {kGeneral, &OptionValues::ViewModeSave, &CAppState::ViewModeSave},
    {kGeneral, &OptionValues::OkBtnVwMode, &CAppState::OkBtnVwMode},
    {kGeneral, &OptionValues::ActTxtMode, &CAppState::ActTxtMode},
    {kGeneral, &OptionValues::ItmSelMode, &CAppState::ItmSelMode},
    {kDisplay, &OptionValues::SeqViewRng, &CAppState::SeqViewRng},
    {kDisplay, &OptionValues::MonViewTapOpeMode, &CAppState::MonViewTapOpeMode},
    {kDisplay, &OptionValues::ViewAutoUpdate, &CAppState::ViewAutoUpdate},
    {kEditing, &OptionValues::TimeInitForNewMode, &CAppState::TimeInitForNewMode},
    {kEditing, &OptionValues::TimeInitForFollowMode, &CAppState::TimeInitForFollowMode},
    {kEditing, &OptionValues::NoMemPlaceSepaStr, &CAppState::NoMemPlaceSepaStr},
    {kEditing, &OptionValues::EditOpeCont, &CAppState::EditOpeCont},
    {kFind, &OptionValues::DispListAfterFind, &CAppState::DispListAfterFind},
    {kData, &OptionValues::AutoBackup, &CAppState::AutoBackup},
};

constexpr Setting<Text> kTexts[] = {
    {kEditing, &OptionValues::PlaceSepaStr, &CAppState::PlaceSepaStr},
    {kNames, &OptionValues::StaDtTmName, &CAppState::StaDtTmName},
    {kNames, &OptionValues::EndDtTmName, &CAppState::EndDtTmName},
    {kNames, &OptionValues::LatName, &CAppState::LatName},
    {kNames, &OptionValues::LonName, &CAppState::LonName},
    {kNames, &OptionValues::PlaceName, &CAppState::PlaceName},
    {kNames, &OptionValues::Cate1Name, &CAppState::Cate1Name},
    {kNames, &OptionValues::Cate2Name, &CAppState::Cate2Name},
    {kNames, &OptionValues::MemoName, &CAppState::MemoName},
};

struct FontSetting {
  size_t target;
  Text CAppState::*name;
  int CAppState::*size;
};

// A target with two fonts is read from its grid, which stands last.
constexpr FontSetting kFonts[] = {
    {0, &CAppState::DayVwGrdFntName, &CAppState::DayVwGrdFntSize},
    {1, &CAppState::WekVwGrdFntName, &CAppState::WekVwGrdFntSize},
    {2, &CAppState::MthVwLstFntName, &CAppState::MthVwLstFntSize},
    {2, &CAppState::MthVwGrdFntName, &CAppState::MthVwGrdFntSize},
    {3, &CAppState::LstVwGrdFntName, &CAppState::LstVwGrdFntSize},
    {4, &CAppState::MapVwLstFntName, &CAppState::MapVwLstFntSize},
    {4, &CAppState::MapVwGrdFntName, &CAppState::MapVwGrdFntSize},
    {5, &CAppState::RcdrFntName, &CAppState::RcdrFntSize},
};

}  // namespace

OptionValues ReadValues(const CAppState& app) {
  OptionValues values;
  for (const auto& number : kNumbers) values.*number.value = app.*number.setting;
  for (const auto& text : kTexts) values.*text.value = app.*text.setting;
  for (const FontSetting& font : kFonts) {
    values.fonts[font.target] = {app.*font.name, app.*font.size};
  }
  values.InitView = app.InitView;
  values.DataFile = app.DataFile;
  return values;
}

void ApplyValues(const OptionValues& values, const OpenedPages& opened, CAppState& app) {
  for (const auto& number : kNumbers) {
    if (opened[number.page]) app.*number.setting = values.*number.value;
  }
  for (const auto& text : kTexts) {
    if (opened[text.page]) app.*text.setting = values.*text.value;
  }
  for (const FontSetting& font : kFonts) {
    if (!opened[kDisplay]) break;
    app.*font.name = values.fonts[font.target].name;
    app.*font.size = values.fonts[font.target].size;
  }
  if (opened[kGeneral] && values.ViewModeSave == core::kOff) app.InitView = values.InitView;
  if (opened[kNames]) app.SbjctName.clear();
}

}  // namespace options
