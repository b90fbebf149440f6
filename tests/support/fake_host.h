// A host for tests: it records every message and answers from a script, notices included, its clock
// stands where the test puts it, and its draws are the test's.
#pragma once

#include <condition_variable>
#include <deque>
#include <mutex>
#include <string>
#include <utility>
#include <vector>

#include "platform/host.h"
#include "platform/utf.h"

namespace testing_support {

// What a test expects of a message, and its answer: a text is a part of "title|text", empty for
// any; a text alone is what a notice says.
struct Reply {
  Reply(platform::Answer given) : answer(given) {}
  Reply(const char* part) : says(part) {}
  Reply(const char16_t* part) : says(platform::ToUtf8(part)) {}
  Reply(std::string part, platform::Answer given = platform::Answer::kOk)
      : says(std::move(part)), answer(given) {}

  std::string says;  // UTF-8
  platform::Answer answer = platform::Answer::kOk;
};

// The process's host for the scope of the object.
class FakeHost : public platform::Host {
 public:
  FakeHost() : former_(platform::SetHost(this)) {}
  ~FakeHost() override;

  // For each of the messages to come, in order: host.answers = {kYes, "変更に失敗しました"}. A
  // message that finds no answer here, or one that isn't meant for it, fails the test; so does an
  // answer that nothing asks for. A notice takes a text or kOk.
  std::deque<Reply> answers;
  std::vector<platform::Message> messages;
  std::vector<std::u16string> links;  // that were opened
  uint32_t ticks = 1;                 // milliseconds, of which each look takes some
  uint32_t ticksPerLook = 0;

  platform::LocalTime now{2010, 6, 23, 10, 45, 30};
  std::deque<int> draws;  // then counts up from 0, wrapping at 32767
  std::u16string programPath = u"\\morvenly\\Morvenly";
  std::u16string homeFolder = u"\\home\\a";
  int waitDepth = 0;
  int waits = 0;  // scopes of the wait cursor so far

  // The next posted command and its window; waits for it, half a minute at most, and fails the test
  // if none comes.
  std::pair<platform::WindowId, int> NextPost();
  size_t PostCount();

  platform::Answer ShowMessage(const platform::Message& message) override;
  void SetWaitCursor(bool waiting) override {
    waitDepth += waiting ? 1 : -1;
    waits += waiting ? 1 : 0;
  }
  void SignalActivity() override {}
  void PostCommand(platform::WindowId window, int command) override;
  void BringForward() override {}
  void OpenLink(const std::u16string& link) override { links.push_back(link); }
  platform::LocalTime Now() override { return now; }
  uint32_t TickCount() override { return ticks += ticksPerLook; }
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
