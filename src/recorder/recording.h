// What the recorder's commands do. One tap closes the running Action and opens the next; the chain
// of Actions stands in the application object and in the data file. This is the whole state of the
// recorder's screen, which only shows it. Interface thread.
#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "core/app_state.h"
#include "position/position_fields.h"
#include "recorder/recorder_state.h"
#include "recorder/recording_rows.h"
#include "store/action.h"
#include "store/hresult.h"
#include "store/undo_log.h"

namespace recorder {

// The history as the screen lists it. Line i belongs to entry i of the history.
struct HistoryLines {
  std::vector<std::u16string> texts;
  std::set<size_t> selected;
  std::optional<size_t> caret;

  void SelectOnly(size_t line) {
    selected = {line};
    caret = line;
  }
};

// Which editor is open in place of its field.
enum class InlineEditTarget { kNone = 0, kTime = 2, kPlace = 5, kCategory1 = 6, kCategory2 = 7 };

class CRecorder {
 public:
  explicit CRecorder(core::CAppState& app) : app_(app) {}

  RecorderFields fields;
  HistoryLines lines;
  bool canGoBack = false;     // the back button is enabled
  bool canStop = false;       // the stop button is enabled
  bool isRunning = false;     // what the stop button shows: it stops, or it reopens
  bool opensAtStart = false;  // the check on "起動時に開く"
  InlineEditTarget editor = InlineEditTarget::kNone;
  platform::WindowId window = 0;  // the screen's, for posted commands
  std::u16string editorText;      // what the open editor holds; the screen keeps it up to date

  // Sets the screen up: reads the lasting values if this data file's are not loaded yet, and fills
  // the list.
  void Open();
  // Before the screen ends: takes the open editor's value, captures the fields and stores the
  // start-up choice. False if that value was refused: the screen stays.
  bool Close();

  // recording.cpp
  void OnBtnRec();
  void RecStop();
  void OnBtnStop();

  // recording_chain.cpp
  void RecReopen();
  void OnBtnBack();
  void OnBtnClear();
  void FxBtnDelete();
  void SetActList();
  // Also when the screen has been laid out again.
  void SelectLastLine();
  // The selected Action is to be changed. True: SelActId and SelIndex name it, and the screen opens
  // it and calls AfterChange.
  bool OnListChange();
  void AfterChange();
  // A key was let go over the list: "LB RETURN" or "LB DELETE" and the selected line's position.
  void TellKey(std::u16string_view name) const;

  // recording_fields.cpp
  // Closes the open editor and takes its value. 0, or -1 if the value was refused: the field stays.
  int ValidateInlineEdit();
  // Closes the open editor and leaves its field as it was.
  void DropEditor() { editor = InlineEditTarget::kNone; }
  // Opens the editor of a field. False if one was open whose value was refused.
  bool OpenEditor(InlineEditTarget which);
  const std::u16string& FieldText(InlineEditTarget which) const;
  // What the editor or the picker of a field offers.
  std::vector<std::u16string> EditorRows(InlineEditTarget which) const;
  // Freezes the clock's time in the field; drops an open time editor.
  void OnBtnNow();
  // The row of EditorRows at which the open editor's list stands: its text's, of times the last one
  // that is not later than it; -1 for none.
  int EditorRow() const;
  // What a picker brought for a field: a text of the history, or a time or the mark.
  void TakeValue(InlineEditTarget which, std::u16string_view text);
  // The same for the time by its numbers.
  void TakeTime(int hour, int minute);
  // The time in the field; false if it holds the mark.
  bool FieldTime(int& hour, int& minute) const;
  // The position commands. OnPositionArrived leaves an open editor open.
  void AskPosition();
  void OnPositionArrived();
  void ShowPosition();
  void ClearPosition();
  void OpenMapLink();

 private:
  // How an operation ends early: with a message, unless that is empty.
  struct Ending {
    std::u16string text;
    std::u16string_view title;
    bool reloadsIndex = false;
  };
  static constexpr std::u16string_view kWriteFaultTitle = u"レコーダー書込みエラー";

  // recording.cpp
  bool Load();
  std::optional<Moment> TakeMoment() const;
  bool ReadRunning(const ReadSite& site, std::optional<store::Action>& running) const;
  std::optional<Ending> WriteRecording(const Moment& tap, std::optional<store::Action>& running);
  std::optional<Ending> WriteStop(const Moment& tap, std::optional<store::Action>& running);
  std::optional<Ending> StartChain();
  std::optional<Ending> CloseRunning(const Moment& tap, store::Action& running);
  std::optional<Ending> OpenNext(const Moment& tap);
  std::optional<Ending> AppendToHistory();
  void ShowRecording(const Moment& tap, const std::optional<store::Action>& closed);

  // recording_chain.cpp
  std::optional<Ending> WriteStepBack();
  std::optional<Ending> ReopenLast();
  std::optional<Ending> ForgetChain();
  std::optional<Ending> DeleteSelected();
  bool FillLines();
  bool CheckRunning();

  // recording_ending.cpp
  // Runs steps that write as one burst, which can be taken back as one step.
  std::optional<Ending> InBurst(store::StepKind kind, std::u16string_view title,
                                const std::function<std::optional<Ending>()>& steps);
  void EndWith(const Ending& ending);
  store::HRESULT WriteHistNum();
  std::optional<Ending> WritePreActId();
  static std::u16string CountFault(std::u16string_view code);
  static Ending KeyFault(std::u16string_view key, std::u16string_view code);
  void SetRunning(std::u16string_view id, const Moment& start);
  void ResetMoment();
  void ShowButtons(bool running);

  // recording_fields.cpp
  void ReadStartChoice();
  void StoreStartChoice();

  core::CAppState& app_;
  position::PositionFields positionFields_{fields.latitude, fields.longitude};
  int formerStartupMode_ = 0;  // what StartupMode goes back to when the check is taken off
};

}  // namespace recorder
