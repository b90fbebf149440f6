#include "support/gps_daemon.h"

#include <gtest/gtest.h>
#include <netinet/in.h>

#include "platform/gpsd_device.h"

namespace testing_support {

LoopbackSocket::LoopbackSocket(int type) : handle(socket(AF_INET, type, 0)) {
  sockaddr_in address{};
  address.sin_family = AF_INET;
  address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  socklen_t size = sizeof address;
  EXPECT_EQ(bind(handle.Get(), reinterpret_cast<sockaddr*>(&address), size), 0);
  EXPECT_EQ(getsockname(handle.Get(), reinterpret_cast<sockaddr*>(&address), &size), 0);
  port = ntohs(address.sin_port);
}

void GpsDaemon::Start() {
  daemon_ = Process({"/usr/sbin/gpsd", "-N", "-n", "-S", std::to_string(port_),
                     "udp://127.0.0.1:" + std::to_string(receiverPort_)});
  int error = 0;
  ASSERT_TRUE(WaitUntil([&] { return platform::OpenGpsd(port_, error) != nullptr; }));
}

void GpsDaemon::HaveFix() {
  receiver_ =
      Process({"bash", "-c", "while :; do printf \"$0\" >/dev/udp/127.0.0.1/$1; sleep 0.05; done",
               "$GPGGA,033015.00,3540.87422,N,13946.02750,E,1,08,1.1,17.0,M,36.7,M,,*54\\r\\n"
               "$GPRMC,033015.00,A,3540.87422,N,13946.02750,E,21.6,12.5,230620,,,A*5C\\r\\n",
               std::to_string(receiverPort_)});
}

}  // namespace testing_support
