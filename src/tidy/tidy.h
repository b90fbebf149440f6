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

// In the order of the menu of a link.
enum class Command {
  kMoveStart,
  kMoveEnd,
  kSplit,
  kJoin,
  kExtendBefore,
  kAdvanceAfter,
  kTrimBefore,
  kDelayAfter,
  kSplitOuter,
  kNew,  // these two open the edit screen
  kChange,
  kDelete
};

// As a menu shows it.
std::u16string_view TextOf(Command command);
// The first three take a time.
inline bool TakesTime(Command command) {
  return command <= Command::kSplit;
}
// What that time is, short enough for a title. Only of one that takes a time.
std::u16string_view TimeNameOf(Command command);

class TidyDay {
 public:
  // Of the current date.
  explicit TidyDay(core::CAppState& app) : app_(app) {}

  const DayChain& Chain() const { return chain_; }

  // Reads the day again. False, after a message, if that failed.
  bool Read();
  std::vector<Command> CommandsOf(const Link& link) const;
  // Why there is none for an overlap.
  void TellWhyNone(const Link& overlap) const;
  // The time from which the choice of one starts.
  static int64_t TimeFor(Command command, const Link& link);
  // Runs a command that opens no screen, after a question where it deletes, or joins what differs.
  // False if nothing was written.
  bool Run(Command command, const Link& link, int64_t at = 0);
  // Says why not, or writes; then selects what it wrote and reads the day again. False if nothing
  // was written. `title` is what the step is called: "分割".
  bool Run(const Outcome& outcome, std::u16string_view title);
  // For the edit screen: the first and the last moment of a gap, as stored; and the Action of a
  // link.
  std::u16string MomentOf(int64_t moment) const { return MomentText(moment, chain_.day); }
  void Select(const Link& link);

  // "9:30", "0930" or "24:00"; none, after a message, for anything else.
  static std::optional<int64_t> ReadTime(std::u16string_view typed);
  // "hh:mm" of a moment within the day.
  static std::u16string TimeText(int64_t moment);
  // A link as the list shows it: "09:00-10:30", with an arrow where it goes on beyond the day; and
  // what stands there.
  std::u16string TimesOf(const Link& link) const;
  std::u16string TextOf(const Link& link) const;

 private:
  bool MayDelete() const;
  bool MayJoin(size_t span) const;
  bool WriteAll(const Outcome& outcome, std::u16string_view title);
  // `written` is the last Action that isn't gone then.
  bool WriteRows(const Outcome& outcome, recorder::ChainTurn& chain, std::u16string& written);
  void SelectById(const std::u16string& id);

  core::CAppState& app_;
  DayChain chain_;
};

}  // namespace tidy
