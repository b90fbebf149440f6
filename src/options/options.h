// The options without their screen: the values of the open sheet, its data page, and what the main
// window does when the sheet has gone.
#pragma once

#include <string>
#include <string_view>

#include "core/app_state.h"
#include "inspection/inspection.h"
#include "options/option_values.h"

namespace options {

inline constexpr int kSheetCancelled = 0;
inline constexpr int kSheetApplied = 1;
inline constexpr int kNoDataFile = -1;  // none could be opened: the program is to close

class COptions {
 public:
  explicit COptions(core::CAppState& app);

  OptionValues values;
  bool DataFileChanged = false;  // by OnOk

  // A page comes on show for the first time or again.
  void OpenPage(int page) { opened_[static_cast<size_t>(page)] = true; }
  // Before OnOk: roots the path that the data page names. False, after a message that says why, if
  // it names no file that could be opened again at the next start.
  bool CheckDataFile();
  // Takes over the values of the opened pages, and the data file that the data page names, after
  // its questions. kSheetApplied or kNoDataFile.
  int OnOk();

  // The data page. Compaction answers false if no data file is open any more.
  bool OnBtnCompact();
  void OnBtnInspect(const inspection::Progress& progress) const;
  std::u16string FormatVersion() const;
  // Where the file dialog starts: the folder of the named data file, or the root.
  std::u16string DataFolder() const;

 private:
  bool RootDataFile();

  core::CAppState& app_;
  OpenedPages opened_{};
};

// Sets ListPage again if the page size is no longer `formerRange`: to the page of the selected
// Action, or the newest one.
void KeepListPage(core::CAppState& app, int formerRange);

// How many Actions there are: "%d", or "%d(%d)", those found and all, while a find is on.
std::u16string CountText(const core::CAppState& app);

}  // namespace options
