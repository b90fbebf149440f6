// The Actions of the recorder's chain as rows: how one is opened, closed and opened again, how the
// list shows it, and how it is read.
#pragma once

#include <string>
#include <string_view>

#include "platform/host.h"
#include "recorder/recorder_state.h"
#include "store/action.h"

namespace recorder {

struct Moment {
  std::u16string date;  // yyyy/mm/dd
  std::u16string time;  // hh:mm:ss
};

Moment StartOf(const store::Action& action);

// A running Action: it ends where it starts until it is closed. A field that holds no coordinate
// leaves its column without a value.
store::Action NewAction(const Moment& start, const RecorderFields& fields);

// Sets the end to `tap`, but not before the start; an all-day Action goes on to the end of the day
// of the tap. A `place` other than its own makes the place a movement: old, separator, new.
void CloseAction(store::Action& action, const Moment& tap, std::u16string_view place,
                 std::u16string_view separator);

// The end goes back to the start; an all-day Action ends on the day it starts on.
void TakeEndBack(store::Action& action);
// Cuts the place at its last separator, unless that stands at its beginning. False if there was
// nothing to cut.
bool TakeMovementBack(store::Action& action, std::u16string_view separator);

// "<date> <label>::<place>::<category 1>::<category 2>"; "...::" after the place of a running one.
std::u16string ListLine(const store::Action& action, bool isRunning);

// The names and numbers by which the messages say what could not be read.
struct ReadSite {
  std::u16string_view selectName;
  int selectLine;
  std::u16string_view readName;
  int readLine;
};

enum class Found { kYes, kNo, kFailed };

// Reads one Action. A failure is reported to the user.
Found ReadRow(std::u16string_view id, const ReadSite& site, store::Action& action);

// A message of the recorder. What was written is on the disk before it shows, however long its user
// looks at it.
void Tell(std::u16string_view text, std::u16string_view title, platform::Icon icon);

// Of a fault of the data file.
inline constexpr std::u16string_view kFaultTitle = u"ERROR";

}  // namespace recorder
