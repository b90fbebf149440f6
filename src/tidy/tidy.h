// The tidy screen's state: the day on show as a chain, and its commands, each one commit and one
// step that can be taken back. The screen shows it and asks again after every call. Interface
// thread only.
#pragma once

#include <string>
#include <string_view>

#include "core/app_state.h"
#include "recorder/chain_turn.h"
#include "tidy/commands.h"

namespace tidy {

class TidyDay {
 public:
  // Of the current date.
  explicit TidyDay(core::CAppState& app) : app_(app) {}

  const DayChain& Chain() const { return chain_; }
  bool changed = false;  // something has been written

  // Reads the day again. False, after a message, if that failed.
  bool Read();
  // Tells why not, or writes; then reads the day again. False if nothing was written. `title` is
  // what the step is called: "分割".
  bool Run(const Outcome& outcome, std::u16string_view title);
  // Asks first.
  bool Delete(size_t span);
  // Asks first where place or category differ.
  bool JoinWithNext(size_t span);

  // The moment of a time of this day, which may be 24:00.
  static int64_t MomentOf(int hour, int minute) { return (hour * 60 + minute) * int64_t{60}; }
  // "hh:mm" of a moment within the day.
  static std::u16string TimeText(int64_t moment);
  // A link as the list shows it: "09:00-10:30", with an arrow where it goes on beyond the day; and
  // what stands there.
  std::u16string TimesOf(const Link& link) const;
  std::u16string TextOf(const Link& link) const;

 private:
  bool WriteAll(const Outcome& outcome, std::u16string_view title);
  bool WriteRows(const Outcome& outcome, recorder::ChainTurn& chain);
  std::u16string Running() const;

  core::CAppState& app_;
  DayChain chain_;
};

}  // namespace tidy
