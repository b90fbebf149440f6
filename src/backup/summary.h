// What a data file holds, in a few words, and whether it's whole.
#pragma once

#include <optional>
#include <string>

#include "store/engine.h"

namespace backup {

struct Summary {
  int actions = 0;
  std::u16string firstDay, lastDay;  // yyyy/mm/dd of the starts; empty without Actions
  std::u16string formatVersion;
};

// Of an engine's file. None, with the trouble noted as far as it's known, if it's no data file of
// ours, or can't be read.
std::optional<Summary> ReadSummary(store::Engine& engine);

// The same after SQLite's own check of every page, which takes about as long as reading the file
// twice. Nothing but our tables runs: a file with views or triggers isn't ours.
std::optional<Summary> CheckWhole(store::Engine& engine);

// "12個のアクション", and on a line of its own "2010/06/23～2010/06/24", unless there are none.
std::u16string SummaryText(const Summary& summary);

}  // namespace backup
