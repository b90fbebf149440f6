// Every example of docs/action-text.md shows what the document says it does.
#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <string>
#include <vector>

#include "actiontext/action_text.h"
#include "platform/utf.h"

namespace {

// Every line of it is ended.
struct Example {
  std::string memo;
  std::string shown;
  int line;
};

// The document does not tell one line end from another.
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
void ReadDocument(store::Action& action, std::vector<Example>& examples) {
  std::ifstream document(MORVENLY_DOCS "/action-text.md");
  ASSERT_TRUE(document) << "docs/action-text.md is missing";
  std::string block;
  std::string line;
  for (int number = 1; std::getline(document, line); ++number) {
    const bool isFence = line.starts_with("```");
    if (isFence) block = block.empty() ? line.substr(3) : "";
    if (isFence || line.empty()) {
      examples.push_back({"", "", number});
    } else if (block == "action") {
      SetField(action, line);
    } else if (block == "memo" && line.starts_with("=>")) {
      ASSERT_FALSE(examples.back().memo.empty()) << "a result without a memo in line " << number;
      examples.back().shown += line.substr(std::min<size_t>(3, line.size())) + "\n";
    } else if (block == "memo") {
      examples.back().memo += line + "\r\n";  // as the memo's field writes it
    }
  }
  std::erase_if(examples, [](const Example& example) { return example.memo.empty(); });
}

TEST(Document, ShowsWhatItSays) {
  store::Action action;
  std::vector<Example> examples;
  ReadDocument(action, examples);
  EXPECT_GT(examples.size(), 30u);
  for (const auto& [memo, shown, line] : examples) {
    SCOPED_TRACE("behind line " + std::to_string(line) + ": " + memo);
    action[store::kMemo] = platform::ToUtf16(memo.substr(0, memo.size() - 2));
    const std::string result = platform::ToUtf8(actiontext::ParseActionText(action));
    EXPECT_EQ(WithPlainLineEnds(result) + "\n", shown);
  }
}

}  // namespace
