#include "core/app_state.h"

#include <gtest/gtest.h>

#include "core/action_id.h"
#include "support/fake_host.h"

namespace {

using namespace core;

using Entries = std::vector<std::u16string>;

TEST(AppState, SetsTheCurrentDateOrLeavesIt) {
  EXPECT_EQ(SetCurDate(u"2010/6/23"), 0);
  EXPECT_EQ(CurDate(), u"2010/06/23");
  EXPECT_EQ(SetCurDate(u"2010/6/31"), -1);
  EXPECT_EQ(CurDate(), u"2010/06/23");
}

TEST(AppState, KnowsTheHalfHours) {
  const testing_support::FakeHost host;
  const CAppState app;
  EXPECT_EQ(app.HalfHourTable[0], u"00:00");
  EXPECT_EQ(app.HalfHourTable[1], u"00:30");
  EXPECT_EQ(app.HalfHourTable[47], u"23:30");
  EXPECT_EQ(app.HalfHourTable[48], u"24:00");
}

TEST(HistoryList, MovesToTheFrontAndDropsTheLast) {
  HistoryList list(3);
  list.Add(u"");
  EXPECT_TRUE(list.Entries().empty()) << "an empty text does nothing";
  for (const char16_t* text : {u"a", u"b", u"c"}) list.Add(text);
  EXPECT_EQ(list.Entries(), (Entries{u"c", u"b", u"a"}));
  list.Add(u"c");
  EXPECT_EQ(list.Entries(), (Entries{u"c", u"b", u"a"})) << "it stands there already";
  list.Add(u"a");
  EXPECT_EQ(list.Entries(), (Entries{u"a", u"c", u"b"})) << "from the last slot of a full list";
  list.Add(u"A");
  EXPECT_EQ(list.Entries(), (Entries{u"A", u"a", u"c"})) << "case counts, the last goes";
  list.Add(std::u16string_view(list.Entries()[2]));
  EXPECT_EQ(list.Entries(), (Entries{u"c", u"A", u"a"})) << "an entry of the list itself";
  const std::u16string longText(30, u'x');  // not inside the text object
  list.Add(longText);
  list.Add(u"1");
  list.Add(u"2");
  list.Add(std::u16string_view(list.Entries()[2]).substr(5));
  EXPECT_EQ(list.Entries(), (Entries{longText.substr(5), u"2", u"1"})) << "a part of the last";
}

TEST(ActionId, HoldsTheClockAndTheDraw) {
  testing_support::FakeHost host;
  host.now = {2010, 1, 2, 3, 4, 5};
  host.draws = {0, 16384, 32766, 32767};
  EXPECT_EQ(GenerateActId(), u"ID2010010203040500");
  EXPECT_EQ(GenerateActId(), u"ID2010010203040550");
  EXPECT_EQ(GenerateActId(), u"ID2010010203040599");
  const std::u16string tooLong = GenerateActId();
  EXPECT_EQ(tooLong, u"ID20100102030405100");
  EXPECT_EQ(CheckActId(tooLong), -1);
  EXPECT_EQ(CheckActId(u"ID2010010203040599"), 0);
  EXPECT_EQ(CheckActId(u"id2010010203040599"), -2);
  EXPECT_EQ(CheckActId(u""), -1);
}

}  // namespace
