#include "exchange/find.h"

#include <random>

#include "exchange/exchange_fixture.h"
#include "exchange/find_dialog.h"

namespace exchange {
namespace {

class FindDialogTest : public ExchangeTest {
 protected:
  FindDialogTest() {
    const std::pair<std::u16string_view, std::u16string_view> kTimes[] = {
        {u"00:00:00", u"24:00:00"}, {u"09:00:00", u"10:00:30"}, {u"12:00:00", u"23:59:59"}};
    for (const auto& [start, end] : kTimes) {
      store::Action action = Of(start, end);
      action[store::kPlace] = end.starts_with(u"24") ? u"O'Neil" : u"office_1";
      Insert(action);
    }
    Insert(Of(u"13:00:00", u"13:00:00"));  // all columns NULL
  }
};

TEST_F(FindDialogTest, FindsByTextTimeAndTarget) {
  struct Row {
    const char* why;
    std::u16string_view text;
    bool inPlace;
    std::u16string_view staDate, staTime, endDate, endTime;
    std::string_view found;
    const char* message = "見つかりました。";
  };
  const std::u16string_view day = u"2010/06/23";
  const Row rows[] = {
      {"no condition", u"x", false, {}, {}, {}, {}, "1234", "4 個のアクションが見つかりました。"},
      {"a quote", u"O'N", true, {}, {}, {}, {}, "1", "1 個のアクションが見つかりました。"},
      {"letters without case, a wildcard", u"OFF%1", true, {}, {}, {}, {}, "23"},
      {"an empty text leaves out NULL", u"", true, {}, {}, {}, {}, "123"},
      {"nothing", u"海", true, {}, {}, {}, {}, "", "該当するアクションはありません。"},
      {"the end's minute counts as a whole", u"", false, {}, {}, day, u"10:00", "2"},
      {"an empty end sorts after every time", u"", false, {}, {}, day, {}, "1234"},
      {"from a time on", u"", false, day, u"12:00", {}, {}, "34"},
      {"whole days before the end's, which ends with the day",
       u"",
       false,
       {},
       u"<終日>",
       day,
       u"<終日>",
       "",
       "該当するアクションはありません。"},
      {"the all-day mark", u"", false, day, u"<終日>", {}, u"<終日>", "1"},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.why);
    CFind find(app);
    find.fields = {};
    find.fields.text = row.text;
    find.fields.inPlace = row.inPlace;
    find.fields.staDate = row.staDate;
    find.fields.staTime = row.staTime;
    find.fields.endDate = row.endDate;
    find.fields.endTime = row.endTime;
    host.answers = {row.message};
    EXPECT_TRUE(find.OnFind());
    EXPECT_EQ(Found(), row.found);
    EXPECT_EQ(app.TotalCount, 4);
  }
  EXPECT_EQ(store::ReloadActionIndex(app), 0);
  EXPECT_EQ(Found(), "1234");
  EXPECT_FALSE(app.FindWhere);
}

TEST_F(FindDialogTest, ALongFindShowsHowFarItIsAndCanBeStopped) {
  app.TotalCount = 100'000;  // as many as it takes to be long
  app.FindWhere = u"f_nvcPlace = 'x'";
  for (const bool stops : {true, false}) {
    SCOPED_TRACE(stops);
    CFind find(app);
    find.fields.text = u"O'N";
    std::vector<int> shown;
    find.OnLongFind([&](int hundredths) {
      shown.push_back(hundredths);
      return !stops;
    });
    host.ticksPerLook = 150;
    if (!stops) host.answers = {"1 個のアクションが見つかりました。"};
    EXPECT_EQ(find.OnFind(), !stops);
    EXPECT_EQ(Found(), stops ? "1234" : "1");
    EXPECT_EQ(app.FindWhere == u"f_nvcPlace = 'x'", stops);
    ASSERT_GE(shown.size(), 2u);
    EXPECT_GT(shown.front(), 9) << "the first 300 ms are not shown";
    EXPECT_EQ(shown.back(), kFindIsThrough);
    EXPECT_EQ(shown.size(), stops ? 2u : 10u);
  }
}

TEST_F(FindDialogTest, FindsInTheOrderOfTheStartsWhateverTheRowIds) {
  std::minstd_rand chance;
  store::Engine& engine = *store::dbSession().Session;
  engine.BeginTransaction();
  for (const char16_t* row :
       {u"-9223372036854775808", u"-7", u"3000000000", u"9223372036854775807"}) {
    engine.Execute(
        std::u16string(u"insert into t_UserData (rowid, f_nchActId, f_nchStaDateTime) values (") +
        row + u", 'ID2010062399999999', '2010/06/23 10:00:00')");
  }
  for (int i = 0; i < 500; ++i) {
    const std::u16string id = u"ID" + core::ZeroPadded(i, 16);
    const std::u16string start =
        u"2010/06/23 1" + core::ZeroPadded(static_cast<int>(chance() % 10), 1) + u":00:00";
    const store::Field row[] = {{u"f_nchActId", id}, {u"f_nchStaDateTime", start}};
    engine.Insert(u"t_UserData", row);
  }
  engine.Commit();
  const FindSpan span{u"2010/06/23", u"10:00:00", {}, {}};
  for (const int rows : {0, 100'000}) {
    app.TotalCount = rows;
    const int found = FindActions(app, span, {}, 0);
    std::array<std::optional<std::u16string>, 2> row;
    const std::array<std::u16string_view, 2> columns = {u"f_nchActId", u"f_nchStaDateTime"};
    store::CRowsetTable& table = *store::dbSession().UserTable;
    ASSERT_EQ(
        table.GetRS(u"select f_nchActId,f_nchStaDateTime from t_UserData where "
                    u"f_nchStaDateTime >= '2010/06/23 10:00:00' order by f_nchStaDateTime asc",
                    columns),
        0);
    size_t position = 0;
    for (; table.GetNextRS(row) == 0; ++position) {
      ASSERT_EQ(app.ActIds.At(position), row[0]);
      ASSERT_EQ(app.ActStarts.At(position), row[1]);
    }
    table.CloseRS();
    EXPECT_EQ(position, static_cast<size_t>(found));
    EXPECT_GT(found, 500);
  }
}

TEST_F(FindDialogTest, AFailedFindKeepsTheDialogAndTheIndex) {
  store::DisconnectDataFile();
  CFind find(app);
  host.answers = {"検索中にエラーが発生しました。"};
  EXPECT_FALSE(find.OnFind());
  EXPECT_EQ(host.messages.back().icon, platform::Icon::kWarning);
  EXPECT_EQ(Found(), "1234");
}

TEST_F(FindDialogTest, TypedTimes) {
  using Text = std::u16string_view;
  const std::tuple<const char*, FindEditor, Text, bool, Text, Text> rows[] = {
      {"four digits", FindEditor::kStartTime, u"0930", true, u"09:30", u"08:00"},
      {"the end of the day", FindEditor::kEndTime, u"2400", true, u"08:00", u"24:00"},
      {"empty", FindEditor::kEndTime, u"", true, u"08:00", u""},
      {"the mark stands for both", FindEditor::kStartTime, u"<終日>", true, u"<終日>", u"<終日>"},
      {"no time", FindEditor::kStartTime, u"25:00", false, u"08:00", u"08:00"},
      {"no mark for the end", FindEditor::kEndTime, u"<終日>", false, u"08:00", u"08:00"},
  };
  for (const auto& [why, editor, typed, taken, staTime, endTime] : rows) {
    SCOPED_TRACE(why);
    CFind find(app);
    find.fields.staTime = find.fields.endTime = u"08:00";
    EXPECT_TRUE(find.OpenEditor(editor));
    find.editorText = typed;
    if (!taken) host.answers = {"入力値不正"};
    EXPECT_EQ(find.ApplyEditor(), taken);
    EXPECT_EQ(find.editor, FindEditor::kNone);
    EXPECT_EQ(find.fields.staTime, staTime);
    EXPECT_EQ(find.fields.endTime, endTime);
    EXPECT_EQ(find.IsEndTimeEnabled(), endTime != u"<終日>");
  }
  CFind find(app);
  find.OpenEditor(FindEditor::kStartTime);
  EXPECT_EQ(find.EditorRow(), 26);
  find.OpenEditor(FindEditor::kEndTime);
  EXPECT_EQ(find.EditorRow(), 25);
  find.editorText = u"9";
  host.answers = {"入力値不正"};
  find.OnBtnStartToday();
  EXPECT_EQ(find.fields.staDate, u"") << "refused, so nothing else happens";
  find.OpenEditor(FindEditor::kStartTime);
  find.editorText = u"9";
  find.OnBtnStartToday();
  EXPECT_EQ(find.fields.staDate, u"2010/06/23") << "the start's editor goes unread";
  find.TakeTime(FindEditor::kStartTime, 25, 0);
  EXPECT_FALSE(find.IsEndTimeEnabled());
  find.TakeTime(FindEditor::kStartTime, 7, 5);
  EXPECT_EQ(find.fields.staTime + find.fields.endTime, u"07:05");
}

TEST_F(FindDialogTest, RemembersItsFieldsButNotTheText) {
  {
    CFind find(app);
    find.fields = {u"text", false, true, false, false, u"2010/06/01", u"09:00", {}, {}, true};
    EXPECT_TRUE(find.OnClose());
  }
  CFind again(app);
  EXPECT_EQ(again.fields.text, u"");
  EXPECT_EQ(app.FindHistory.Entries().front(), u"text");
  EXPECT_FALSE(again.fields.inPlace);
  EXPECT_TRUE(again.fields.inMemo) << "closing always sets it";
  EXPECT_EQ(again.fields.staTime, u"09:00");
  again.ResetFindDialog();
  EXPECT_TRUE(again.fields.inPlace);
  EXPECT_EQ(again.fields.staDate + again.fields.staTime, u"");
  EXPECT_TRUE(again.fields.dispListAfterFind) << "is left alone";
}

}  // namespace
}  // namespace exchange
