// A host for tests: it records every message and answers from a script, its clock stands where the
// test puts it, and its draws are the test's.
#pragma once

#include <condition_variable>
#include <deque>
#include <mutex>
#include <string>
#include <utility>
#include <vector>

#include "platform/host.h"

namespace testing_support {

// The process's host for the scope of the object.
class FakeHost : public platform::Host {
 public:
  FakeHost() : former_(platform::SetHost(this)) {}
  ~FakeHost() override;

  // Answers of the messages to come, in order. A message with more than one button fails the test
  // when the script has run dry; a plain notice needs no answer.
  std::deque<platform::Answer> answers;
  std::vector<platform::Message> messages;
  std::vector<std::u16string> links;  // that were opened

  platform::LocalTime now{2010, 6, 23, 10, 45, 30};
  std::deque<int> draws;  // then counts up from 0, wrapping at 32767
  std::u16string programPath = u"\\morvenly\\Morvenly";
  std::u16string homeFolder = u"\\home\\a";
  int waitDepth = 0;

  // The next posted command and its window; waits for it, half a minute at most, and fails the test
  // if none comes.
  std::pair<platform::WindowId, int> NextPost();
  size_t PostCount();

  platform::Answer ShowMessage(const platform::Message& message) override;
  void SetWaitCursor(bool waiting) override { waitDepth += waiting ? 1 : -1; }
  void SignalActivity() override {}
  void PostCommand(platform::WindowId window, int command) override;
  void BringForward() override {}
  void OpenLink(const std::u16string& link) override { links.push_back(link); }
  platform::LocalTime Now() override { return now; }
  uint32_t TickCount() override { return 1; }
  void SeedDraw(uint32_t) override {}
  int Draw() override;
  std::u16string ProgramPath() override { return programPath; }
  std::u16string HomeFolder() override { return homeFolder; }
  int Dpi() override { return 96; }
  std::vector<std::u16string> FontFamilies() override { return {u"Alpha", u"VL PGothic"}; }

 private:
  platform::Host* former_;
  int nextDraw_ = 0;
  std::mutex postMutex_;
  std::condition_variable posted_;
  std::deque<std::pair<platform::WindowId, int>> posts_;
};

}  // namespace testing_support
