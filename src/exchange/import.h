// The Actions of an exchange file into the data file.
#pragma once

#include <string_view>

#include "core/app_state.h"
#include "exchange/progress.h"

namespace exchange {

enum ReadMode {
  kReadAdd = 1,     // every record gets a new id
  kReadReplace = 2  // a record overwrites the Action of its id, if there is one
};

// Each reads and checks the whole file of a FormatVer first, then writes its records. Writes go to
// the disk some hundred at a time: a kill in the middle leaves a whole number of records, and what
// was written before a failure stays. 0; negative after a message: -1 the file can't be read or
// isn't good, and nothing has been written; -2 no unique id; -3 a write failed. Once anything was
// to be written, the Action index is loaded again, which drops a find.
int ImportAdd(core::CAppState& app, std::u16string_view path, int version,
              const Progress& progress);
int ImportReplace(core::CAppState& app, std::u16string_view path, int version,
                  const Progress& progress);

// Runs the reader of a ReadMode and reports how it ended. Its result; -101, after a message, if
// there is no file at `path`.
int RunImport(core::CAppState& app, std::u16string_view path, int version, int mode,
              const Progress& progress = {});

}  // namespace exchange
