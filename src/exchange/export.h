// The Actions of the index, which a find may have narrowed, into a text file.
#pragma once

#include <string_view>

#include "core/app_state.h"
#include "exchange/progress.h"

namespace exchange {

// Each replaces the file at `path` and writes one line an Action in the order of the index. An
// Action that can't be read ends the file there, and counts as its end. -1 after a message if the
// file can't be made or written, which leaves in it what was written; otherwise the number of
// Actions written. `unkept` counts those of them that the file can't give back to the character.
int ExportVer1(const core::CAppState& app, std::u16string_view path, int& unkept,
               const Progress& progress);
int ExportVer2(const core::CAppState& app, std::u16string_view path, int& unkept,
               const Progress& progress);
// With a header line.
int ExportVer3(const core::CAppState& app, std::u16string_view path, int& unkept,
               const Progress& progress);
// The same in UTF-8.
int ExportVer3Utf8(const core::CAppState& app, std::u16string_view path, int& unkept,
                   const Progress& progress);

// Runs the writer of a FormatVer and reports how it ended. The writer's result.
int RunExport(const core::CAppState& app, std::u16string_view path, int version,
              const Progress& progress = {});

}  // namespace exchange
