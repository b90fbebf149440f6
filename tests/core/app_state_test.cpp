#include "core/app_state.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>

#include "core/action_id.h"
#include "core/text.h"
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

std::u16string RandomText(std::minstd_rand& chance) {
  static constexpr std::u16string_view kOdd[] = {u"", u"学校", u"2010/06/23 1:00:00", u"id", u"ID"};
  const std::u16string digits = ZeroPadded(static_cast<int>(chance() % 3000), 4);
  switch (chance() % 8) {
    case 0:
      return std::u16string(kOdd[chance() % std::size(kOdd)]);
    case 1:
      return u"2010/06/2x " + digits;  // as long as nothing that is packed
    case 2:
      return u"ID99999999999999" + digits.substr(2);
    default:
      return u"2010/" + digits.substr(0, 2) + u'/' + digits.substr(2) + u" 24:00:00";
  }
}

TEST(TextList, IsAListWhateverItHoldsAndItsCopiesKeepWhatTheyHad) {
  std::minstd_rand chance;
  TextList list, copy;
  std::vector<std::u16string> expected, copied;
  const auto expectTexts = [](const TextList& found, const std::vector<std::u16string>& texts) {
    ASSERT_EQ(found.Count(), texts.size());
    for (size_t i = 0; i < texts.size(); ++i) ASSERT_EQ(found.At(i), texts[i]) << i;
    EXPECT_EQ(found.At(texts.size()), u"");
  };
  for (int step = 0; step < 12'000; ++step) {
    const std::u16string text = RandomText(chance);
    const size_t place = chance() % (expected.size() + 1);
    if (step < 3'000 || chance() % 2 == 0) {
      list.InsertAt(place, text);
      expected.insert(expected.begin() + static_cast<ptrdiff_t>(place), text);
    } else if (place < expected.size()) {
      list.RemoveAt(place);
      expected.erase(expected.begin() + static_cast<ptrdiff_t>(place));
    }
    if (!expected.empty()) {
      const size_t other = chance() % expected.size();
      const int order = text.compare(expected[other]);
      ASSERT_EQ(list.Compare(text, other) < 0, order < 0);
      ASSERT_EQ(list.Compare(text, other) > 0, order > 0);
      ASSERT_EQ(list.Holds(other, text), order == 0);
      const std::u16string day = text.substr(0, 10);
      ASSERT_EQ(list.IsOnDay(other, day), expected[other].starts_with(day));
    }
    if (step % 1'500 == 0) {
      expectTexts(list, expected);
      expectTexts(copy, copied);
      copy = list;
      copied = expected;
    }
  }
}

TEST(NumberList, FindsANumberWhereverItStands) {
  std::minstd_rand chance;
  NumberList list;
  for (uint64_t i = 0; i < 5'000; ++i)
    list.InsertAt(list.Count() - std::min(list.Count(), size_t{chance() % 50}), i);
  list.InsertAt(10, 9'000);
  list.InsertAt(4'000, 3);
  for (const uint64_t number : {0, 1, 500, 2'500, 4'999, 9'000}) {
    ASSERT_LT(list.Find(number), list.Count());
    EXPECT_EQ(list.At(list.Find(number)), number);
  }
  EXPECT_EQ(list.Find(7'000), list.Count());
  for (size_t block = 0; block < list.Blocks(); ++block) {
    EXPECT_EQ(list.Greatest(block), std::ranges::max(list.Block(block)));
    EXPECT_EQ(list.BlockOf(list.Begin(block)), block);
  }
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
