// How a command reaches a screen from another thread: by a letter to its address, which the event
// loop of the interface thread delivers. A letter whose address is gone by then is thrown away.
#pragma once

#include <functional>

#include "platform/host.h"

namespace platform::qt {

// The address of a screen, as long as it lives. Interface thread only.
class CommandAddress {
 public:
  explicit CommandAddress(std::function<void(int command)> onCommand);
  ~CommandAddress();
  CommandAddress(const CommandAddress&) = delete;
  CommandAddress& operator=(const CommandAddress&) = delete;

  WindowId Id() const { return id_; }

 private:
  WindowId id_;
};

// Any thread; does not wait.
void PostToAddress(WindowId window, int command);

}  // namespace platform::qt
