// Every example of docs/action-text.md shows what the document says it does.
#include <gtest/gtest.h>

#include <algorithm>
#include <sstream>
#include <string>
#include <vector>

#include "actiontext/action_text.h"
#include "platform/utf.h"
#include "support/document.h"

namespace {

// Every line of it is ended.
struct Example {
  std::string memo;
  std::string shown;
};

// To the document one line end is like another.
std::string WithPlainLineEnds(std::string text) {
  std::erase(text, '\r');
  return text;
}

void SetField(store::Action& action, const std::string& line) {
  static constexpr const char* kNames[store::kActionColumnCount] = {
      "SIActId",   "SILastUpdate", "SIStaDateTime", "SIEndDateTime", "SILatitude", "SILongitude",
      "SISubject", "SIPlace",      "SICategory1",   "SICategory2",   "SIMemo",     "ExtItems"};
  const size_t mark = line.find(" = ");
  ASSERT_NE(mark, std::string::npos) << line;
  const auto name = std::find(std::begin(kNames), std::end(kNames), line.substr(0, mark));
  ASSERT_NE(name, std::end(kNames)) << line;
  action[static_cast<size_t>(name - kNames)] = platform::ToUtf16(line.substr(mark + 3));
}

// A block's examples stand apart by an empty line; "=>" begins each line of a result.
void ReadPage(store::Action& action, std::vector<Example>& examples) {
  for (const auto& [kind, text] : testing_support::ReadDocument("action-text.md")) {
    std::istringstream lines(text);
    examples.emplace_back();
    for (std::string line; std::getline(lines, line);) {
      if (kind == "action") {
        SetField(action, line);
      } else if (line.empty()) {
        examples.emplace_back();
      } else if (line.starts_with("=>")) {
        ASSERT_FALSE(examples.back().memo.empty()) << "a result without a memo: " << line;
        examples.back().shown += line.substr(std::min<size_t>(3, line.size())) + "\n";
      } else if (kind == "memo") {
        examples.back().memo += line + "\r\n";  // as the memo's field writes it
      }
    }
  }
  std::erase_if(examples, [](const Example& example) { return example.memo.empty(); });
}

TEST(Document, ShowsWhatItSays) {
  store::Action action;
  std::vector<Example> examples;
  ReadPage(action, examples);
  EXPECT_GT(examples.size(), 30u);
  for (const auto& [memo, shown] : examples) {
    SCOPED_TRACE(memo);
    action[store::kMemo] = platform::ToUtf16(memo.substr(0, memo.size() - 2));
    const std::string result = platform::ToUtf8(actiontext::ParseActionText(action));
    EXPECT_EQ(WithPlainLineEnds(result) + "\n", shown);
  }
}

}  // namespace
