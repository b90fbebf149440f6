// The screen on which one Action is created, changed, copied, followed or deleted: its whole state,
// and what each of its commands does. The screen beside it only shows this state. Interface thread.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "core/app_state.h"
#include "edit/position_text.h"
#include "edit/start_end.h"
#include "position/position_fields.h"
#include "store/action.h"

namespace edit {

// How a caller asks for the screen. All but kOpenNew take the Action at app.SelIndex, or that of
// app.SelActId where SelIndex is no position.
enum OpenMode { kOpenNew = 1, kOpenChange = 2, kOpenReference = 4, kOpenFollow = 5 };

enum class WorkingMode { kCreate = 1, kChange = 2 };

// The editor that is open, in place or on a screen of its own.
enum class Editor {
  kNone,
  kStartDate,
  kStartTime,
  kEndDate,
  kEndTime,
  kPlace,
  kCategory1,
  kCategory2,
  kMemoList,
  kMemoEdit
};

enum class MemoInput { kList = 1, kEdit = 2 };

// What the columns hold, in 16-bit units. A longer text is cut as its editor closes, so that its
// field shows what will be stored.
inline constexpr size_t kLongestText = 500;
inline constexpr size_t kLongestMemo = 2000;

// Result codes of the screen.
inline constexpr int kEndChanged = 1;  // the main window's views have to be filled again
inline constexpr int kEndUnchanged = 2;

// Ids of the controls and commands.
enum CommandId {
  kIdClose = 2,
  kIdWrite = 1102,
  kIdExit = 1103,
  kIdStartDate = 1105,
  kIdStartTime = 1106,
  kIdStartNow = 1107,
  kIdEndDate = 1109,
  kIdEndTime = 1110,
  kIdEndNow = 1111,
  kIdPlace = 1113,
  kIdCategory1 = 1115,
  kIdCategory2 = 1117,
  kIdMemo = 1119,
  kIdMemoInput = 1120,
  kIdPrevious = 1121,
  kIdNext = 1122,
  kIdLatitude = 1128,
  kIdLongitude = 1130,
  kIdToolNew = 5006,
  kIdToolDelete = 5007,
  kIdToolFollow = 5008,
  kIdToolReference = 5009,
  kIdToolContinue = 5010,
  kIdToolAtStart = 5011,
  kIdMenuNew = 32781,
  kIdMenuReference = 32783,
  kIdMenuFollow = 32784,
  kIdMenuDelete = 32785,
  kIdMenuExtItems = 32805,
  kIdMenuClose = 32900,
  kIdMenuContinue = 32954,
  kIdMenuAtStart = 32955,
  kIdAskPosition = 33100,
  kIdShowPosition = 33101,
  kIdClearPosition = 33102,
  kIdPositionArrived = position::kPositionArrived,  // posted by the GPS thread
  kIdMapLink = 33104,
  kIdKeyWrite = 40002,
  kIdMenuExit = 40102
};

class CEditAction {
 public:
  explicit CEditAction(core::CAppState& app) : app_(app) {}

  // The state that the screen shows.
  struct Fields {
    StartEnd times;
    std::u16string latitude;  // degrees/minutes/seconds, or empty
    std::u16string longitude;
    std::u16string place;
    std::u16string category1;
    std::u16string category2;
    std::u16string memo;  // as it is stored: with the action text on, the template
  };
  Fields fields;
  WorkingMode workingMode = WorkingMode::kCreate;
  MemoInput memoInput = MemoInput::kList;
  Editor editor = Editor::kNone;
  // What the open editor holds: a date for a calendar, the typed text for the others. The screen
  // keeps it up to date while its user types.
  std::u16string editorText;
  platform::WindowId window = 0;  // the screen's, for posted commands
  bool dirty = false;
  std::optional<int> ended;   // the result code, once the screen is to end
  bool closeProgram = false;  // and the main window is to be closed after it
  bool added = false;         // a row was written that was not there before
  // When a new Action begins and ends, in place of what the options say. Set before Open.
  std::optional<StartEnd> timesOfNew;

