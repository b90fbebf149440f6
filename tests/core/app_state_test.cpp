#include "core/app_state.h"

#include <gtest/gtest.h>

#include "core/action_id.h"
#include "core/text_list.h"
#include "support/fake_host.h"

namespace {

using namespace core;

using Entries = std::vector<std::u16string>;

TEST(HistoryList, MovesToTheFrontAndDropsTheLast) {
  HistoryList list(3);
  for (const char16_t* text : {u"", u"a", u"b", u"c", u"c"}) list.Add(text);
  EXPECT_EQ(list.Entries(), (Entries{u"c", u"b", u"a"}));
  list.Add(u"a");
  EXPECT_EQ(list.Entries(), (Entries{u"a", u"c", u"b"})) << "from the last slot of a full list";
  list.Add(u"A");
  EXPECT_EQ(list.Entries(), (Entries{u"A", u"a", u"c"})) << "case counts, the last goes";
  const std::u16string longText(30, u'x');  // not inside the text object
  for (const std::u16string& text : Entries{longText, u"1", u"2"}) list.Add(text);
  list.Add(std::u16string_view(list.Entries()[2]).substr(5));
  EXPECT_EQ(list.Entries(), (Entries{longText.substr(5), u"2", u"1"})) << "a part of the last";
}

TEST(PlaceHistory, MayKeepMovementsOut) {
  const testing_support::FakeHost host;
  CAppState app;
  const std::tuple<const char*, int, std::u16string, std::u16string, bool> rows[] = {
      {"a place", 1, u"→", u"会社", true},
      {"a movement", 1, u"→", u"会社→自宅", false},
      {"a movement, where they are wanted", 0, u"→", u"会社→自宅", true},
      {"a number that no option writes", 2, u"→", u"会社→自宅", false},
      {"with an empty separator every place is a movement", 1, u"", u"駅", false},
  };
  for (const auto& [why, setting, separator, place, remembered] : rows) {
    SCOPED_TRACE(why);
    app.PlaceHistory.Clear();
    app.NoMemPlaceSepaStr = setting;
    app.PlaceSepaStr = separator;
    RememberPlace(app, place);
    EXPECT_EQ(!app.PlaceHistory.Entries().empty(), remembered);
  }
}

TEST(TextList, KeepsTheOthersWhenOneGoesOrComes) {
  TextList list;
  for (const char16_t* text : {u"会社", u"", u"自宅", u"公園"}) list.Append(text);
  list.RemoveAt(0);
  list.RemoveAt(1);
  list.InsertAt(2, u"学校");
  list.InsertAt(1, u"公園");
  list.RemoveAt(2);
  list.RemoveAt(3);
  ASSERT_EQ(list.Count(), 3u);
  EXPECT_EQ(list.At(3), u"");
  EXPECT_EQ(list.At(static_cast<size_t>(-1)), u"");
  EXPECT_EQ(list.At(0), u"");
  EXPECT_EQ(list.At(1), u"公園");
  EXPECT_EQ(list.At(2), u"学校");
  for (int i = 0; i < 1000; ++i) {
    list.RemoveAt(2);
    list.InsertAt(2, u"学校");
  }
  EXPECT_LT(list.At(2).data() - list.At(1).data(), 20) << "what was removed takes no room";
  const TextList copy = list;
  list.Clear();
  EXPECT_TRUE(list.Empty());
  EXPECT_EQ(copy.At(2), u"学校");
}

TEST(ActionId, HoldsTheClockAndTheDraw) {
  testing_support::FakeHost host;
  host.now = {2010, 1, 2, 3, 4, 5};
  host.draws = {0, 16384, 32766, 32767};
  for (const char16_t* id : {u"ID2010010203040500", u"ID2010010203040550", u"ID2010010203040599"}) {
    EXPECT_EQ(GenerateActId(), id);
    EXPECT_EQ(CheckActId(id), 0);
  }
  EXPECT_EQ(GenerateActId(), u"ID20100102030405100");
  EXPECT_EQ(CheckActId(u"ID20100102030405100"), -1);
  EXPECT_EQ(CheckActId(u"id2010010203040599"), -2);
}

}  // namespace
