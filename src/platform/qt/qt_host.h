// The machine we run on, seen through Qt: messages over the program's window, the wait cursor, the
// clock of the place where the user is.
#pragma once

#include <QPointer>
#include <QWidget>
#include <random>
#include <string>

#include "platform/host.h"
#include "platform/qt/idle_watch.h"

namespace platform::qt {

// Made before the application object; messages, the cursor and Dpi need that one.
class QtHost : public Host {
 public:
  QtHost();

  // From now on everything of the user's lies in `folder`, a full path in the host's form, and not
  // beside the program. False if the program can't name it.
  bool LieIn(const std::string& folder);
  // The window that messages stand over and that BringForward shows. Not owned.
  void SetMainWindow(QWidget* window) { mainWindow_ = window; }

  Answer ShowMessage(const Message& message) override;
  void SetWaitCursor(bool waiting) override;
  void SignalActivity() override { idleWatch_.SignalActivity(); }
  void PostCommand(WindowId window, int command) override;
  void BringForward() override;
  void OpenLink(const std::u16string& link) override;
  LocalTime Now() override;
  uint32_t TickCount() override;
  void SeedDraw(uint32_t seed) override { chance_.seed(seed); }
  int Draw() override { return static_cast<int>(chance_() >> 17); }
  std::u16string ProgramPath() override { return programPath_; }
  std::u16string HomeFolder() override;
  int Dpi() override;
  std::vector<std::u16string> FontFamilies() override;

 private:
  QWidget* Foremost() const;

  QPointer<QWidget> mainWindow_;
  int waitDepth_ = 0;
  IdleWatch idleWatch_;
  std::mt19937 chance_;         // 32 bits a draw
  std::u16string programPath_;  // a reinstall moves the file away from under us: read once
};

}  // namespace platform::qt
