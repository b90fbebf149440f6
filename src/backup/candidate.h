// A copy of the file to restore, beside the diary, where one rename gives it the diary's name. What
// was looked into is so what takes the place, and the file that was chosen may lie on a disk that
// nobody can write to.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "backup/summary.h"
#include "core/app_state.h"

namespace backup {

enum class Outcome { kDone, kFailed, kTold };  // kFailed has its trouble noted, as far as known

// Byte by byte, into a file that is its owner's alone and may be replaced. False with the trouble
// noted; what was copied stays.
bool CopyBytes(std::u16string_view from, std::u16string_view to);
// An engine that didn't close the file left a journal beside it, or has it open.
bool HasLog(std::u16string_view path);

class Candidate {
 public:
  // Nothing is made yet.
  explicit Candidate(std::u16string path) : path_(std::move(path)) {}
  ~Candidate();
  Candidate(const Candidate&) = delete;
  Candidate& operator=(const Candidate&) = delete;

  // Copies `source`, and a log of its own, and checks the copy. None, with the trouble noted, if
  // it's no whole data file of ours, or is in use, or another file's log lies beside it.
  std::optional<Summary> Take(std::u16string_view source);
  // Brings an older format up to date after the usual questions. No data file may be open, and none
  // is open afterwards.
  Outcome Upgrade(core::CAppState& app);
  // Takes the place of what stands at `diary`. False with the trouble noted.
  bool MoveTo(std::u16string_view diary);

 private:
  std::u16string path_;
  std::u16string formatVersion_;
};

}  // namespace backup
