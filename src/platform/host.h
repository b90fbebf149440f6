// What the program asks of the machine it runs on, apart from its files: messages, the clock,
// chance, the wait cursor, the browser. main sets the one Host of the process; a test sets its own
// for a scope. Interface thread only, except for PostCommand.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace platform {

enum class Icon { kNone, kInformation, kWarning, kQuestion, kStop };
enum class Buttons { kOk, kOkCancel, kYesNo, kYesNoCancel };
enum class Answer { kOk = 1, kCancel = 2, kYes = 6, kNo = 7 };

struct Message {
  std::u16string text;  // '\n' breaks the line
  std::u16string title;
  Icon icon = Icon::kNone;
  Buttons buttons = Buttons::kOk;
  int defaultButton = 0;  // position among the buttons, 0 the first
};

// A moment of the local clock: month 1..12, day 1..31, hour 0..23, minute and second 0..59.
struct LocalTime {
  int year = 0;
  int month = 0;
  int day = 0;
  int hour = 0;
  int minute = 0;
  int second = 0;
};

// The address of a window to which commands are posted. 0 is none; no address is given twice.
using WindowId = uint64_t;

class Host {
 public:
  virtual ~Host() = default;

  // Shows a modal message and waits for its answer. Closing it without a button answers kCancel
  // where there is a Cancel, kNo where there are only Yes and No, otherwise kOk.
  virtual Answer ShowMessage(const Message& message) = 0;
  virtual void SetWaitCursor(bool waiting) = 0;
  // Tells the desktop's idle watch, where there is one, that its user is still waiting for us.
  // Cheap enough for every hundredth row of a long run; never waits for an answer.
  virtual void SignalActivity() = 0;
  // Any thread: `window` runs `command` when the interface thread comes to it. Nothing happens if
  // the window is gone by then.
  virtual void PostCommand(WindowId window, int command) = 0;
  // Brings the program's window in front of the others, if it has one yet.
  virtual void BringForward() = 0;

  // Hands a web address to the desktop and doesn't wait for what opens it. Tells the user if
  // nothing does.
  virtual void OpenLink(const std::u16string& link) = 0;

  virtual LocalTime Now() = 0;
  // Milliseconds since some fixed moment; wraps.
  virtual uint32_t TickCount() = 0;
  virtual void SeedDraw(uint32_t seed) = 0;
  // A pseudo-random number, 0..32767.
  virtual int Draw() = 0;

  // The full path in the device's form (see device_paths.h) beside which everything of the user's
  // lies: that of the program file, or of a file of its name in the folder that stands for its own.
  virtual std::u16string ProgramPath() = 0;
  // The user's home folder in the device's form; empty if there is none that the program can name.
  virtual std::u16string HomeFolder() = 0;
  // Logical dots per inch of the screen.
  virtual int Dpi() = 0;
  // The names of the fonts that are there, sorted.
  virtual std::vector<std::u16string> FontFamilies() = 0;
};

Host& host();
// Makes `newHost` the process's host and returns the former one (nullptr if none). Not owned.
Host* SetHost(Host* newHost);

// ShowMessage of a message with the OK button alone.
void ShowNotice(std::u16string text, std::u16string title, Icon icon);
// The second button of a question with Yes and No.
inline constexpr int kNoButton = 1;
// ShowMessage of a question with Yes and No; true only for Yes.
bool AskYesNo(std::u16string text, std::u16string title, Icon icon = Icon::kQuestion,
              int defaultButton = 0);

// Shows the wait cursor for the length of a scope. Nests.
class WaitCursor {
 public:
  WaitCursor() { host().SetWaitCursor(true); }
  ~WaitCursor() { host().SetWaitCursor(false); }
  WaitCursor(const WaitCursor&) = delete;
  WaitCursor& operator=(const WaitCursor&) = delete;
};

}  // namespace platform
