#include "platform/metrics.h"

#include "platform/host.h"

namespace platform {

int Scaled(int units) {
  static const int dpi = host().Dpi();
  return (units * dpi + 48) / 96;
}

}  // namespace platform
