// The state of the screen of totals, and what each of its commands does. The screen beside it only
// shows this. Interface thread.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "core/app_state.h"
#include "filedialog/file_select.h"
#include "totals/columns.h"
#include "totals/figures.h"
#include "totals/read_period.h"

namespace totals {

// A bar: a group or, indented, an inner group.
struct Bar {
  const Group* group;
  std::u16string name;
  size_t slot = 0;  // of its colour, columns.greatest.size() for that of the others
};

class CTotals {
 public:
  // Begins where the view on show stands. `choices` is kept up to date for the next time.
  CTotals(core::CAppState& app, Choices& choices);

  // What the screen shows.
  const Period& ShownPeriod() const { return period_; }
  const Choices& ShownChoices() const { return choices_; }
  const Totals& Sums() const { return sums_; }
  const Columns& Stacked() const { return columns_; }
  const std::vector<Bar>& Bars() const { return bars_; }
  std::u16string Title() const;
  Summary Summarized() const;
  // Kinds of periods to choose from: that of a find only if there was one.
  std::vector<PeriodKind> Kinds() const;
  // The levels that can be chosen, the inner ones without the outer.
  std::vector<By> Levels() const;
  std::vector<By> InnerLevels() const;
  // The picture of columns says more than the bars.
  bool HasColumns() const { return columns_.times.size() > 1 && columns_.highest > 0; }
  // The position of the opened group among the bars, or -1; its Actions by start.
  int OpenBar() const { return openBar_; }
  int ActionCount() const { return static_cast<int>(open_.size()); }
  // "11/20 09:00-10:00 会社 昼までに", without what the group's name says; "●" where it runs. Empty
  // beyond the last one.
  std::u16string ActionText(int action) const;
  // Where the one stands that was handed to the edit screen, or -1 if it has left the group.
  int SelectedAction() const;

  void ChooseKind(PeriodKind kind);
  void Step(int steps);
  void BigStep(int steps);
  void GoToToday();
  // Of the period on show, or of from-to one of its ends.
  void GoToDay(const core::Day& day);
  void SetFirst(const core::Day& day);
  void SetLast(const core::Day& day);
  void ChooseLevel(By by);
  void ChooseInnerLevel(By within);
  void SetMovementsApart(bool apart);
  // Opens a bar's list of Actions, or closes it if it's open.
  void TapBar(int bar);
  // Moves the period to a column. Within a find it stays with what was found.
  void TapColumn(int column);
  // Closes the list, or goes back to where the column was tapped; false if there is neither.
  bool GoBack();
  // Hands an Action to the edit screen; false, after a message, if it's gone.
  bool SelectAction(int action);
  // After a change of the diary. An opened group stays open if it's still there.
  void ReadAgain();

  std::u16string ClipboardText() const;
  filedialog::FileSelectParams AskForCsv() const;
  // Asks before it replaces a file, and reports how it ended.
  void WriteCsv(std::u16string_view path) const;

 private:
  bool IsNarrowed() const;
  const Row& RowAt(int action) const;
  void Show(const Period& period);
  void SumAgain();
  void MakeBars();
  std::optional<Key> OpenKey() const;
  bool IsOpenName(By by, int name) const;
  void OpenGroup(const std::optional<Key>& key);
  Table MakeTable() const { return totals::MakeTable(app_, rows_, choices_, sums_); }

  core::CAppState& app_;
  Choices& choices_;
  const std::u16string find_;  // its condition, which outlives the find itself
  Rows rows_;
  Period period_;
  std::vector<Period> former_;  // where columns were tapped, since a kind was chosen
  Totals sums_;
  Columns columns_;
  std::vector<Bar> bars_;
  int openBar_ = -1;
  std::vector<int> open_;    // rows of the opened group
  int64_t selectedRow_ = 0;  // in the data file
};

}  // namespace totals
