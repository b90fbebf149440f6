// The settings file Morvenly.dat beside the program: read once at start-up, written once at
// shutdown. Text in code page 932: sections of lines, each ended by an empty line.
#pragma once

#include <string_view>

#include "core/app_state.h"

namespace core {

inline constexpr std::u16string_view kSettingsFile = u"Morvenly.dat";
// The data file's name beside the program, where the settings name none.
inline constexpr std::u16string_view kDefaultDataFile = u"user.sdf";

// The settings stage of start-up. 0, or -1 after showing its message.
int InitApp(CAppState& app);

// Every default of the settings, and the half hours. Leaves the column widths alone.
void SetDefaults(CAppState& app);
// The first-run words of the histories.
void SetDefaultLists(CAppState& app);

// 0; -1 if the file cannot be opened; -9 if a line cannot be read. Lines that make no sense are
// skipped, and of a line beyond 1048576 characters the rest is.
int ReadSettings(CAppState& app, std::u16string_view path);
// 0; -1 if the file cannot be created, or stands there read-only; -2 if the first line cannot be
// written. A write that fails after it goes unreported. Whenever writing fails, the file that stood
// there stays as it was.
int WriteSettings(const CAppState& app, std::u16string_view path);
// A data file at this path would be found again by what WriteSettings writes.
bool KeepsDataFile(std::u16string_view path);
// WriteSettings beside the program; shows a message on failure. Result of WriteSettings.
int SaveSettings(const CAppState& app);

}  // namespace core
