// Damage that a statement makes: a file in which every page is good, and nothing else need be.
#include <cstdio>
#include <utility>

#include "platform/device_paths.h"
#include "platform/utf.h"
#include "reliability/hostile_damage.h"
#include "store/action.h"
#include "store/engine.h"

namespace reliability {
namespace {

namespace fs = std::filesystem;

enum class Schema { kOurs, kForeign };
enum class Size { kOrdinary, kLarge };

struct Statement {
  std::string name;
  std::string sql;
  Schema schema = Schema::kOurs;  // after it
  Size size = Size::kOrdinary;
};
using Statements = std::vector<Statement>;

Damage ByStatement(Statement made) {
  const bool isForeign = made.schema == Schema::kForeign;
  const bool isLarge = made.size == Size::kLarge;
  return {std::move(made.name),
          [sql = std::move(made.sql)](const fs::path& folder) {
            const auto path = platform::FromHostPath((folder / "user.sdf").string());
            if (store::Failed(store::Engine::Open(*path)->Execute(platform::ToUtf16(sql)))) {
              std::printf("FOUND no way to make %.60s\n", sql.c_str());
            }
          },
          isForeign, isLarge};
}

Damage Beside(std::string name, const char* suffix, std::string bytes) {
  return {std::move(name),
          [suffix, bytes = std::move(bytes)](const fs::path& folder) {
            PutBytes((folder / "user.sdf").string() + suffix, bytes);
          },
          false, false, true};
}

std::string InsertRow(const std::string& id, const std::string& start, const std::string& end) {
  return "insert into t_UserData(f_nchActId,f_nchStaDateTime,f_nchEndDateTime,f_nvcPlace) "
         "values('" +
         id + "'," + start + "," + end + ",'odd');";
}

// Moments that are none, or sort as a text where they don't belong.
const char* const kOddMoments[] = {"null",
                                   "''",
                                   "' '",
                                   "'2010'",
                                   "'2010/06/23'",
                                   "'2010/06/23 '",
                                   "'2010/06/23 10'",
                                   "'2010/06/23 10:00'",
                                   "'2010/6/23 1:00:00'",
                                   "'2010/1/011 10:00:00'",
                                   "'2010/6/0023 10:00:00'",
                                   "'2010/010/5 10:00:00'",
                                   "'2010/06/3 010:00:00'",
                                   "'2010/06/23 24:00:00'",
                                   "'2010/06/23 23:60:60'",
                                   "'2010/06/22 99:99:99'",
                                   "'2010/06/31 10:00:00'",
                                   "'2010/02/30 10:00:00'",
                                   "'2010/06/23 10:00:00 and more'",
                                   "'-2010/06/23 10:00:00'",
                                   "'99999/12/31 10:00:00'",
                                   "'9999/12/31 23:59:59'",
                                   "'9999/99/99 99:99:99'",
                                   "'0100/01/01 00:00:00'",
                                   "'0000/00/00 00:00:00'",
                                   "'2010-06-23T10:00:00'",
                                   "'2010.06.23-10:00:00'",
                                   "'abcd/ef/gh ij:kl:mn'",
                                   "'２０１０/０６/２３ １０:００:００'",
                                   "'2010/06/23 10:00:0😀'",
                                   "'2010/06/'||char(0)||'3 10:00:00'",
                                   "x'ff'",
                                   "20100623",
                                   "-1.5e300",
                                   "cast(x'323031302f30362f32332031303a30303a30ff' as text)",
                                   "'2010/06/23 '||replace(hex(zeroblob(2000)),'00','9')"};

// Values that no column of ours holds.
const char* const kOddValues[] = {"null",
                                  "''",
                                  "x''",
                                  "x'00ff80'",
                                  "0",
                                  "-9223372036854775808",
                                  "9223372036854775807",
                                  "1e308",
                                  "-1e308",
                                  "9e999",
                                  "'nan'",
                                  "'a'||char(0)||'b'",
                                  "cast(x'fffe80c0' as text)",
                                  "cast(x'eda080' as text)",
                                  "cast(x'f4908080' as text)",
                                  "char(27,7,13,10,9,8232,8238,65279)",
                                  "'''; drop table t_UserData; --'",
                                  "'%s%n<b>x</b>&amp;'",
                                  "replace(hex(zeroblob(3000)),'00','長')"};

// An insert whose values, made of i, are those of 1 to `count`.
std::string Repeated(int count, const std::string& into, const std::string& values) {
  return "with recursive n(i) as (select 1 union all select i+1 from n where i<" +
         std::to_string(count) + ") insert into " + into + " select " + values + " from n";
}

void AddMoments(Statements& statements) {
  std::string all;
  for (const char* odd : kOddMoments) {
    const std::string good = "'2010/06/23 12:00:00'";
    const std::string rows = InsertRow("ID2010062312000001", odd, odd) +
                             InsertRow("ID2010062312000002", odd, good) +
                             InsertRow("ID2010062312000003", good, odd);
    all += rows;
    statements.push_back({std::string("moment ") + odd, rows});
  }
  statements.push_back({"all moments", all});
  statements.push_back({"nothing but odd moments", "delete from t_UserData;" + all});
}

void AddRows(Statements& statements) {
  for (const std::u16string_view name : store::kActionColumns) {
    const std::string column = platform::ToUtf8(name);
    const std::string set = "update t_UserData set " + column + "=";
    for (const char* odd : kOddValues) {
      statements.push_back(
          {"set " + column + "=" + odd, set + odd + " where rowid%100=31 or rowid in(1,531)"});
    }
    statements.push_back({"100 MB in " + column,
                          set + "replace(hex(zeroblob(33000000)),'00','長') where rowid=531",
                          Schema::kOurs, Size::kLarge});
    statements.push_back({"100 MB in ten " + column,
                          set + "hex(zeroblob(50000000)) where rowid between 530 and 539",
                          Schema::kOurs, Size::kLarge});
  }
  const std::string times =
      "t_UserData(f_nchActId,f_nvcPlace,f_nvcMemo,f_nchStaDateTime,f_nchEndDateTime)";
  const std::string texts = "printf('ID19%014d',i),'会社','メモ',";
  const std::string day = "1900+i/20000,1+i/1800%12,1+i/60%28,i%24)";
  statements.insert(
      statements.end(),
      {{"one id for all", "update t_UserData set f_nchActId='ID2010050100000001'"},
       {"one start for all",
        "update t_UserData set f_nchStaDateTime='2010/06/23 00:00:00',"
        "f_nchEndDateTime='9999/12/31 24:00:00'"},
       {"years",
        "update t_UserData set f_nchStaDateTime='2010/06/23 00:00:00',"
        "f_nchEndDateTime='2010/06/22 00:00:00'"},
       {"no Actions", "delete from t_UserData"},
       {"two million Actions",
        Repeated(2000000, times,
                 texts + "printf('%04d/%02d/%02d %02d:00:00'," + day +
                     ",printf('%04d/%02d/%02d %02d:30:00'," + day),
        Schema::kOurs, Size::kLarge},
       {"a day of 100,000 Actions",
        Repeated(100000, times, texts + "'2010/06/23 10:00:00','2010/06/23 11:00:00'"),
        Schema::kOurs, Size::kLarge}});
}

void AddSideTables(Statements& statements) {
  for (const char* odd : kOddValues) {
    for (const char* table :
         {"t_SysInfo set f_nvcValue=", "t_TextData set f_nvcValue=", "t_LongData set f_i4Value=",
          "t_RcdrData set f_nchActId=", "t_RcdrData set f_i4SNo=", "t_TextData set f_nvcItem="}) {
      statements.push_back({std::string(table) + odd, std::string("update ") + table + odd});
    }
  }
  const std::string history = "update t_LongData set f_i4Value=";
  for (const char* number : {"2147483647", "-2147483648", "1000000", "-1"}) {
    statements.push_back({std::string("history of ") + number, history + number});
  }
  for (const std::string table : {"t_SysInfo", "t_LongData", "t_TextData", "t_RcdrData"}) {
    statements.push_back({"empty " + table, "delete from " + table});
    statements.push_back({"double " + table, "insert into " + table + " select * from " + table});
  }
  statements.push_back(
      {"a recorder's history of a million",
       history + "1000000;" + Repeated(1000000, "t_RcdrData", "i,'ID2010050100000001'"),
       Schema::kOurs, Size::kLarge});
}

void AddSchemas(Statements& statements) {
  using enum Schema;
  for (const std::string table :
       {"t_UserData", "t_SysInfo", "t_LongData", "t_TextData", "t_RcdrData"}) {
    const std::string renamed = "alter table " + table + " rename to t_x";
    statements.insert(statements.end(),
                      {{"no " + table, "drop table " + table, kForeign},
                       {"another name for " + table, renamed, kForeign},
                       {"a view for " + table,
                        renamed + "; create view " + table +
                            " as select * from t_x, (with recursive n(i) as (select 1 union "
                            "all select i+1 from n) select i from n)",
                        kForeign},
                       {"other columns in " + table,
                        "drop table " + table + "; create table " + table + "(a,b)", kForeign},
                       {"a strange column in " + table,
                        "alter table " + table + " add x as (printf('%.*c', 300000000, 'x'))"}});
  }
  const std::string schema = "pragma writable_schema=on; update sqlite_schema set ";
  statements.insert(
      statements.end(),
      {{"a view", "create view v as select * from t_UserData", kForeign},
       {"a trigger",
        "create trigger t before insert on t_UserData begin delete from t_UserData; end", kForeign},
       {"no memo", "alter table t_UserData drop column f_nvcMemo", kForeign},
       {"no rowid",
        "create table t_x(f_nvcItem NVARCHAR(20), f_nvcValue NVARCHAR(500), f_i4SNo int primary "
        "key) without rowid; drop table t_SysInfo; alter table t_x rename to t_SysInfo",
        kForeign},
       {"no index", "drop index i_UserData"},
       {"an index that allows one of each",
        "create unique index i_x on t_UserData(f_nchStaDateTime)"},
       {"a check that nothing passes",
        schema + "sql=replace(sql,'f_nvcPlace NVARCHAR(500)','f_nvcPlace NVARCHAR(500) check(0)')"},
       {"other types", schema + "sql=replace(replace(sql,'NVARCHAR','x'),'NCHAR','')"},
       {"longer columns", schema + "sql=replace(sql,'(2000)','(99999999999999999999)')"},
       {"a schema that can't be read", schema + "sql='create x'"},
       {"one root for two", schema + "rootpage=2 where type='table'"}});
}

}  // namespace

std::vector<Damage> SqlDamages() {
  Statements statements;
  AddMoments(statements);
  AddRows(statements);
  AddSideTables(statements);
  AddSchemas(statements);
  std::vector<Damage> damages;
  for (Statement& statement : statements) damages.push_back(ByStatement(std::move(statement)));
  for (const char* suffix : {"-wal", "-journal", "-shm"}) {
    const std::string what = std::string("garbage in ") + suffix;
    damages.push_back(Beside(what, suffix, std::string(70000, 'x')));
    damages.push_back(Beside(what + ", nothing", suffix, ""));
    damages.push_back(Beside(
        what + ", after a log's magic", suffix,
        std::string("\x37\x7f\x06\x82\0\x2d\xe2\x18\0\0\x10\0", 12) + std::string(70000, '\1')));
    damages.push_back(Beside(what + ", after a journal's magic", suffix,
                             std::string("\xd9\xd5\x05\xf9\x20\xa1\x63\xd7\xff\xff\xff\xff", 12) +
                                 std::string(70000, '\1')));
  }
  return damages;
}

}  // namespace reliability
