// Opening the screen, the commands that turn it into a new Action in place, the toggles, the end.
#include "edit/edit_action.h"

#include <algorithm>
#include <utility>

#include "actiontext/action_text.h"
#include "core/date_time.h"
#include "core/settings_choices.h"
#include "edit/initial_times.h"
#include "platform/host.h"
#include "store/action_index.h"

namespace edit {

struct CEditAction::Command {
  int id;
  void (CEditAction::*run)();
};

constexpr CEditAction::Command CEditAction::kCommands[] = {
    {kIdWrite, &CEditAction::OnBtnWrite},
    {kIdKeyWrite, &CEditAction::OnBtnWrite},
    {kIdClose, &CEditAction::OnBtnClose},
    {kIdMenuClose, &CEditAction::FxFileClose},
    {kIdExit, &CEditAction::FxFileExit},
    {kIdMenuExit, &CEditAction::FxFileExit},
    {kIdStartNow, &CEditAction::OnBtnStartNow},
    {kIdEndNow, &CEditAction::OnBtnEndNow},
    {kIdPrevious, &CEditAction::OnBtnPrev},
    {kIdNext, &CEditAction::OnBtnNext},
    {kIdMenuNew, &CEditAction::FxEditNew},
    {kIdToolNew, &CEditAction::FxEditNew},
    {kIdMenuReference, &CEditAction::FxEditReference},
    {kIdToolReference, &CEditAction::FxEditReference},
    {kIdMenuFollow, &CEditAction::FxEditFollow},
    {kIdToolFollow, &CEditAction::FxEditFollow},
    {kIdMenuDelete, &CEditAction::FxEditDelete},
    {kIdToolDelete, &CEditAction::FxEditDelete},
    {kIdAskPosition, &CEditAction::AskPosition},
    {kIdLatitude, &CEditAction::AskPosition},
    {kIdLongitude, &CEditAction::AskPosition},
    {kIdShowPosition, &CEditAction::ShowPosition},
    {kIdClearPosition, &CEditAction::ClearPosition},
    {kIdPositionArrived, &CEditAction::OnPositionArrived},
    {kIdMapLink, &CEditAction::OpenMapLink},
    {kIdMenuContinue, &CEditAction::ToggleEditOpeCont},
    {kIdToolContinue, &CEditAction::ToggleEditOpeCont},
    {kIdMenuAtStart, &CEditAction::ToggleAtStart},
    {kIdToolAtStart, &CEditAction::ToggleAtStart},
};

const std::u16string& CEditAction::ShownMemo() const {
  return app_.ActTxtMode == core::kActionTextOff ? fields.memo : expansion_;
}

std::u16string_view CEditAction::Title() const {
  return workingMode == WorkingMode::kCreate ? u"新規作成" : u"変更";
}

std::u16string_view CEditAction::WriteText() const {
  return workingMode == WorkingMode::kCreate ? u"作成" : u"変更";
}

bool CEditAction::IsEnabled(int commandId) const {
  switch (commandId) {
    case kIdPrevious:
      return app_.IndexCount > 0 && app_.SelIndex > 0;
    case kIdNext:
      return app_.IndexCount > 0 && app_.SelIndex <= app_.IndexCount - 1;
    case kIdEndTime:
      return !fields.times.AllDay();
    case kIdToolDelete:
    case kIdMenuDelete:
    case kIdToolReference:
    case kIdMenuReference:
      return workingMode == WorkingMode::kChange;
    default:
      return true;
  }
}

bool CEditAction::IsChecked(int commandId) const {
  if (commandId == kIdToolContinue || commandId == kIdMenuContinue)
    return app_.EditOpeCont == core::kOn;
  return app_.StartupMode == core::kStartNewAction;
}

bool CEditAction::Open(OpenMode openMode, const std::optional<position::Position>& position) {
  formerStartupMode_ =
      app_.StartupMode == core::kStartNewAction ? core::kStartBrowsing : app_.StartupMode;
  if (openMode == kOpenNew) {
    const platform::LocalTime now = platform::host().Now();
    StartNew(app_.CurView == core::kViewList ? core::DateOf(now)
                                             : ExistingDate(core::CurrentDay(), now));
    if (timesOfNew) StartBlank(*timesOfNew);
    if (position) PutAt(*position);
  } else if (!OpenSelected(openMode)) {
    return false;
  }
  RunActionText();
  return true;
}

void CEditAction::OnCommand(int commandId) {
  const Editor closed = editor;
  // A position arrives once: it is offered also where an open editor's text was refused.
  const bool goesOn = ApplyEditor() || commandId == kIdPositionArrived;
  if (!goesOn || !IsEnabled(commandId)) return;
  if (commandId == kIdMemoInput) {
    SwitchMemoInput(closed);
  } else if (const Editor which = EditorOf(commandId); which != Editor::kNone) {
    if (which != closed) OpenEditor(which);
  } else {
    for (const Command& command : kCommands) {
      if (command.id == commandId) (this->*command.run)();
    }
    if (!ended && BuildAction() != expanded_) RunActionText();
  }
}

bool CEditAction::OnWindowClosing() {
  OnCommand(kIdExit);
  closeProgram = false;  // the window goes as it is
  return ended.has_value();
}

void CEditAction::StartNew(std::u16string_view date) {
  StartBlank(TimesOfNew(date, app_.TimeInitForNewMode, platform::host().Now()));
}

void CEditAction::StartReference() {
  loaded_[store::kActId].reset();
  loaded_[store::kLastUpdate].reset();
  workingMode = WorkingMode::kCreate;
  app_.SelIndex = app_.IndexCount;
}

void CEditAction::StartFollow() {
  StartBlank(TimesOfFollow(fields.times, app_.TimeInitForFollowMode, platform::host().Now()));
}

void CEditAction::StartBlank(const StartEnd& times) {
  fields = Fields();
  fields.times = times;
  latitude_ = longitude_ = {};
  loaded_ = {};
  workingMode = WorkingMode::kCreate;
  app_.SelIndex = app_.IndexCount;
}

void CEditAction::FxEditNew() {
  if (!AskSave()) return;
  StartNew(ExistingDate(core::CurrentDay(), platform::host().Now()));
}

void CEditAction::FxEditReference() {
  if (AskSave()) StartReference();
}

void CEditAction::FxEditFollow() {
  if (AskSave()) StartFollow();
}

// Kept on purpose: the menu always reports a change, the button only one that was made.
void CEditAction::FxFileClose() {
  if (AskSave()) End(kEndChanged);
}

void CEditAction::FxFileExit() {
  if (!AskSave()) return;
  closeProgram = true;
  End(kEndChanged);
}

void CEditAction::OnBtnClose() {
  if (AskSaveBriefly()) End(changed_ ? kEndChanged : kEndUnchanged);
}

void CEditAction::OnBtnStartNow() {
  StartEnd times = fields.times;
  SetStartToNow(times, platform::host().Now());
  ChangeTimes(times);
}

void CEditAction::OnBtnEndNow() {
  StartEnd times = fields.times;
  SetEndToNow(times, platform::host().Now());
  ChangeTimes(times);
}

void CEditAction::ToggleEditOpeCont() {
  app_.EditOpeCont = app_.EditOpeCont == core::kOn ? core::kOff : core::kOn;
}

// Cleared, the program starts as it did when this screen opened; with the browsing screen if it
// opened here even then.
void CEditAction::ToggleAtStart() {
  app_.StartupMode =
      app_.StartupMode == core::kStartNewAction ? formerStartupMode_ : core::kStartNewAction;
}

std::u16string CEditAction::ExtItems() const {
  return loaded_[store::kExtItems].value_or(u"");
}

void CEditAction::TakeExtItems(std::u16string_view text) {
  loaded_[store::kExtItems] = text;
  dirty = true;
  RunActionText();
}

// A template may look at every field: it runs after whatever may have changed one, and after
// nothing else, for what it draws by chance or takes from the clock would change before its user's
// eyes.
void CEditAction::RunActionText() {
  if (app_.ActTxtMode == core::kActionTextOff) return;
  expanded_ = BuildAction();
  expansion_ = actiontext::ParseActionText(expanded_);
}

// A list view below this screen goes to the page of the selected date, unless nothing has moved.
void CEditAction::End(int result) {
  if (changed_) {
    app_.ListPage = std::max(0, store::FindActionIndexByPosition(app_, core::CurDate(),
                                                                 core::kEndOfDay, app_.SeqViewRng));
  }
  ended = result;
}

}  // namespace edit
