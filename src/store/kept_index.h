// The rows of the Action index in a file beside the data file, so that a start with many Actions
// needn't read them all: neither from the diary nor, before something asks for them, from here.
// It's worth nothing as soon as the data file has changed, by whatever program, and can be deleted
// at any time. In the form of this machine, for no other.
#pragma once

#include <memory>
#include <optional>
#include <string_view>

#include "core/number_list.h"
#include "core/text_list.h"
#include "store/engine.h"

namespace store {

// What stands at the same place in each belongs to one row of t_UserData.
struct IndexRows {
  core::TextList ids, starts, ends;
  core::NumberList rowIds;

  // Reads blocks that haven't been read yet, `most` of them at most; how many it read.
  size_t ReadAhead(size_t most) const;
};

// What a file gives of its blocks, which stays open until all of them have been read.
class KeptBlocks : public core::NumberSource {
 public:
  // One of them couldn't be read, or isn't what was kept: all of the rows are worth nothing.
  bool HasFailed() const { return hasFailed_; }

 protected:
  bool hasFailed_ = false;
};

struct KeptIndex {
  IndexRows rows;
  std::shared_ptr<const KeptBlocks> blocks;  // where they come from
};

// What was kept for the data file at `path` in that state, its blocks not yet read; none if there
// is none, or if what leads to the blocks isn't whole.
std::optional<KeptIndex> OpenKeptIndex(std::u16string_view path, const FileMark& mark);
// Replaces what was kept for the data file. A failure leaves nothing and harms nothing.
void KeepIndex(std::u16string_view path, const FileMark& mark, const IndexRows& rows);

}  // namespace store
