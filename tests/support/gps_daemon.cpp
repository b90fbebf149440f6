#include "support/gps_daemon.h"

#include <gtest/gtest.h>
#include <netinet/in.h>
#include <sys/socket.h>

#include <string_view>

#include "platform/file_handle.h"
#include "platform/gpsd_device.h"

namespace testing_support {
namespace {

constexpr std::string_view kSentences =
    "$GPGGA,033015.00,3540.87422,N,13946.02750,E,1,08,1.1,17.0,M,36.7,M,,*54\r\n"
    "$GPRMC,033015.00,A,3540.87422,N,13946.02750,E,21.6,12.5,230620,,,A*5C\r\n";

sockaddr_in OnLoopback(uint16_t port) {
  sockaddr_in address{};
  address.sin_family = AF_INET;
  address.sin_port = htons(port);
  address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  return address;
}

// A port that nobody has just now.
uint16_t FreePort(int type) {
  const platform::FileHandle probe(socket(AF_INET, type, 0));
  sockaddr_in address = OnLoopback(0);
  socklen_t size = sizeof address;
  EXPECT_EQ(bind(probe.Get(), reinterpret_cast<sockaddr*>(&address), size), 0);
  EXPECT_EQ(getsockname(probe.Get(), reinterpret_cast<sockaddr*>(&address), &size), 0);
  return ntohs(address.sin_port);
}

}  // namespace

GpsDaemon::GpsDaemon()
    : port_(FreePort(SOCK_STREAM)),
      receiverPort_(FreePort(SOCK_DGRAM)),
      feeder_([this] { Feed(); }) {}

GpsDaemon::~GpsDaemon() {
  ends_ = true;
  feeder_.join();
}

void GpsDaemon::Start() {
  daemon_ = Process({"/usr/sbin/gpsd", "-N", "-n", "-S", std::to_string(port_),
                     "udp://127.0.0.1:" + std::to_string(receiverPort_)});
  int error = 0;
  ASSERT_TRUE(WaitUntil([&] { return platform::OpenGpsd(port_, error) != nullptr; }));
}

void GpsDaemon::Feed() {
  const platform::FileHandle line(socket(AF_INET, SOCK_DGRAM, 0));
  const sockaddr_in receiver = OnLoopback(receiverPort_);
  while (!ends_) {
    if (hasFix_) {
      sendto(line.Get(), kSentences.data(), kSentences.size(), 0,
             reinterpret_cast<const sockaddr*>(&receiver), sizeof receiver);
    }
    std::this_thread::sleep_for(std::chrono::milliseconds(50));
  }
}

}  // namespace testing_support
