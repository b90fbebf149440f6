// What happens to the data file: opened at start-up, offered for creation when it is missing,
// upgraded after two questions when its format is older, changed for another one. All of it is
// dialogue with the user around the session.
#pragma once

#include <string>
#include <string_view>

#include "core/app_state.h"
#include "store/hresult.h"

namespace datafile {

inline constexpr std::u16string_view kFormatVersion = u"3.2.2010.0623";

// A new file with its system information and the recorder's first values, in the place of whatever
// stands at `path`, and opened. Made whole under another name first: a full disk or a kill leaves
// no half file that every later start would refuse. An HRESULT, or a negative step
// number of WriteSystemInfo or InitRecorderValues.
store::HRESULT CreateDataFile(std::u16string_view path);

// Start-up.
enum OpenResult {
  kOpened = 0,
  kOpenedOther = -1,  // a new file, or one that was found elsewhere
  kOpenedUpgraded = -2,
  kIndexUnread = -2,  // open, but a row of the index could not be read
  // No file is open, the user knows why, and the process ends.
  kNoneTaken = -101,
  kFormatRefused = -110,  // none of ours, damaged, or not brought up to date
  kNotOpened = -200
};
constexpr bool EndsProcess(OpenResult result) {
  return result <= kNoneTaken;
}
OpenResult OpenDataFile(core::CAppState& app);

enum ResolveResult {
  kReady = -4,  // a file stands ready at `newPath`
  kOtherRefused = -3,
  kNewRefused = -2,
  kResolveFailed = -1
};
ResolveResult ResolveMissingDataFile(core::CAppState& app, std::u16string_view path,
                                     std::u16string& newPath);

enum UpgradeResult {
  kCurrent = 0,
  kUpgradeRefused = -1,
  kNotOurs = -2,
  kUpgradeFailed = -3,
  kUpgraded = -4
};
UpgradeResult UpgradeDataFile(core::CAppState& app);

// The step of an upgrade that failed.
enum UpgradeStep {
  kEveryStep = 0,  // none did
  kLatitudeStep = -8,
  kLongitudeStep = -9,
  kColumnsStep = -10
};
UpgradeStep ApplyFormatUpgrade(core::CAppState& app, std::u16string_view oldVersion);

// 0, or -101 to -104 for the row that failed, after its message.
int WriteSystemInfo();

enum ChangeResult {
  kChanged = 0,          // or back on the old file
  kNotChanged = -1,      // the user said no, or the name is bad
  kConnectionLost = -10  // no file is open now: the caller closes the program
};
// Closes the open file and takes another one.
ChangeResult ChangeDataFile(core::CAppState& app, std::u16string_view path);

}  // namespace datafile
