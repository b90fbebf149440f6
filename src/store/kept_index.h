// The rows of the Action index in a file beside the data file, so that a start with many Actions
// needn't read them all: not from the diary, and from here only those that something asks for. It's
// worth nothing once any program has changed the data file, and can be deleted at any time. Its
// byte order is this machine's, and no other machine reads it.
#pragma once

#include <memory>
#include <optional>
#include <string_view>

#include "core/number_list.h"
#include "core/text_list.h"
#include "store/engine.h"

namespace store {

// What stands at the same place in each list belongs to one row of t_UserData.
struct IndexRows {
  core::TextList ids, starts, ends;
  core::NumberList rowIds;

  // Reads blocks that haven't been read yet, `most` of them at most; how many it read.
  size_t ReadAhead(size_t most) const;
};

// The file that unread blocks come from. It stays open until all of them have been read.
class KeptBlocks : public core::NumberSource {
 public:
  // A block couldn't be read or wasn't what had been kept: none of the rows can be relied upon.
  bool HasFailed() const { return hasFailed_; }

 protected:
  bool hasFailed_ = false;
};

struct KeptIndex {
  IndexRows rows;
  std::shared_ptr<const KeptBlocks> blocks;  // where the rows come from
};

// What was kept for the data file at `path` in the state of `mark`, with no block read yet. None if
// nothing was, or if what comes before the blocks is damaged.
std::optional<KeptIndex> OpenKeptIndex(std::u16string_view path, const FileMark& mark);
// Replaces what was kept for the data file. A failure leaves nothing and harms nothing.
void KeepIndex(std::u16string_view path, const FileMark& mark, const IndexRows& rows);

}  // namespace store