  // The memo as it is shown: with the action text on, what its template gives over the fields.
  const std::u16string& ShownMemo() const;
  std::u16string_view Title() const;
  std::u16string_view WriteText() const;  // of the write button and the soft key
  bool IsEnabled(int commandId) const;
  bool IsChecked(int commandId) const;  // of the two toggles
  // The open editor is a picker that covers the screen and not one in place: a time or a value
  // where ItmSelMode says so. And that screen's title.
  bool PicksOnOwnScreen() const;
  std::u16string PickerTitle() const;
  // What the list of the open editor offers, and the row it opens at (-1: none).
  std::vector<std::u16string> EditorRows() const;
  int EditorRow() const;
  // The most that its line takes.
  size_t LongestEditorText() const;

  // Fills the state. A new Action begins with `position`, if there is one. False, after a message,
  // if the Action can't be read: there is nothing to show.
  bool Open(OpenMode openMode, const std::optional<position::Position>& position = {});

  // Runs a command of a control, the tool bar or the menu. An open editor is applied first; the
  // command is abandoned if that fails.
  void OnCommand(int commandId);
  // The extended items in their text form, and what their editor made of it.
  std::u16string ExtItems() const;
  void TakeExtItems(std::u16string_view text);
  // The window is closed by its frame: as the exit command. True if the screen has ended.
  bool OnWindowClosing();

  // The user is done with the open editor: its text is taken, except that the top row of the memo
  // list opens the multi-line edit. False if the text was refused; the editor is closed all the
  // same.
  bool ChooseEditor();
  // Closes the open editor as every command does: its text is taken. False if it was refused.
  bool ApplyEditor();
  // Closes the open editor and leaves the field as it was.
  void DropEditor();

 private:
  struct Command;
  struct ReadSite;
  static const Command kCommands[];

  // edit_action.cpp
  void StartNew(std::u16string_view date);
  void StartReference();
  void StartFollow();
  void StartBlank(const StartEnd& times);
  void FxEditNew();
  void FxEditReference();
  void FxEditFollow();
  void FxFileClose();
  void FxFileExit();
  void OnBtnClose();
  void OnBtnStartNow();
  void OnBtnEndNow();
  void ToggleEditOpeCont();
  void ToggleAtStart();
  void RunActionText();
  void End(int result);

  // edit_position.cpp
  void AskPosition();
  void OnPositionArrived();
  void ShowPosition();
  void ClearPosition();
  void OpenMapLink();
  void PutAt(const position::Position& position);
  void PutPosition(const PositionText& latitude, const PositionText& longitude);

  // edit_fields.cpp
  Editor EditorOf(int controlId) const;
  void OpenEditor(Editor which);
  bool ReadTime(Editor which, StartEnd& times) const;
  void ApplyValue(Editor which);
  void ApplyMemo(Editor which);
  void SwitchMemoInput(Editor closed);
  void ChangeField(std::u16string& field, std::u16string_view text, size_t longest);
  void ChangeTimes(const StartEnd& times);

  // edit_write.cpp
  void OnBtnWrite();
  bool Write();
  bool WriteRow(store::Action& action);
  store::Action BuildAction() const;
  bool AskSave();
  bool AskSaveBriefly();
  bool SettleChanges(std::u16string_view question, std::u16string_view title);
  void SelectDate(std::u16string_view date);

  // edit_walk.cpp
  bool OpenSelected(OpenMode openMode);
  void OnBtnPrev();
  void OnBtnNext();
  void WalkTo(int index, const ReadSite& site);
  void FxEditDelete();
  bool DeleteRow();
  int PositionBehindDelete(const std::optional<std::u16string>& neighbour) const;
  bool ReadAction(std::u16string_view id, const ReadSite& site, store::Action& action) const;
  void TakeAction(const store::Action& action);
  void ShowAt(int index, const store::Action& action);
  std::u16string IdAt(int index) const;

  core::CAppState& app_;
  // The row that the fields came from: its id, Subject and extended items are kept. In working mode
  // 1 without id and last update.
  store::Action loaded_;
  std::u16string loadedDate_;          // its start date
  PositionText latitude_, longitude_;  // as the fields were last given a position
  // With the action text on: what the memo was last expanded over, and its expansion.
  store::Action expanded_;
  std::u16string expansion_;
  int formerStartupMode_ = 0;  // what StartupMode goes back to when the toggle is cleared
  position::PositionFields positionFields_{fields.latitude, fields.longitude};
  bool changed_ = false;  // a row was written or deleted, or the selected date moved
};

}  // namespace edit
