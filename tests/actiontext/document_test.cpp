// Every example of docs/action-text.md shows what the document says it does.
#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <string>
#include <vector>

#include "actiontext/action_text.h"
#include "platform/utf.h"

namespace {

struct Example {
  std::string memo;
  std::string shown;
  int line;
};

void AddLine(std::string& text, bool first, const std::string& line) {
  if (!first) text += "\r\n";  // as the memo's field writes it
  text += line;
}

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
  bool begins = true;
  bool inResult = false;
  for (int number = 1; std::getline(document, line); ++number) {
    if (line.starts_with("```")) {
      block = block.empty() ? line.substr(3) : "";
      begins = true;
    } else if (block == "action") {
      SetField(action, line);
    } else if (block == "memo" && line.empty()) {
      begins = true;
    } else if (block == "memo" && line.starts_with("=>")) {
      ASSERT_FALSE(begins) << "a result without a memo in line " << number;
      AddLine(examples.back().shown, !inResult, line.size() > 3 ? line.substr(3) : "");
      inResult = true;
    } else if (block == "memo") {
      if (begins) examples.push_back({"", "", number});
      AddLine(examples.back().memo, begins, line);
      begins = false;
      inResult = false;
    }
  }
}

TEST(Document, ShowsWhatItSays) {
  store::Action action;
  std::vector<Example> examples;
  ReadDocument(action, examples);
  EXPECT_GT(examples.size(), 30u);
  for (const Example& example : examples) {
    SCOPED_TRACE("line " + std::to_string(example.line) + ": " + example.memo);
    action[store::kMemo] = platform::ToUtf16(example.memo);
    EXPECT_EQ(WithPlainLineEnds(platform::ToUtf8(actiontext::ParseActionText(action))),
              WithPlainLineEnds(example.shown));
  }
}

}  // namespace
