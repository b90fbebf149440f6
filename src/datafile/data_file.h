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
// no half file behind that every later start would refuse. An HRESULT, or a negative step
// number of WriteSystemInfo or InitRecorderValues.
store::HRESULT CreateDataFile(std::u16string_view path);

// Start-up. 0; -1 a new or another file was taken; -2 the file was upgraded, or an index row could
// not be read; -101, -110 and -200 end the process.
int OpenDataFile(core::CAppState& app);
// -4 a file stands ready at `newPath`; -3 or -2 the user said no; -1 failure.
int ResolveMissingDataFile(core::CAppState& app, std::u16string_view path, std::u16string& newPath);
// 0 current; -4 upgraded; -1 the user said no; -2 not a file of ours; -3 the upgrade failed.
int UpgradeDataFile(core::CAppState& app);
// 0, or -8, -9, -10 for the step that failed.
int ApplyFormatUpgrade(core::CAppState& app, std::u16string_view oldVersion);
// 0, or -101 to -104 for the row that failed, after its message.
int WriteSystemInfo();
// Closes the open file and takes another one. 0 changed, or back on the old file; -1 the user said
// no or the name is bad; -10 no file is open now: the caller closes the program.
int ChangeDataFile(core::CAppState& app, std::u16string_view path);

}  // namespace datafile
