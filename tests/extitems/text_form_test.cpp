// The text form: what reads, where a fault stops, and what comes back of what was written.
#include "extitems/text_form.h"

#include <gtest/gtest.h>

#include "platform/utf.h"

namespace {

using namespace extitems;
using namespace std::string_view_literals;

// name=value of each item, one blank between.
std::u16string Shown(const ExtItemList& list) {
  std::u16string out;
  for (const ExtItem& item : list) {
    if (!out.empty()) out += u' ';
    out += item.name + u'=' + item.value.value_or(u"(absent)");
  }
  return out;
}

TEST(ExtItemText, Reads) {
  const std::tuple<std::u16string_view, bool, std::u16string_view, const char*> rows[] = {
      {u"", true, u"", "no items"},
      {u"Persons:人数:int:3:", true, u"Persons=3", "one item"},
      {u" Persons : 人数 : int : 3 : ", true, u"Persons=3", "blanks round each field"},
      {u"Persons:人数:int:3", false, u"Persons=3", "the last colon may be missing"},
      {u"a:b:int:1:a:c:int:2:", true, u"a=1", "the first of a name stays"},
      {u"b:x:int:1:a:y:int:2:", true, u"a=2 b=1", "sorted"},
      {u"a:b:int:x:c:d:int:5:", true, u"c=5", "a bad number is left out"},
      {u"a:b:int: :c:d:int:5:", true, u"c=5", "a blank one too"},
      {u"a:b:int: ", false, u"", "a blank is none"},
      {u"a:b:string::c:d:int:5:", false, u"", "an absent text stops the reading"},
      {u"a:b:date:\"x\":c:d:int:5:", true, u"c=5", "a bad date doesn't"},
      {u"a:b:date:\"2010/1/2\":t:b:File:\"\\\\x\":", true, u"a=2010/1/2 t=\\x",
       "checked unescaped"},
      {u"a:b:File:\"\\x\":c:d:int:5:", true, u"c=5", "which leaves no backslash here"},
      {u"n:l:xyz:5:c:d:int:5:", true, u"c=5", "one character of an unknown type is passed over"},
      {u"n:l:xyz:55:c:d:int:5:", false, u"", "a second one is a fault"},
      {u"n:l:int9 int:5:", true, u"", "and the type is what stands before the blank"},
      {u"n:l:string: \"a\" : ", true, u"n=a", "blanks round a quoted value"},
      {u"n:l:string:\"a\\\"b\\\\c\":", true, u"n=a\"b\\c", "escapes"},
      {u"n:l:string:\"\\x41g\\x0042\\x4g\\x5\\n\\x\":"sv, true, u"n=AB\x04\x05\n\0"sv,
       "digits of every length; g is one, not converted"},
      {u"n:l:string:\"a\\q\":", false, u"", "an unknown escape"},
      {u"n:l:string:\"aé:c:d:int:5:", true, u"c=5",
       "a gap ends the value; a colon after it goes on"},
      {u"n:l:string:\"a", false, u"", "ends in a value"},
      {u"n:l:string:x:c:d:int:5:", true, u"c=5", "no quotation mark"},
      {u"9:l:int:1:", false, u"", "a name begins with a letter"},
      {u"a:b:int:1:c", false, u"a=1", "what was read stays"},
  };
  for (const auto& [text, reads, items, why] : rows) {
    SCOPED_TRACE(platform::ToUtf8(text) + "  " + why);
    ExtItemList list = {{u"old", u"old", u"int", u"0"}};
    EXPECT_EQ(ParseExtItems(list, text) == 0, reads);
    EXPECT_EQ(Shown(list), items);
  }
}

TEST(ExtItemText, WritesWhatItReads) {
  const ExtItemList list = {
      {u"D", u"日付", u"date", u"2010/1/2"}, {u"E", u"e", u"string", u""},
      {u"F", u"額", u"float", u"-1.5"},      {u"Note", u"備考", u"mlstring", u"a\nb\t\"'\\"},
      {u"P", u"p", u"File", u"\\a\\b.txt"},  {u"Persons", u"人数", u"int", u"3"},
  };
  const std::u16string text = WriteExtItems(list);
  EXPECT_EQ(text,
            u"D:日付:date:\"2010/1/2\":E:e:string:\"\":F:額:float:-1.5:"
            u"Note:備考:mlstring:\"a\\nb\\t\\\"\\'\\\\\":P:p:File:\"\\\\a\\\\b.txt\":"
            u"Persons:人数:int:3:");
  ExtItemList back;
  EXPECT_EQ(ParseExtItems(back, text), 0);
  EXPECT_EQ(back, list);

  EXPECT_EQ(WriteExtItems({}), u"");
  EXPECT_EQ(
      WriteExtItems({{u"a", u"", u"string", std::nullopt}, {u"b", u"l", u"int", std::nullopt}}),
      u"a::string::b:l:int::");
  EXPECT_EQ(WriteExtItems({{u"a", u"l", u"xyz", u"5"}}), u"a:l:xyz::");
}

TEST(ExtItemList, KeepsTheFirstOfAName) {
  ExtItemList list;
  for (const char16_t* name : {u"b", u"B", u"c"}) {
    EXPECT_TRUE(AddExtItem(list, {name, u"l", u"int", u"1"}));
  }
  EXPECT_FALSE(AddExtItem(list, {u"b", u"l", u"int", u"2"}));
  EXPECT_EQ(Shown(list), u"B=1 b=1 c=1");
  EXPECT_EQ(FindExtItem(list, u"b"), 1u);
  EXPECT_EQ(FindExtItem(list, u"a"), std::nullopt);
}

}  // namespace
