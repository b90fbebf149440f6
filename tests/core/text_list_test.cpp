#include "core/text_list.h"

#include <gtest/gtest.h>

namespace {

TEST(TextList, KeepsTheOthersWhenOneGoesOrComes) {
  core::TextList list;
  for (const char16_t* text : {u"会社", u"", u"自宅", u"公園"}) list.Append(text);
  list.RemoveAt(0);
  list.RemoveAt(1);
  list.InsertAt(2, u"学校");
  list.InsertAt(1, u"公園");
  list.RemoveAt(2);
  ASSERT_EQ(list.Count(), 3u);
  EXPECT_EQ(list.At(0), u"");
  EXPECT_EQ(list.At(1), u"公園");
  EXPECT_EQ(list.At(2), u"学校");
  const core::TextList copy = list;
  list.Clear();
  EXPECT_TRUE(list.Empty());
  EXPECT_EQ(copy.At(2), u"学校");
}

}  // namespace
