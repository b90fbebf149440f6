#include "support/fake_host.h"

#include <gtest/gtest.h>

#include <chrono>

#include "platform/utf.h"

namespace testing_support {

FakeHost::~FakeHost() {
  EXPECT_TRUE(answers.empty()) << answers.size() << " answers were never asked for";
  EXPECT_EQ(waitDepth, 0) << "the wait cursor was left on";
  platform::SetHost(former_);
}

platform::Answer FakeHost::ShowMessage(const platform::Message& message) {
  messages.push_back(message);
  if (message.buttons == platform::Buttons::kOk) return platform::Answer::kOk;
  if (answers.empty()) {
    ADD_FAILURE() << "no answer left for: " << platform::ToUtf8(message.text);
    return message.buttons == platform::Buttons::kYesNo ? platform::Answer::kNo
                                                        : platform::Answer::kCancel;
  }
  const platform::Answer answer = answers.front();
  answers.pop_front();
  return answer;
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
