// Whole memos: what a user writes, and what the screen shows.
#include "actiontext/action_text.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "core/text.h"
#include "platform/utf.h"
#include "support/fake_host.h"

namespace {

using actiontext::ParseActionText;

store::Action Meeting(std::u16string_view memo) {
  store::Action action;
  action[store::kActId] = u"ID2010111409000042";
  action[store::kStaDateTime] = u"2010/11/14 09:00:00";
  action[store::kSubject] = u"会議";
  action[store::kCategory1] = u"仕事";
  action[store::kMemo] = memo;
  action[store::kExtItems] = u"Persons:人数:int:3:";
  return action;
}

struct Row {
  std::u16string_view memo;
  std::u16string_view shown;
  const char* why;
};

template <size_t kRows>
void ExpectShown(const Row (&rows)[kRows]) {
  for (const Row& row : rows) {
    SCOPED_TRACE(platform::ToUtf8(row.memo) + "\n" + row.why);
    EXPECT_EQ(ParseActionText(Meeting(row.memo)), row.shown);
  }
}

TEST(ActionText, CopiesTextAndInsertsValues) {
  const Row rows[] = {
      {u"", u"", "nothing"},
      {u"価格 ##5 #1/0#", u"価格 #5 (can't 0 div.)", "a doubled mark; a fault is a text"},
      {u"#1 2#", u"1", "2 counts as the closing mark, and the last mark is dropped"},
      {u"#1 2#3", u"1", "what follows that mark is code, whose number touches the end"},
      {u"##", u"#", "one mark"},
      {u"#", u"", "a lone mark"},
      {u"x#", u"x", "a mark at the end"},
      {u"# #", u"", "blanks are no failure"},
      {u"#50 #% done", u"50% done", "blanks before the closing mark"},
      {u"#a=1;\na#", u"a", "a line break is no blank: the code ends there"},
      {u"#SIPlace#|#SIMemo#", u"|#SIPlace#|#SIMemo#", "an absent column; the memo itself"},
      {u"#1.5#|#0.1+0.2#|#1e5#", u"1.5|0.3|15",
       "no exponents in code: e counts as the closing mark"},
  };
  ExpectShown(rows);
}

TEST(ActionText, NeedsACharacterAfterACode) {
  const Row rows[] = {
      {u"a#1", u"a", "the number touches the end"},
      {u"a#1 ", u"a", "the operator is still expected"},
      {u"a#1;", u"a", "the value is dropped"},
      {u"a#if (1) {\"y\"}", u"ay", "a statement is complete by itself"},
      {u"a#if (1) {\"y\"} else", u"ay", "even there"},
      {u"a#if (1) {\"y\"} b", u"a", "but b is an expression again"},
  };
  ExpectShown(rows);
}

TEST(ActionText, Decides) {
  const Row rows[] = {
      {u"#if(0){\"a\"}else if(1){\"b\"}else{\"c\"}#", u"b", "else if, without blanks"},
      {u"#if (1) {\"a\"} else if (1) {\"b\"} else {\"c\"}#", u"a", "only one branch runs"},
      {u"#if (1) {\"a\"} else if (x = 5) {\"b\"} x#", u"5", "its condition is evaluated still"},
      {u"#if (\"\") {\"y\"} else {\"n\"}#", u"y", "a string at the head is true"},
      {u"#if (0) {\"a\"} else if (\"x\") {\"b\"} else {\"c\"}#", u"c",
       "further on it is what was before"},
      {u"#if (Length(1)) {\"y\"} else {\"n\"}#", u"y", "nothing leaves the verdict"},
      {u"#if (1) {1; 2}#", u"2", "the last value of a block"},
      {u"#if (1) {}#", u"", "an empty block"},
      {u"#if (1) {1 if (1) {2}}#", u"1", "a nested value passes the block by and lies below"},
      {u"#if (1) {if (1) {2} ;}#", u"2", "so no semicolon of the block drops it"},
      {u"#if (0) {\"}\" {\"\\\"}\"} } else {\"n\"}#", u"n",
       "braces, strings and escapes passed over"},
      {u"#if (0) {#not code} else {3}#", u"3", "what is passed over is not read"},
      {u"#if (0) oops} else {3}#", u"3", "up to the first brace"},
      {u"#if (1) oops} else {3}#", u" else {3}",
       "a block is mandatory where it runs: oops is read as an expression, the brace ends it"},
      {u"a#if (0) {\"x#b", u"a", "nothing closes it"},
      {u"#if (1) {1} else oops#3", u"1", "a failed else is no failure"},
      {u"#if (1) {1}; 2#", u" 2", "a semicolon after a block is a failure"},
      {u"#if (1) {x = 7} elsewhere#!", u"7", "four here: passing over where goes to the end"},
      {u"#if (1 {2}#!", u"2}", "no parenthesis"},
  };
  ExpectShown(rows);
}

TEST(ActionText, AsksTheHost) {
  testing_support::FakeHost host;
  host.now = {2009, 3, 7, 8, 5, 9};
  host.draws = {0, 32767, 16384, 32767, 32767};
  EXPECT_EQ(ParseActionText(Meeting(u"#LocalTime()#")), u"2009/03/07 08:05:09");
  EXPECT_EQ(ParseActionText(Meeting(u"#Rand(6)# #Rand(6)# #Rand(6)# #Rand(1)# #Rand(-6)#")),
            u"0 5 3 0 -5");
}

TEST(ActionText, ReadsItemsByType) {
  store::Action action =
      Meeting(u"#I+1#|#F+1#|#S+1#|#D#|#T#|#DT#|#P#|#M#|#SISubject#|#SILatitude#|#SILongitude*2#");
  action[store::kExtItems] =
      u"I:i:int:- 7:F:f:float:1e+1:S:s:string:\"a\\x3042\":D:d:date:\"2010/1/2\":"
      u"T:t:time:\"7:5:0\":DT:x:datetime:\"2010/1/2 7:5:0\":P:p:File:\"\\\\a\":"
      u"M:m:mlstring:\"1\\n2\":SISubject:s:string:\"own\":I:second:int:9:";
  action[store::kLatitude] = u"35.681237";
  action[store::kLongitude] = u"";
  EXPECT_EQ(ParseActionText(action),
            u"1|11|aあ1|2010/1/2|7:5:0|2010/1/2 7:5:0|\\a|1\n2|own|35.6812|0");
}

TEST(ActionText, EndsHoweverDeepAndLong) {
  const auto times = [](size_t count, std::u16string_view piece) {
    std::u16string text;
    for (size_t i = 0; i < count; ++i) text += piece;
    return text;
  };
  const auto shown = [](std::u16string_view memo) { return ParseActionText(Meeting(memo)); };

  for (const size_t depth : {size_t{1000}, size_t{100000}}) {
    SCOPED_TRACE(depth);
    const bool fits = depth == 1000;
    EXPECT_EQ(shown(u"#" + times(depth, u"(") + u"7" + times(depth, u")") + u"#") == u"7", fits);
    EXPECT_EQ(shown(u"#" + times(depth, u"-") + u"7#") == u"7", fits);
    EXPECT_EQ(shown(u"#" + times(depth, u"if(1){") + u"7" + times(depth, u"}") + u"#") == u"7",
              fits);
    EXPECT_EQ(shown(u"#" + times(depth, u"Length(") + times(depth, u")") + u"#") == u"7", false);
    EXPECT_EQ(shown(u"#if (0)" + times(depth, u"{") + times(depth, u"}") + u" 7 #"), u"7");
  }

  const std::u16string sum = u"#\"\"" + times(250000, u"+\"a\"") + u"#";
  EXPECT_EQ(shown(sum), times(250000, u"a"));
  EXPECT_EQ(shown(times(333333, u"#1#")), times(333333, u"1"));
  EXPECT_EQ(shown(u"#if(1){" + times(500000, u"1 ") + u"}#"), u"1");

  std::u16string variables;
  for (int i = 0; i < 100000; ++i) {
    variables +=
        u"v" + core::ZeroPadded(i * 7919 % 100000, 5) + u"=" + core::ZeroPadded(i, 1) + u";";
  }
  EXPECT_EQ(shown(u"#" + variables + u"v07919#"), u"1");

  // Of texts a run reads and makes about a million characters.
  const std::u16string doubled = u"#s=\"00\";" + times(15, u"s=s+s;") + u"t=\"\"+s;";
  for (const char16_t* reads :
       {u"\"a\"+s;", u"s==t;", u"IndexOf(s,\"a\");", u"1*s;", u"1.+s;", u"1<s;", u"if(1.<s){s}"}) {
    SCOPED_TRACE(platform::ToUtf8(reads));
    EXPECT_TRUE(shown(doubled + times(10, reads) + u"Length(s)#").ends_with(u"65536"));
    EXPECT_TRUE(shown(doubled + times(20, reads) + u"Length(s)#").ends_with(u"Length(s)"));
  }
  EXPECT_EQ(shown(u"#s=\"00\";" + times(60, u"s=s+s;") + u"# end").substr(0, 5), u"s=s+s");
  EXPECT_EQ(shown(doubled + u"#" + times(20, u"#s#") + u"#Length(s)#").size(), 13 * 65536u + 5);
}

}  // namespace
