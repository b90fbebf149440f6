#include "reliability/power_cut.h"

#include <algorithm>
#include <fstream>
#include <map>
#include <string>
#include <vector>

namespace reliability {
namespace {

constexpr size_t kBlock = 512;

void Apply(const Event& event, std::string& content) {
  if (event.kind == Event::kTruncate) {
    content.resize(static_cast<size_t>(event.offset));
    return;
  }
  const auto end = static_cast<size_t>(event.offset) + event.bytes.size();
  if (content.size() < end) content.resize(end);
  event.bytes.copy(content.data() + event.offset, event.bytes.size());
}

// A part of the write's blocks.
void ApplyTorn(const Event& event, std::string& content, std::minstd_rand& chance) {
  for (size_t at = 0; at < event.bytes.size();) {
    const size_t length = std::min(kBlock - (static_cast<size_t>(event.offset) + at) % kBlock,
                                   event.bytes.size() - at);
    Event block = event;
    block.offset += static_cast<int64_t>(at);
    block.bytes = event.bytes.substr(at, length);
    if (chance() % 2 == 0) Apply(block, content);
    at += length;
  }
}

std::string FolderOf(std::string_view name) {
  const size_t slash = name.rfind('/');
  return std::string(slash == name.npos ? "" : name.substr(0, slash + 1));
}

class Disk {
 public:
  void Take(const Event& event) {
    switch (event.kind) {
      case Event::kWrite:
      case Event::kTruncate:
        pending_[event.file].push_back(event);
        break;
      case Event::kSync:
        for (const Event& write : pending_[event.file]) Apply(write, contents_[event.file]);
        pending_[event.file].clear();
        break;
      case Event::kSyncFolder:
        std::erase_if(pendingNames_, [&](const Event& change) {
          if (FolderOf(change.bytes) != event.bytes) return false;
          Rename(change);
          return true;
        });
        break;
      case Event::kCreate:
      case Event::kRename:
      case Event::kUnlink:
        pendingNames_.push_back(event);
        break;
      case Event::kMark:
        break;
    }
  }

  void Lose(std::minstd_rand& chance) {
    const size_t kept = chance() % (pendingNames_.size() + 1);
    for (size_t i = 0; i < kept; ++i) Rename(pendingNames_[i]);
    for (auto& [file, writes] : pending_) {
      std::shuffle(writes.begin(), writes.end(), chance);
      writes.resize(chance() % (writes.size() + 1));
      for (const Event& write : writes) {
        if (write.kind == Event::kWrite && chance() % 4 == 0) {
          ApplyTorn(write, contents_[file], chance);
        } else {
          Apply(write, contents_[file]);
        }
      }
    }
  }

  void WriteInto(const std::filesystem::path& folder) {
    for (const auto& [name, file] : names_) {
      if (name.ends_with("-shm")) continue;  // lies in memory
      std::filesystem::create_directories((folder / name).parent_path());
      std::ofstream(folder / name, std::ios::binary) << contents_[file];
    }
  }

 private:
  void Rename(const Event& change) {
    if (change.kind == Event::kCreate) names_[std::string(change.bytes)] = change.file;
    if (change.kind == Event::kUnlink) names_.erase(std::string(change.bytes));
    if (change.kind != Event::kRename) return;
    const auto former = names_.find(std::string(change.from));
    if (former == names_.end()) return;
    names_[std::string(change.bytes)] = former->second;
    names_.erase(former);
  }

  std::map<std::string, uint64_t> names_;
  std::vector<Event> pendingNames_;
  std::map<uint64_t, std::string> contents_;
  std::map<uint64_t, std::vector<Event>> pending_;
};

}  // namespace

uint64_t CutPower(const EventLog& log, long events, std::minstd_rand& chance,
                  const std::filesystem::path& folder) {
  Disk disk;
  uint64_t mark = 0;
  log.Each([&](const Event& event) {
    if (events-- == 0) return false;
    if (event.kind == Event::kMark) mark = event.file;
    disk.Take(event);
    return true;
  });
  disk.Lose(chance);
  disk.WriteInto(folder);
  return mark;
}

}  // namespace reliability
