#include "store/user_data_table.h"

#include "store/store_fixture.h"

namespace store_test {
namespace {

using namespace store;

constexpr char16_t kNoon[] = u"2010/06/23 12:00:00";
constexpr char16_t kOne[] = u"2010/06/23 13:00:00";

using MaybeText = std::optional<std::u16string>;

class UserDataTableTest : public StoreTest {
 protected:
  void SetUp() override { CreateFile(); }

  int Rows() {
    EXPECT_EQ(Users().Select(u"select * from t_UserData"), S_OK);
    const int count = Users().RowCount();
    Users().CloseRS();
    return count;
  }
};

TEST_F(UserDataTableTest, EveryColumnComesBack) {
  const std::u16string half(1, u'\xD83D');
  const std::tuple<const char*, ActionColumn, MaybeText, MaybeText> rows[] = {
      {"absent is another thing than empty", kSubject, {}, {}},
      {"empty is another thing than absent", kSubject, u"", u""},
      {"a cut counts 16-bit units, also through a pair", kSubject,
       std::u16string(99, u'x') + u"\U0001F600", std::u16string(99, u'x') + half},
      {"six decimals", kLatitude, u"35.5", u"35.500000"},
      {"a number ends at the first letter", kLongitude, u" -139.6917064abc", u"-139.691706"},
      {"words are no number", kLatitude, u"inf", u"0.000000"},
      {"an exponent", kLatitude, u"1.5e2", u"150.000000"},
  };
  int number = 0;
  for (const auto& [why, column, written, read] : rows) {
    SCOPED_TRACE(why);
    Action action = MakeAction(kNoon, kOne);
    action[column] = written;
    action[kActId] = u"ID'or 1=1 or " + core::ZeroPadded(++number, 1) + u"  >'";
    ASSERT_EQ(Users().Insert(action), 0);
    Action byId, bySelect;
    ASSERT_EQ(Users().ReadById(*action[kActId], byId), 0);
    ASSERT_EQ(Users().Select(SelectByIdSql(*action[kActId])), 0);
    ASSERT_EQ(Users().GetNextRS(bySelect), 0);
    Users().CloseRS();
    EXPECT_EQ(Readable(byId[column]), Readable(read));
    EXPECT_EQ(bySelect, byId);
  }
}

TEST_F(UserDataTableTest, WhatSomebodyElseHasWrittenIsCutAsItIsRead) {
  const auto id = InsertAction(kNoon);
  dbSession().Session->Execute(
      u"update t_UserData set f_nvcMemo=replace(hex(zeroblob(3000)),'00',"
      u"'長'), f_nvcPlace=cast(x'fffe61' as text)");
  Action read;
  ASSERT_EQ(Users().ReadById(id, read), 0);
  EXPECT_EQ(read[kMemo], std::u16string(2000, u'長'));
  EXPECT_EQ(read[kPlace], u"\uFFFD\uFFFDa");
}

TEST_F(UserDataTableTest, InsertRefuses) {
  const std::tuple<const char*, MaybeText, MaybeText, MaybeText, int> rows[] = {
      {"an id of 17", u"ID201006231200000", kNoon, kOne, 0},
      {"no start", {}, {}, kOne, -107},
      {"a short start", {}, u"2010/06/23 12:00", kOne, -109},
      {"a start on a day that does not exist", {}, u"2010/02/29 12:00:00", kOne, -101},
      {"an end of 24:00:01", {}, u"2010/06/23 00:00:00", u"2010/06/23 24:00:01", -103},
      {"a start of 24:00:00", {}, u"2010/06/23 24:00:00", u"2010/06/24 01:00:00", -104},
      {"24:00:00 after a start at noon", {}, kNoon, u"2010/06/23 24:00:00", -105},
      {"an end before the start", {}, kOne, kNoon, -106},
  };
  EXPECT_EQ(CheckActionTimes(MakeAction(kNoon, kNoon)), 0) << "a running Action";
  EXPECT_EQ(CheckActionTimes(MakeAction(u"2010/06/22 00:00:00", u"2010/06/23 24:00:00")), 0);
  for (const auto& [why, id, start, end, code] : rows) {
    SCOPED_TRACE(why);
    Action action;
    action[kActId] = id;
    action[kStaDateTime] = start;
    action[kEndDateTime] = end;
    EXPECT_EQ(CheckActionTimes(action), code);
    EXPECT_EQ(static_cast<uint32_t>(Users().Insert(action)), 0x80070057u);
    EXPECT_EQ(action[kActId], id) << "a made id is taken out again";
  }
  EXPECT_EQ(Rows(), 0);
}

TEST_F(UserDataTableTest, InsertMakesTheIdAndEveryWriteTheStamp) {
  Action action = MakeAction(kNoon, kOne);
  action[kLastUpdate] = u"whatever the caller put there";
  host.draws = {32767, 0};  // the first gives an id of 19 characters
  ASSERT_EQ(Users().Insert(action), 0);
  EXPECT_EQ(action[kActId], u"ID2010062310453000");
  host.now.second = 31;
  Action changed = MakeAction(kNoon, kOne);
  changed[kActId] = u"ID9999999999999999";
  ASSERT_EQ(Users().Update(u"ID2010062310453000", changed), 0);
  Action read;
  ASSERT_EQ(Users().ReadById(u"ID2010062310453000", read), 0);
  EXPECT_EQ(read[kActId], u"ID2010062310453000") << "the id never changes";
  EXPECT_EQ(read[kLastUpdate], u"2010/06/23 10:45:31");
}

TEST_F(UserDataTableTest, OnlyTheFirstOfEqualIdsIsTouched) {
  for (const char16_t* place : {u"first", u"second"}) {
    Action action = MakeAction(kNoon, kOne);
    action[kActId] = u"ID2010062312000000";
    action[kPlace] = place;
    ASSERT_EQ(Users().Insert(action), 0);
  }
  ASSERT_EQ(Users().Delete(u"ID2010062312000000"), 0);
  EXPECT_EQ(Rows(), 1);
  Action read;
  ASSERT_EQ(Users().ReadById(u"ID2010062312000000", read), 0);
  EXPECT_EQ(read[kPlace], u"second");
}

TEST_F(UserDataTableTest, MissingIdIsNotFound) {
  Action action = MakeAction(kNoon, kOne);
  Action read = action;
  EXPECT_EQ(static_cast<uint32_t>(Users().Update(u"ID2010062312000000", action)), 0x80040E19u);
  EXPECT_EQ(static_cast<uint32_t>(Users().Delete(u"ID2010062312000000")), 0x80040E19u);
  EXPECT_EQ(static_cast<uint32_t>(Users().ReadById(u"ID2010062312000000", read)), 0x80040E19u);
  EXPECT_EQ(read, Action());
  EXPECT_EQ(static_cast<uint32_t>(Users().Update(u"ID", action)), 0x80070057u);
  EXPECT_EQ(static_cast<uint32_t>(Users().Delete(u"ID")), 0x80070057u);
}

TEST_F(UserDataTableTest, FiftyTakenIdsEndInAMessage) {
  Action action = MakeAction(kNoon, kOne);
  host.draws = {7};
  ASSERT_EQ(Users().Insert(action), 0);
  host.draws.assign(50, 7);
  host.draws[3] = 32767;
  host.answers = {"アクションの作成失敗|ユニークキーの生成に失敗しました。"};
  Action late = MakeAction(kNoon, kOne);
  EXPECT_EQ(static_cast<uint32_t>(Users().Insert(late)), 0x80004004u);
  EXPECT_TRUE(host.draws.empty());
  EXPECT_EQ(Rows(), 1);
}

TEST_F(UserDataTableTest, RowSetEndsRestartsAndCloses) {
  for (int i = 0; i < 2; ++i) InsertAction(kNoon);
  constexpr std::u16string_view kOneColumn[] = {u"F_NCHACTID"};
  std::optional<std::u16string> id;
  ASSERT_EQ(Users().GetRS(u"select * from t_UserData", kOneColumn), 0);
  for (int round = 0; round < 2; ++round) {
    SCOPED_TRACE(round);
    for (int i = 0; i < 2; ++i) {
      EXPECT_EQ(Users().CRowsetTable::GetNextRS({&id, 1}, 2), 0) << "one row, also of two asked";
      EXPECT_TRUE(id);
    }
    for (int i = 0; i < 2; ++i) {
      EXPECT_EQ(Users().CRowsetTable::GetNextRS({&id, 1}), 0x00040EC6) << "the end stays the end";
      EXPECT_FALSE(id);
    }
    EXPECT_EQ(Users().RestartRS(), 0);
  }
  EXPECT_EQ(Users().CloseRS(), 0);
  EXPECT_LT(Users().CRowsetTable::GetNextRS({&id, 1}), 0);
  constexpr std::u16string_view kMissing[] = {u"f_none"};
  EXPECT_EQ(static_cast<uint32_t>(Users().GetRS(u"select * from t_UserData", kMissing)),
            0x80004005u);
}

}  // namespace
}  // namespace store_test
