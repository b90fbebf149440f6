// A copy of the file to restore, in a folder of its own beside the diary, from where one rename
// gives it the diary's name. So what was looked into is what takes the place, and the file that was
// chosen may lie on a disk that nobody can write to.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "backup/summary.h"
#include "core/app_state.h"

namespace backup {

enum class Outcome { kDone, kFailed, kTold };  // kFailed has its trouble noted, as far as known

// Byte by byte, into a new file that is its owner's alone. False with the trouble noted; what was
// copied stays.
bool CopyBytes(std::u16string_view from, std::u16string_view to);
// An engine that didn't close the file left a journal beside it, or has it open.
bool HasLog(std::u16string_view path);

class Candidate {
 public:
  // `folder` is a free name; nothing is made yet.
  explicit Candidate(std::u16string folder) : folder_(std::move(folder)) {}
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
  const std::u16string folder_;
  const std::u16string path_ = folder_ + u"\\diary";
  bool hasFolder_ = false;
  std::u16string formatVersion_;
};

}  // namespace backup
