// A look through the whole open data file: what SQLite says of it, and what only this program
// knows of its rows. It changes nothing. Interface thread.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "core/app_state.h"

namespace inspection {

// Called between two rows; `total` is the number of Actions.
using Progress = std::function<void(int done, int total)>;

struct Report {
  int actions = 0;                       // that were read
  std::vector<std::u16string> problems;  // a line each, for the user
  std::vector<std::u16string> remedies;  // what can be done about them, each once

  bool IsGood() const { return problems.empty(); }
};

// Takes about as long as reading the file three times. A data file must be open, `app`'s.
Report Inspect(core::CAppState& app, const Progress& progress = {});

// Inspects, and says what came of it.
void OnBtnInspect(core::CAppState& app, const Progress& progress = {});

}  // namespace inspection
