// The texts that a run of the action text makes. A text stays where it is until the run ends, so
// that values, variables and substrings are views and copying one costs nothing.
#pragma once

#include <cstddef>
#include <memory>
#include <optional>
#include <string_view>
#include <vector>

namespace actiontext {

// A text that doubles itself statement by statement would eat up any memory, and whatever then
// reads it any time: of its texts a run reads and copies no more than so many characters, a few
// milliseconds' work.
inline constexpr size_t kMaxTextWork = size_t{1} << 20;

class TextArena {
 public:
  TextArena() = default;
  TextArena(const TextArena&) = delete;
  TextArena& operator=(const TextArena&) = delete;

  // To be asked before so many characters are read or copied elsewhere. False if the run may not;
  // then nothing is counted.
  bool Spend(size_t characters);

  // A copy of `text`, or nothing if the run may not make it.
  std::optional<std::u16string_view> Keep(std::u16string_view text);

  // `left`, which must outlive the run, followed by a copy of `right`; or nothing if the run may
  // not make it. The latest text is lengthened in place, so that a sum of many pieces takes linear
  // time.
  std::optional<std::u16string_view> Join(std::u16string_view left, std::u16string_view right);

 private:
  static constexpr size_t kFirstRoom = 256;

  void MakeRoom(size_t length);

  char16_t firstRoom_[kFirstRoom];
  char16_t* top_ = firstRoom_;
  size_t room_ = kFirstRoom;  // characters left after top_
  size_t made_ = kFirstRoom;  // characters in all rooms
  size_t left_ = kMaxTextWork;
  std::u16string_view latest_;
  std::vector<std::unique_ptr<char16_t[]>> rooms_;
};

}  // namespace actiontext
