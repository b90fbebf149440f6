// The rows of the Action index in a file beside the data file, so that a start with many Actions
// needn't read them all. It's worth nothing as soon as the data file has changed, by whatever
// program, and can be deleted at any time. In the form of this machine, for no other.
#pragma once

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
};

// The rows that were kept for the data file at `path` in that state; none if there are none, or if
// they aren't whole.
std::optional<IndexRows> ReadKeptIndex(std::u16string_view path, const FileMark& mark);
// Replaces what was kept for the data file. A failure leaves nothing and harms nothing.
void KeepIndex(std::u16string_view path, const FileMark& mark, const IndexRows& rows);

}  // namespace store
