// Ids, starts and ends of all Actions in the order of their starts, equal starts in the order of
// their insertion: what the Action index is rebuilt from, and what tells which Actions touch a day.
// It lives as long as its connection and reads again only the rows that have changed meanwhile,
// whoever changed them. 32 bytes an Action. Interface thread only.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "core/text_list.h"
#include "store/engine.h"
#include "store/kept_index.h"

namespace store {

class SortedStarts {
 public:
  // The engine is not owned.
  explicit SortedStarts(Engine& engine);

  // Brings the lists to what the file holds now. 0, -3 if a select failed, -101 if a row could not
  // be read; the lists then hold what was read.
  int Refresh();
  // What was kept from the last session is read as it's asked for. Reads some more of it, 64 blocks
  // at most, so that nothing is left to go wrong later; whether anything is.
  bool ReadAhead();
  // Some of that was damaged: what stands there instead is worth nothing, in copies of the lists
  // too.
  bool IsDamaged() const { return kept_ && kept_->HasFailed(); }
  // Refreshes the lists and, if they are damaged, reads all rows from the file.
  int Mend();
  // Before the engine closes its file: keeps the rows for the next start, where they are many. The
  // engine is good for closing only.
  void Keep();

  // Entry i of one belongs to entry i of the other.
  const core::TextList& Ids() const { return rows_.ids; }
  const core::TextList& Starts() const { return rows_.starts; }
  const core::TextList& Ends() const { return rows_.ends; }
  const core::NumberList& RowIds() const { return rows_.rowIds; }

  // The places, in their order, of all Actions that start before `to` and end at `from` or later,
  // each "yyyy/mm/dd" or "yyyy/mm/dd hh:mm:ss". Those among them whose end is no such text may do
  // neither.
  std::vector<size_t> Touching(std::u16string_view from, std::u16string_view to) const;

 private:
  using Texts = std::array<std::optional<std::u16string>, 3>;
  struct Row {
    std::u16string_view id, start, end;
  };

  int ReadKeptOrAll();
  int ReadAll();
  int ReadAgain(int64_t rowId);
  int ReadRow(int64_t rowId, Texts& texts, bool& isThere);
  void Insert(int64_t rowId, const Row& row);
  void Remove(size_t place);
  size_t PlaceFor(int64_t rowId, std::u16string_view start) const;

  Engine& engine_;
  bool isWhole_ = false;  // the last refresh succeeded
  IndexRows rows_;
  std::optional<FileMark> mark_;            // of the state that they were read from, all at once
  std::shared_ptr<const KeptBlocks> kept_;  // where they come from, until all have been read
  bool isKept_ = false;                     // what is kept is these rows
};

}  // namespace store
