#include "support/fake_host.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <span>

namespace testing_support {
namespace {

using platform::Answer;
using platform::Buttons;

// The last one is what closing the message means.
std::span<const Answer> AnswersOf(Buttons buttons) {
  static constexpr Answer kAll[] = {Answer::kYes, Answer::kNo, Answer::kOk, Answer::kCancel};
  static constexpr Answer kYesNoCancel[] = {Answer::kYes, Answer::kNo, Answer::kCancel};
  const std::span all(kAll);
  switch (buttons) {
    case Buttons::kOk:
      return all.subspan(2, 1);
    case Buttons::kOkCancel:
      return all.subspan(2);
    case Buttons::kYesNo:
      return all.first(2);
    case Buttons::kYesNoCancel:
      break;
  }
  return kYesNoCancel;
}

}  // namespace

FakeHost::~FakeHost() {
  EXPECT_TRUE(answers.empty()) << answers.size() << " messages didn't come: "
                               << (answers.empty() ? "" : answers.front().says);
  EXPECT_EQ(waitDepth, 0) << "the wait cursor was left on";
  platform::SetHost(former_);
}

platform::Answer FakeHost::ShowMessage(const platform::Message& message) {
  messages.push_back(message);
  const std::string shown = platform::ToUtf8(message.title + u'|' + message.text);
  const std::span<const Answer> buttons = AnswersOf(message.buttons);
  if (answers.empty()) {
    ADD_FAILURE() << "unexpected message: " << shown;
    return buttons.back();
  }
  const Reply reply = answers.front();
  answers.pop_front();
  EXPECT_NE(shown.find(reply.says), std::string::npos) << reply.says << " expected, not " << shown;
  if (std::ranges::find(buttons, reply.answer) != buttons.end()) return reply.answer;
  ADD_FAILURE() << "no such answer to: " << shown;
  return buttons.back();
}

void FakeHost::PostCommand(platform::WindowId window, int command) {
  const std::scoped_lock lock(postMutex_);
  posts_.emplace_back(window, command);
  posted_.notify_all();
}

std::pair<platform::WindowId, int> FakeHost::NextPost() {
  std::unique_lock lock(postMutex_);
  if (!posted_.wait_for(lock, std::chrono::seconds(30), [this] { return !posts_.empty(); })) {
    ADD_FAILURE() << "nothing was posted";
    return {};
  }
  const auto post = posts_.front();
  posts_.pop_front();
  return post;
}

size_t FakeHost::PostCount() {
  const std::scoped_lock lock(postMutex_);
  return posts_.size();
}

int FakeHost::Draw() {
  if (draws.empty()) return nextDraw_++ % 32767;
  const int draw = draws.front();
  draws.pop_front();
  return draw;
}

}  // namespace testing_support
