// What the words after the program's name ask for.
#include "app/command_line.h"

#include <gtest/gtest.h>

#include <vector>

namespace {

using namespace app;

CommandLine Read(std::vector<std::string> words) {
  words.insert(words.begin(), "morvenly");
  std::vector<char*> argv;
  for (std::string& word : words) argv.push_back(word.data());
  argv.push_back(nullptr);
  return ReadCommandLine(static_cast<int>(words.size()), argv.data());
}

TEST(CommandLine, TakesItsWordsAndRefusesEveryOther) {
  EXPECT_FALSE(Read({}).refused);
  EXPECT_EQ(Read({}).firstScreen, FirstScreen::kBySetting);
  EXPECT_EQ(Read({"--new"}).firstScreen, FirstScreen::kNewAction);
  EXPECT_EQ(Read({"--recorder", "--folder", "a b"}).firstScreen, FirstScreen::kRecorder);
  EXPECT_EQ(Read({"--recorder", "--folder", "a b"}).folder, "a b");
  EXPECT_EQ(Read({"--folder=日記"}).folder, "日記");
  EXPECT_EQ(Read({"--sample", "x"}).sampleFolder, "x");
  for (const std::vector<std::string>& words : {std::vector<std::string>{"--nwe"},
                                                {"-x"},
                                                {"diary"},
                                                {"--folder"},
                                                {"--folder="},
                                                {"--folder", "--new"},
                                                {"--new=1"},
                                                {"--new", "diary"},
                                                {"--", "diary"},
                                                {""}}) {
    EXPECT_TRUE(Read(words).refused) << words.front();
  }
}

}  // namespace
