// A copy of a data file as it is at one moment, made beside the writes that follow. Only the
// engine's own files include this.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <thread>

#include "store/hresult.h"
#include "store/trouble.h"

struct sqlite3;

namespace store {

class SnapshotCopy {
 public:
  // From here on what is committed to `source` doesn't reach the copy, which goes into
  // `destination`, a file that is there. Both are host paths. `onEnd` is called once, by the thread
  // that copies, or by this one if nothing can be copied.
  SnapshotCopy(const std::string& source, const std::string& destination,
               std::function<void()> onEnd);
  ~SnapshotCopy();
  SnapshotCopy(const SnapshotCopy&) = delete;
  SnapshotCopy& operator=(const SnapshotCopy&) = delete;

  // Waits for the copy. S_OK if it is whole and on the disk; E_FAIL, with the trouble noted, if
  // there is none.
  HRESULT Wait();

 private:
  struct Close {
    void operator()(sqlite3* database) const;
  };
  using Connection = std::unique_ptr<sqlite3, Close>;

  static Connection Open(const std::string& path, int flags);
  bool TakeView();
  void Copy();
  bool CopyPages();
  bool Fail(sqlite3* database);

  const std::string destination_;
  Connection source_;
  Connection copy_;
  bool copied_ = false;
  Trouble trouble_ = Trouble::kUnknown;
  std::thread thread_;  // the rest is its own until it has ended
};

}  // namespace store
