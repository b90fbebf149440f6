#include "platform/qt/qt_host.h"

#include <QApplication>
#include <QDesktopServices>
#include <QFontDatabase>
#include <QScreen>
#include <QTimer>
#include <QUrl>
#include <chrono>
#include <ctime>
#include <filesystem>

#include "platform/device_paths.h"
#include "platform/qt/command_mailbox.h"
#include "platform/qt/message_box.h"
#include "platform/qt/qt_text.h"

namespace platform::qt {
namespace {

// How long a changed property needs to come back from the X server with a new time stamp.
constexpr int kTimeStampMilliseconds = 60;

std::u16string ReadProgramPath() {
  std::error_code error;
  const std::string path = std::filesystem::read_symlink("/proc/self/exe", error).string();
  return error ? std::u16string() : FromHostPath(path).value_or(std::u16string());
}

}  // namespace

QtHost::QtHost() : programPath_(ReadProgramPath()) {}

bool QtHost::LieIn(const std::string& folder) {
  programPath_ = FromHostPath(folder + "/morvenly").value_or(std::u16string());
  return !programPath_.empty();
}

QWidget* QtHost::Foremost() const {
  if (QWidget* modal = QApplication::activeModalWidget()) return modal;
  return mainWindow_ && mainWindow_->isVisible() ? mainWindow_.data() : nullptr;
}

Answer QtHost::ShowMessage(const Message& message) {
  // The message itself waits for its user, whatever the program was busy with.
  if (waitDepth_ > 0) QApplication::restoreOverrideCursor();
  const Answer answer = RunMessageBox(Foremost(), message);
  if (waitDepth_ > 0) QApplication::setOverrideCursor(Qt::WaitCursor);
  return answer;
}

void QtHost::SetWaitCursor(bool waiting) {
  if (waiting) {
    if (waitDepth_++ == 0) QApplication::setOverrideCursor(Qt::WaitCursor);
  } else {
    if (--waitDepth_ == 0) QApplication::restoreOverrideCursor();
  }
}

void QtHost::PostCommand(WindowId window, int command) {
  PostToAddress(window, command);
}

void QtHost::BringForward() {
  QWidget* front = Foremost();
  if (front == nullptr) return;
  if (mainWindow_) mainWindow_->setWindowState(mainWindow_->windowState() & ~Qt::WindowMinimized);
  // A window manager that guards the focus wants a fresh time stamp, which Qt takes from the change
  // of any property: the title's, for a moment.
  const QString title = front->windowTitle();
  front->setWindowTitle(title + QChar(0x200B));
  front->setWindowTitle(title);
  // By then something else may stand over it, which has to have the keys.
  QTimer::singleShot(kTimeStampMilliseconds, front, [this] {
    if (QWidget* foremost = Foremost()) {
      foremost->raise();
      foremost->activateWindow();
    }
  });
}

void QtHost::OpenLink(const std::u16string& link) {
  if (QDesktopServices::openUrl(QUrl(ToQt(link)))) return;
  ShowNotice(u"リンクを開くブラウザーが見つかりません。\n" + link, u"ブラウザー起動不可",
             Icon::kWarning);
}

LocalTime QtHost::Now() {
  tzset();  // the device travels
  const std::time_t now = std::time(nullptr);
  std::tm local{};
  localtime_r(&now, &local);
  return {local.tm_year + 1900, local.tm_mon + 1, local.tm_mday,
          local.tm_hour,        local.tm_min,     local.tm_sec};
}

uint32_t QtHost::TickCount() {
  const auto now = std::chrono::steady_clock::now().time_since_epoch();
  return static_cast<uint32_t>(std::chrono::duration_cast<std::chrono::milliseconds>(now).count());
}

std::u16string QtHost::HomeFolder() {
  return FromHostPath(qgetenv("HOME").toStdString()).value_or(std::u16string());
}

int QtHost::Dpi() {
  const QScreen* screen = QGuiApplication::primaryScreen();
  return screen != nullptr ? qRound(screen->logicalDotsPerInchY()) : 96;
}

std::vector<std::u16string> QtHost::FontFamilies() {
  std::vector<std::u16string> names;
  for (const QString& family : QFontDatabase::families()) names.push_back(FromQt(family));
  return names;
}

}  // namespace platform::qt
