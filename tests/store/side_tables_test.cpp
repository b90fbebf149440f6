// The named values and the texts of statements.
#include "store/sql_text.h"
#include "store/store_fixture.h"

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
  const std::tuple<const char*, std::u16string, std::u16string, std::u16string> rows[] = {
      {"a new key", u"Key", u"値", u"値"},
      {"the same key again", u"Key", u"O'Brien", u"O'Brien"},
      {"empty is a value", u"Key", u"", u""},
      {"cut to 500", u"Key", std::u16string(501, u'あ'), std::u16string(500, u'あ')},
      {"a key of 25 characters is cut to 20, each time", u"abcdefghijklmnopqrstuvwxy", u"1", u"1"},
      {"and finds itself again", u"abcdefghijklmnopqrstuvwxy", u"2", u"2"},
  };
  for (const auto& [why, key, written, read] : rows) {
    SCOPED_TRACE(why);
    std::u16string text = u"before";
    ASSERT_EQ(table.SetText(key, written), 0);
    ASSERT_EQ(table.GetText(key, text), 0);
    EXPECT_EQ(Readable(text), Readable(read));
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
  int32_t read = 99;
  EXPECT_EQ(static_cast<uint32_t>(table.GetLong(u"none", read)), 0x80040E19u);
  EXPECT_EQ(read, 99);
  for (const int32_t value : {7, INT32_MIN}) {
    SCOPED_TRACE(value);
    ASSERT_EQ(table.SetLong(u"Number", value), 0);
    ASSERT_EQ(table.GetLong(u"Number", read), 0);
    EXPECT_EQ(read, value);
  }
}

TEST_F(SideTablesTest, AColumnTypeThatIsNotOursIsTold) {
  Engine& engine = *dbSession().Session;
  engine.Execute(u"drop table t_TextData");
  engine.Execute(u"create table t_TextData (f_nvcItem NVARCHAR(20), f_nvcValue image(16))");
  host.answers = {"debug|type=128,colsize=16"};
  std::u16string text;
  EXPECT_EQ(dbSession().TextTable->SetText(u"Key", u"value"), 0);
  EXPECT_EQ(dbSession().TextTable->GetText(u"Key", text), 0);
  EXPECT_EQ(text, u"value");
}

TEST(SqlText, LiteralsAreLifted) {
  const std::tuple<const char*, std::u16string, std::string, std::vector<std::string>> rows[] = {
      {"none", u"select * from t", "select * from t", {}},
      {"several, and what follows",
       u"a like '%会社%' or b = '' order by a",
       "a like ? or b = ? order by a",
       {"%会社%", ""}},
      {"doubled quotes", u"a = 'O''Brien''' and b = ''''", "a = ? and b = ?", {"O'Brien'", "'"}},
      {"left open: the engine is to refuse it", u"a = 'x", "a = '", {}},
  };
  for (const auto& [why, sql, lifted, literals] : rows) {
    SCOPED_TRACE(why);
    const SelectShape shape = LiftLiterals(sql);
    EXPECT_EQ(shape.sql, lifted);
    EXPECT_EQ(shape.literals, literals);
  }
}

}  // namespace
}  // namespace store_test
