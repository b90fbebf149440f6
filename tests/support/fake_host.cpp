#include "support/fake_host.h"

#include <gtest/gtest.h>

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

int FakeHost::Draw() {
  if (draws.empty()) return nextDraw_++ % 32767;
  const int draw = draws.front();
  draws.pop_front();
  return draw;
}

}  // namespace testing_support
