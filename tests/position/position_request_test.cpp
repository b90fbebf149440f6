#include "position/position_request.h"

#include <gtest/gtest.h>

#include <thread>

#include "platform/gpsd_device.h"
#include "support/fake_host.h"
#include "support/gps_daemon.h"

namespace {

constexpr char kFix[] = R"({"class":"TPV","device":"/dev/a","mode":2,"lat":35.5,"lon":139.5})"
                        "\n";

// Says the same to whoever connects, and then nothing more; hangs up on the first ones, perhaps.
class Speaker {
 public:
  explicit Speaker(std::string words, int hangsUp = 0)
      : words_(std::move(words)), hangsUp_(hangsUp) {
    EXPECT_EQ(listen(door_.handle.Get(), 5), 0);
    thread_ = std::thread([this] { Serve(); });
  }
  ~Speaker() {
    shutdown(door_.handle.Get(), SHUT_RDWR);
    thread_.join();
  }

  uint16_t Port() const { return door_.port; }

 private:
  void Serve() {
    platform::FileHandle guest;  // the last one, who is not sent away
    while (platform::FileHandle next{accept(door_.handle.Get(), nullptr, nullptr)}) {
      if (hangsUp_-- > 0) {
        shutdown(next.Get(), SHUT_WR);
      } else {
        send(next.Get(), words_.data(), words_.size(), MSG_NOSIGNAL);
      }
      guest = std::move(next);
    }
  }

  const std::string words_;
  int hangsUp_;
  testing_support::LoopbackSocket door_{SOCK_STREAM};
  std::thread thread_;
};

struct PositionRequest : testing::Test {
  ~PositionRequest() override {
    position::ClosePositionMonitor();
    platform::SetGpsDriver(nullptr);
  }
  static void AskGpsdAt(uint16_t port) {
    platform::SetGpsDriver([port](int& error) { return platform::OpenGpsd(port, error); });
  }
  testing_support::FakeHost host;
};

TEST_F(PositionRequest, GetsTheReadingOfTheRealDaemonWhateverBecomesOfIt) {
  testing_support::GpsDaemon daemon;
  AskGpsdAt(daemon.Port());
  EXPECT_EQ(position::StartPositionRequest(7, 33103), -105) << "there is no daemon yet";
  EXPECT_FALSE(position::IsRequestInProgress()) << "the next request would be refused";

  daemon.Start();
  ASSERT_EQ(position::StartPositionRequest(7, 33103), 0);
  EXPECT_EQ(position::StartPositionRequest(8, 33103), 0) << "one is under way, and stays";
  daemon.Kill();  // before it has ever had a fix
  daemon.HaveFix();
  ASSERT_NO_FATAL_FAILURE(daemon.Start());
  EXPECT_EQ(host.NextPost(), std::make_pair(platform::WindowId(7), 33103));
  EXPECT_FALSE(position::IsRequestInProgress());
  const std::optional<platform::GPS_POSITION> reading = position::LastReading();
  ASSERT_TRUE(reading.has_value());
  EXPECT_NEAR(reading->dblLatitude, 35.681237, 0.00001);
  EXPECT_NEAR(reading->dblLongitude, 139.767125, 0.00001);
}

TEST_F(PositionRequest, TakesNothingButAFix) {
  std::string devices = R"({"class":"DEVICES","devices":[{"path":"/dev/)" + std::string(200, 'a');
  for (int more = 0; more < 5; ++more) devices += R"("},{"class":"DEVICE","path":"/dev/b)";
  devices += "\"}]}\n";
  const Speaker speaker(devices + R"({
{"class":"TPV"}
{"class":"TPV","mode":1,"lat":1.5,"lon":2.5}
{"class":"TPV","mode":3}
{"class":"TPV","mode":3,"lat":1e999,"lon":2.5}
{"class":"TPV","mode":3}{"class":"SKY","uSat":3}
)" + devices + std::string(kFix));
  int error = 0;
  const auto device = platform::OpenGpsd(speaker.Port(), error);
  ASSERT_NE(device, nullptr);
  EXPECT_EQ(device->WaitForEvent(), platform::GpsEvent::kDeviceState);
  EXPECT_EQ(device->WaitForEvent(), platform::GpsEvent::kDeviceState);
  platform::GPS_DEVICE state;
  EXPECT_EQ(device->GPSGetDeviceState(state), 0);
  EXPECT_EQ(state.szGPSFriendlyName, u"/dev/" + std::u16string(200, u'a'));
  platform::GPS_POSITION position;
  EXPECT_NE(device->GPSGetPosition(position, std::chrono::hours(1)), 0) << "none has come yet";
  EXPECT_EQ(device->WaitForEvent(), platform::GpsEvent::kPosition);
  EXPECT_EQ(device->GPSGetPosition(position, std::chrono::hours(1)), 0);
  EXPECT_EQ(position.dblLatitude, 35.5);
  EXPECT_EQ(position.flSpeed, 0.0f) << "unknown";
  EXPECT_NE(device->GPSGetPosition(position, std::chrono::milliseconds(-1)), 0) << "too old";

  const Speaker endless(std::string(1000000, '{'));
  AskGpsdAt(endless.Port());
  EXPECT_EQ(position::StartPositionRequest(7, 33103), 0);
}

TEST_F(PositionRequest, ADaemonThatHangsUpIsLookedForAgain) {
  const Speaker speaker(kFix, 1);
  AskGpsdAt(speaker.Port());
  EXPECT_EQ(position::StartPositionRequest(7, 33103), 0);
  EXPECT_EQ(host.NextPost().first, platform::WindowId(7));
}

// Run under the thread sanitizer, this is where a race between the two threads shows.
TEST_F(PositionRequest, StartsAnswersRestartsAndClosesAThousandTimes) {
  const Speaker speaker(kFix);
  AskGpsdAt(speaker.Port());
  for (int round = 1; round <= 1000; round++) {
    ASSERT_EQ(position::StartPositionRequest(round, 33103), 0);
    if (round % 3 != 0) {
      ASSERT_EQ(host.NextPost().first, static_cast<platform::WindowId>(round));
      ASSERT_EQ(position::LastReading()->dblLongitude, 139.5);
    } else {
      position::ClosePositionMonitor();  // perhaps before, perhaps after the reading
      if (host.PostCount() > 0) host.NextPost();
      ASSERT_FALSE(position::IsRequestInProgress());
    }
  }
}

}  // namespace
