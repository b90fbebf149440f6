// The named values, the recorder's history and the texts of statements.
#include "recorder/recorder_state.h"
#include "store/action_index.h"
#include "store/sql_text.h"
#include "store_fixture.h"

namespace store_test {
namespace {

using namespace store;

class SideTablesTest : public StoreTest {
 protected:
  void SetUp() override { CreateFile(); }

  static int CountRows(std::u16string_view sql) {
    std::unique_ptr<RowSet> rows;
    return Failed(dbSession().Session->OpenRows(sql, rows)) ? -1 : rows->Count().value_or(-1);
  }
};

TEST_F(SideTablesTest, NamedTexts) {
  CNamedValueTable& table = *dbSession().TextTable;
  struct Row {
    const char* why;
    std::u16string key, written, read;
  };
  const Row rows[] = {
      {"a new key", u"Key", u"値", u"値"},
      {"the same key again", u"Key", u"O'Brien", u"O'Brien"},
      {"empty is a value", u"Key", u"", u""},
      {"501 characters are cut to 500", u"Key", std::u16string(501, u'あ'),
       std::u16string(500, u'あ')},
      {"a key of 25 characters is cut to 20, each time", u"abcdefghijklmnopqrstuvwxy", u"1", u"1"},
      {"and finds itself again", u"abcdefghijklmnopqrstuvwxy", u"2", u"2"},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.why);
    std::u16string text = u"before";
    ASSERT_EQ(table.SetText(row.key, row.written), 0);
    ASSERT_EQ(table.GetText(row.key, text), 0);
    EXPECT_EQ(Readable(text), Readable(row.read));
  }
  EXPECT_EQ(CountRows(u"select * from t_TextData where f_nvcItem = 'Key'"), 1);
  EXPECT_EQ(CountRows(u"select * from t_TextData where f_nvcItem = 'abcdefghijklmnopqrst'"), 1);
  std::u16string text = u"before";
  EXPECT_EQ(static_cast<uint32_t>(table.GetText(u"none", text)), 0x80040E19u);
  EXPECT_EQ(text, u"before");
  dbSession().Session->Execute(u"update t_TextData set f_nvcValue = null");
  EXPECT_EQ(table.GetText(u"Key", text), 0) << "NULL succeeds";
  EXPECT_EQ(text, u"");
}

TEST_F(SideTablesTest, NamedNumbers) {
  CNamedValueTable& table = *dbSession().LongTable;
  for (const int32_t value : {0, 7, -1, INT32_MAX, INT32_MIN}) {
    int32_t read = 99;
    ASSERT_EQ(table.SetLong(u"Number", value), 0);
    ASSERT_EQ(table.GetLong(u"Number", read), 0);
    EXPECT_EQ(read, value);
  }
  int32_t read = 99;
  EXPECT_EQ(static_cast<uint32_t>(table.GetLong(u"none", read)), 0x80040E19u);
  EXPECT_EQ(read, 99);
}

TEST_F(SideTablesTest, HistoryRowsAreUpdatedInPlaceOrInserted) {
  CRcdrDataTable& table = *dbSession().RcdrTable;
  for (int i = 0; i < 6; ++i) ASSERT_EQ(table.SetRcdrRow(i, u"ID" + core::ZeroPadded(i, 16)), 0);
  ASSERT_EQ(table.SetRcdrRow(3, u"ID9999999999999999"), 0);
  EXPECT_EQ(CountRows(u"select * from t_RcdrData"), 6);
  constexpr std::u16string_view kId[] = {u"f_nchActId"};
  ASSERT_EQ(table.GetRS(u"select f_nchActId from t_RcdrData order by f_i4SNo asc", kId), 0);
  std::string ids;
  std::optional<std::u16string> id;
  while (table.GetNextRS({&id, 1}) == S_OK) ids += id->back();
  EXPECT_EQ(ids, "012945");
}

TEST_F(SideTablesTest, ClosingTheRecorderSessionClosesTheFile) {
  InsertAction(u"2010/06/23 10:00:00");
  ASSERT_EQ(LoadActionIndex(app), 0);
  app.RcdrLoaded = true;
  Users().Select(u"select * from t_UserData");
  recorder::CloseRecorderSession(app);
  recorder::CloseRecorderSession(app);
  EXPECT_FALSE(app.RcdrLoaded);
  EXPECT_EQ(app.IndexCount, 0);
  EXPECT_TRUE(app.ActIds.Empty() && app.ActStarts.Empty());
  EXPECT_FALSE(dbSession().Session);
  EXPECT_EQ(static_cast<uint32_t>(AlterUserData()), 0x80004003u);
}

TEST_F(SideTablesTest, AColumnTypeThatIsNotOursIsTold) {
  Engine& engine = *dbSession().Session;
  engine.Execute(u"drop table t_TextData");
  engine.Execute(u"create table t_TextData (f_nvcItem NVARCHAR(20), f_nvcValue image(16))");
  std::u16string text;
  EXPECT_EQ(dbSession().TextTable->SetText(u"Key", u"value"), 0);
  EXPECT_EQ(dbSession().TextTable->GetText(u"Key", text), 0);
  EXPECT_EQ(text, u"value");
  ASSERT_EQ(host.messages.size(), 1u);
  EXPECT_EQ(host.messages[0].text, u"type=128,colsize=16");
  EXPECT_EQ(host.messages[0].title, u"debug");
}

TEST(SqlText, LiteralsAreLifted) {
  struct Row {
    const char* why;
    std::u16string sql;
    std::string shape;
    std::vector<std::string> literals;
  };
  const Row rows[] = {
      {"none", u"select * from t", "select * from t", {}},
      {"one", u"select * from t where a = 'ID1'", "select * from t where a = ?", {"ID1"}},
      {"several, and what stands behind",
       u"a like '%会社%' or b = '' order by a",
       "a like ? or b = ? order by a",
       {"%会社%", ""}},
      {"doubled quotes", u"a = 'O''Brien''' and b = ''''", "a = ? and b = ?", {"O'Brien'", "'"}},
      {"left open: the engine is to refuse it", u"a = 'x", "a = '", {}},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.why);
    const SelectShape shape = LiftLiterals(row.sql);
    EXPECT_EQ(shape.sql, row.shape);
    EXPECT_EQ(shape.literals, row.literals);
  }
}

}  // namespace
}  // namespace store_test
