// The accessor of the one Host, and the two shapes of message that most callers need.
#include "platform/host.h"

#include <cassert>
#include <utility>

namespace platform {
namespace {

Host* currentHost = nullptr;

}  // namespace

Host& host() {
  assert(currentHost != nullptr);
  return *currentHost;
}

Host* SetHost(Host* newHost) {
  return std::exchange(currentHost, newHost);
}

void ShowNotice(std::u16string text, std::u16string title, Icon icon) {
  host().ShowMessage({std::move(text), std::move(title), icon});
}

bool AskYesNo(std::u16string text, std::u16string title, Icon icon, int defaultButton) {
  return host().ShowMessage({std::move(text), std::move(title), icon, Buttons::kYesNo,
                             defaultButton}) == Answer::kYes;
}

}  // namespace platform
