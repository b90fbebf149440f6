// The recorder's lasting state: which of its values the data file holds, how they are read when the
// recorder first opens, and its share of closing that file.
#pragma once

#include <string>
#include <string_view>

#include "core/app_state.h"
#include "store/hresult.h"

namespace recorder {

// In the time field: a recording takes the clock's time. Stored as an empty text.
inline constexpr std::u16string_view kCurrentTimeMark = u"<現在時刻>";

// The names of the two values that are written at once by the operations that change them. All
// others are written when the data file closes.
inline constexpr std::u16string_view kHistNumKey = u"RcdrHistNum";
inline constexpr std::u16string_view kPreActIdKey = u"RcdrPreActId";

// What the six fields of the recorder's screen hold.
struct RecorderFields {
  std::u16string time{kCurrentTimeMark};  // hh:mm or the mark
  std::u16string latitude;                // degrees/minutes/seconds, or empty
  std::u16string longitude;
  std::u16string place;
  std::u16string category1;
  std::u16string category2;
};

// The recorder's values in a new data file. 0, or -2, -4, -5, -7, -8, -9, -10, -11, -12 for the key
// that failed, in the order in which they are written.
int InitRecorderValues();

// Reads the state out of the open data file. 0, or the number of the step that failed: -1 the
// history, -2, -3 the running Action and its start, -5 the captured date and time, -6 to -10 the
// captured position, place and categories. What was read before a failure stays.
int LoadRecorderData(core::CAppState& app);

// Writes what is written only when the data file closes. 0; -5 or -7 to -12 for the key that
// failed, in the order in which they are written.
int SaveRecorderValues(const core::CAppState& app);

// Remembers what the screen's fields hold, and that they held it today.
void CaptureRecorderFields(core::CAppState& app, const RecorderFields& fields);

// Saves the recorder's values if they were loaded, closes the row set, empties the history and the
// Action index and closes the data file.
void CloseRecorderSession(core::CAppState& app);

// The id of the running Action, of the data file where the recorder hasn't been opened yet; empty
// if nothing runs.
store::HRESULT ReadRunningId(const core::CAppState& app, std::u16string& id);

}  // namespace recorder
