// Rooms of growing size, filled from the front.
#include "actiontext/text_arena.h"

#include <algorithm>

namespace actiontext {

bool TextArena::Spend(size_t characters) {
  if (characters > left_) return false;
  left_ -= characters;
  return true;
}

std::optional<std::u16string_view> TextArena::Keep(std::u16string_view text) {
  return Join({}, text);
}

std::optional<std::u16string_view> TextArena::Join(std::u16string_view left,
                                                   std::u16string_view right) {
  if (right.empty()) return left;
  const bool lengthens =
      !left.empty() && left.data() == latest_.data() && left.size() == latest_.size();
  const bool moves = !lengthens || room_ < right.size();
  if (!Spend(moves ? left.size() + right.size() : right.size())) return std::nullopt;
  if (moves) {
    MakeRoom(left.size() + right.size());
    latest_ = {top_, left.size()};
    top_ = std::copy(left.begin(), left.end(), top_);
    room_ -= left.size();
  }
  top_ = std::copy(right.begin(), right.end(), top_);
  room_ -= right.size();
  latest_ = {latest_.data(), left.size() + right.size()};
  return latest_;
}

// Room for `length` characters after top_. A new room doubles what there is, and has as much again
// to spare for what may be added to the text.
void TextArena::MakeRoom(size_t length) {
  if (length <= room_) return;
  const size_t capacity = std::min(std::max(2 * length, made_), kMaxTextWork);
  rooms_.push_back(std::make_unique_for_overwrite<char16_t[]>(capacity));
  top_ = rooms_.back().get();
  room_ = capacity;
  made_ += capacity;
}

}  // namespace actiontext
