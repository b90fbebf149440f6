// What this process asks of the system, counted; one call can be made to fail, or to be the last.
// Stands in front of the C library for the program's own calls and for the engine's.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>

namespace reliability {

enum class Call { kWrite, kSync, kOpen, kRename, kRemove, kMap, kRead, kAllocate };
inline constexpr std::array<std::string_view, 8> kCallNames = {
    "write", "sync", "open", "rename", "remove", "map", "read", "allocate"};
inline constexpr int kKilled = 77;  // the exit status of a process that was to die

struct Calls {
  bool armed = false;  // calls are counted, and the order stands
  std::array<long, kCallNames.size()> counts{};

  // Call number `nth`, from 0, of `kind`, or of those that change the disk: it fails, as on a disk
  // that is full or broken or without memory, or the process ends as by a kill.
  enum class Fate { kPass, kFail, kDie } fate = Fate::kPass;
  std::optional<Call> kind;
  long nth = 0;
  long changes = 0;   // of the disk
  bool came = false;  // the call of the order
};

Calls& calls();

// Counts while in scope.
class Armed {
 public:
  Armed() { calls().armed = true; }
  ~Armed() { calls().armed = false; }
  Armed(const Armed&) = delete;
  Armed& operator=(const Armed&) = delete;
};

// What was done to the files under one folder, in order, for whoever shares the memory: a disk may
// keep or lose what wasn't brought to it.
struct Event {
  enum Kind : uint8_t { kWrite, kTruncate, kSync, kSyncFolder, kCreate, kRename, kUnlink, kMark };
  Kind kind;
  uint64_t file;           // its number, which it keeps under any name; of a mark, its number
  int64_t offset;          // of a write; of a truncation the new length
  std::string_view bytes;  // of a write; the name, or the new name
  std::string_view from;   // the former name
};

// The log lies in memory that children of this process share. `folder` ends with a slash.
class EventLog {
 public:
  explicit EventLog(std::string_view folder);
  ~EventLog();
  EventLog(const EventLog&) = delete;
  EventLog& operator=(const EventLog&) = delete;

  void Append(const Event& event);
  // Calls `take` for each, in order, until it answers false.
  template <typename Take>
  void Each(const Take& take) const {
    for (size_t at = 0; at < *used_;) {
      if (!take(EventAt(at))) return;
    }
  }
  std::string_view Folder() const { return {folder_.data(), folderLength_}; }

 private:
  Event EventAt(size_t& at) const;

  std::array<char, 256> folder_{};
  size_t folderLength_ = 0;
  char* memory_;
  size_t* used_;
};

// Where the calls of this process are written down; nullptr: nowhere. Not owned.
void SetEventLog(EventLog* log);

}  // namespace reliability
