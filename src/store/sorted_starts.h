// Ids and starts of all Actions in the order of their starts, equal starts in the order of their
// insertion: what the Action index is rebuilt from. It lives as long as its connection and reads
// again only the rows that have changed meanwhile, whoever changed them. Interface thread only.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "core/text_list.h"
#include "store/engine.h"

namespace store {

class SortedStarts {
 public:
  // The engine is not owned.
  explicit SortedStarts(Engine& engine);

  // Brings the lists to what the file holds now. 0, -3 if a select failed, -101 if a row could not
  // be read; the lists then hold what was read.
  int Refresh();

  // Entry i of one belongs to entry i of the other.
  const core::TextList& Ids() const { return ids_; }
  const core::TextList& Starts() const { return starts_; }

 private:
  struct Row {
    std::u16string id, start;
  };

  int ReadAll();
  void SortAll();
  int ReadAgain(int64_t rowId);
  int ReadRow(int64_t rowId, std::optional<Row>& row);
  void Insert(int64_t rowId, const Row& row);

  Engine& engine_;
  bool isWhole_ = false;  // the last refresh succeeded
  core::TextList ids_, starts_;
  std::vector<int64_t> rowIds_;
};

}  // namespace store
