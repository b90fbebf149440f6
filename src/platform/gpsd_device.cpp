// The one file that knows gpsd. libgps reads the daemon's reports; the socket is our own, because
// nothing here may wait without also waiting for the stop event.
#include "platform/gpsd_device.h"

#include <gps.h>
#include <netinet/in.h>
#include <poll.h>
#include <sys/eventfd.h>
#include <sys/socket.h>

#include <array>
#include <cerrno>
#include <cmath>
#include <optional>
#include <string>
#include <string_view>

#include "platform/file_handle.h"
#include "platform/utf.h"

namespace platform {
namespace {

using Clock = std::chrono::steady_clock;

constexpr int kConnectMilliseconds = 200;  // a daemon on loopback needs less than one
constexpr int kPauseMilliseconds = 1000;   // before a lost daemon is looked for again
constexpr std::string_view kWatch = "?WATCH={\"enable\":true,\"json\":true}\n";
// The longest report, with room to spare: whoever sends a longer one is not gpsd.
constexpr size_t kLongestReport = 65536;
constexpr float kKnotsOfMetrePerSecond = 1.943844f;

// 0, or the error that ended the attempt.
int ConnectTo(uint16_t port, int socket) {
  sockaddr_in address{};
  address.sin_family = AF_INET;
  address.sin_port = htons(port);
  address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  if (connect(socket, reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0) return 0;
  if (errno != EINPROGRESS) return errno;
  pollfd writable{socket, POLLOUT, 0};
  if (poll(&writable, 1, kConnectMilliseconds) <= 0) return ETIMEDOUT;
  int error = 0;
  socklen_t size = sizeof error;
  getsockopt(socket, SOL_SOCKET, SO_ERROR, &error, &size);
  return error;
}

// What stands between the first `key` and the next quote; empty without both.
std::string_view ValueAfter(std::string_view report, std::string_view key) {
  const size_t found = report.find(key);
  if (found == std::string_view::npos) return {};
  const size_t begin = found + key.size();
  const size_t end = report.find('"', begin);
  return end == std::string_view::npos ? std::string_view() : report.substr(begin, end - begin);
}

// Empty for a line that isn't one report.
std::string_view KindOf(std::string_view report) {
  constexpr std::string_view kKey = "\"class\":\"";
  return report.find(kKey) == report.rfind(kKey) ? ValueAfter(report, kKey) : std::string_view();
}

float OrZero(double value) {
  return std::isfinite(value) ? static_cast<float>(value) : 0.0f;
}

class GpsdDevice : public GpsDevice {
 public:
  explicit GpsdDevice(uint16_t port)
      : port_(port),
        stop_(eventfd(0, EFD_NONBLOCK | EFD_CLOEXEC)),
        session_(std::make_unique<gps_data_t>()) {}

  int Connect();
  GpsEvent WaitForEvent() override;
  void SetStopEvent() override { eventfd_write(stop_.Get(), 1); }
  int GPSGetPosition(GPS_POSITION& position, std::chrono::milliseconds maximumAge) override;
  int GPSGetDeviceState(GPS_DEVICE& device) override;

 private:
  bool StopsWithin(int milliseconds);
  void Receive();
  std::optional<GpsEvent> TakeReport();
  std::optional<GpsEvent> Read(std::string& report);
  std::optional<GpsEvent> ReadFirstDevice(std::string_view report);
  void TakeFix();

  const uint16_t port_;
  FileHandle stop_;
  FileHandle socket_;                    // none while the daemon is away
  std::string received_;                 // what no report was taken from yet
  std::unique_ptr<gps_data_t> session_;  // what libgps makes of the reports
  std::optional<GPS_POSITION> fix_;
  Clock::time_point fixTime_;
  std::string deviceName_;
};

int GpsdDevice::Connect() {
  received_.clear();
  FileHandle connection(socket(AF_INET, SOCK_STREAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0));
  if (!connection || !stop_) return errno;
  if (const int error = ConnectTo(port_, connection.Get()); error != 0) return error;
  const auto sent = send(connection.Get(), kWatch.data(), kWatch.size(), MSG_NOSIGNAL);
  if (sent != static_cast<ssize_t>(kWatch.size())) return ECONNRESET;
  socket_ = std::move(connection);
  return 0;
}

GpsEvent GpsdDevice::WaitForEvent() {
  for (;;) {
    if (const std::optional<GpsEvent> event = TakeReport()) return *event;
    if (StopsWithin(socket_ ? -1 : kPauseMilliseconds)) return GpsEvent::kStop;
    if (socket_) {
      Receive();
    } else {
      Connect();
    }
  }
}

// Waits for the stop event and, at the same time, for the daemon; -1 milliseconds have no end.
bool GpsdDevice::StopsWithin(int milliseconds) {
  std::array<pollfd, 2> handles{pollfd{stop_.Get(), POLLIN, 0}, pollfd{socket_.Get(), POLLIN, 0}};
  poll(handles.data(), handles.size(), milliseconds);
  return handles[0].revents != 0;
}

void GpsdDevice::Receive() {
  std::array<char, 4096> bytes;
  const ssize_t count = recv(socket_.Get(), bytes.data(), bytes.size(), 0);
  if (count < 0 && (errno == EAGAIN || errno == EINTR)) return;
  if (count > 0) received_.append(bytes.data(), static_cast<size_t>(count));
  if (count <= 0 || received_.size() > kLongestReport) socket_ = FileHandle();
}

// The event of the next whole report that has one; reports without are dropped.
std::optional<GpsEvent> GpsdDevice::TakeReport() {
  for (size_t end; (end = received_.find('\n')) != std::string::npos;) {
    std::string report = received_.substr(0, end);
    received_.erase(0, end + 1);
    if (const std::optional<GpsEvent> event = Read(report)) return event;
  }
  return {};
}

std::optional<GpsEvent> GpsdDevice::Read(std::string& report) {
  // The library goes round for ever in a list of more than four devices, or with a path of 128
  // characters: it gets positions and satellites, and the list is read here.
  if (report.find("\"class\":\"DEVICES\"") != std::string::npos) return ReadFirstDevice(report);
  const std::string_view kind = KindOf(report);
  if (kind != "TPV" && kind != "SKY") return {};
  session_->set = 0;
  if (gps_unpack(report.data(), session_.get()) != 0) return {};
  const gps_fix_t& fix = session_->fix;
  const bool isFix = (session_->set & LATLON_SET) != 0 && fix.mode >= MODE_2D;
  if (!isFix || !std::isfinite(fix.latitude) || !std::isfinite(fix.longitude)) return {};
  TakeFix();
  return GpsEvent::kPosition;
}

std::optional<GpsEvent> GpsdDevice::ReadFirstDevice(std::string_view report) {
  const std::string_view path = ValueAfter(report, "\"path\":\"");
  if (path.empty()) return {};
  deviceName_ = path;
  return GpsEvent::kDeviceState;
}

void GpsdDevice::TakeFix() {
  const gps_fix_t& fix = session_->fix;
  fixTime_ = Clock::now();
  fix_ = {static_cast<uint32_t>(session_->satellites_used), fix.latitude, fix.longitude,
          OrZero(fix.speed) * kKnotsOfMetrePerSecond, OrZero(fix.track)};
}

int GpsdDevice::GPSGetPosition(GPS_POSITION& position, std::chrono::milliseconds maximumAge) {
  if (!fix_ || Clock::now() - fixTime_ > maximumAge) return -1;
  position = *fix_;
  return 0;
}

int GpsdDevice::GPSGetDeviceState(GPS_DEVICE& device) {
  if (deviceName_.empty()) return -1;
  device.szGPSFriendlyName = ToUtf16(deviceName_);
  return 0;
}

}  // namespace

std::shared_ptr<GpsDevice> OpenGpsd(uint16_t port, int& error) {
  auto device = std::make_shared<GpsdDevice>(port);
  error = device->Connect();
  if (error != 0) return nullptr;
  return device;
}

}  // namespace platform
