// Damage that a statement makes: a file in which every page is good, and nothing else need be.
#include "platform/device_paths.h"
#include "platform/utf.h"
#include "reliability/hostile_damage.h"
#include "store/action.h"
#include "store/engine.h"

namespace reliability {
namespace {

namespace fs = std::filesystem;

Damage Sql(std::string name, std::string sql) {
  return {std::move(name), [sql = std::move(sql)](const fs::path& folder) {
            const auto path = platform::FromHostPath((folder / "user.sdf").string());
            if (store::Failed(store::Engine::Open(*path)->Execute(platform::ToUtf16(sql)))) {
              std::printf("FOUND no way to make %.60s\n", sql.c_str());
            }
          }};
}

Damage Foreign(std::string name, std::string sql) {
  Damage damage = Sql(std::move(name), std::move(sql));
  damage.isForeign = true;
  return damage;
}

Damage Large(std::string name, std::string sql) {
  Damage damage = Sql(std::move(name), std::move(sql));
  damage.isLarge = true;
  return damage;
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

void AddRows(std::vector<Damage>& damages) {
  std::string all;
  for (const char* odd : kOddMoments) {
    const std::string good = "'2010/06/23 12:00:00'";
    const std::string rows = InsertRow("ID2010062312000001", odd, odd) +
                             InsertRow("ID2010062312000002", odd, good) +
                             InsertRow("ID2010062312000003", good, odd);
    all += rows;
    damages.push_back(Sql(std::string("moment ") + odd, rows));
  }
  damages.push_back(Sql("all moments", all));
  damages.push_back(Sql("nothing but odd moments", "delete from t_UserData;" + all));
  for (const std::u16string_view name : store::kActionColumns) {
    const std::string column = platform::ToUtf8(name);
    for (const char* odd : kOddValues) {
      const std::string what = "set " + column + "=" + odd;
      damages.push_back(
          Sql(what, "update t_UserData " + what + " where rowid%100=31 or rowid in(1,531)"));
    }
    damages.push_back(Large("100 MB in " + column,
                            "update t_UserData set " + column +
                                "=replace(hex(zeroblob(33000000)),'00','長') where rowid=531"));
    damages.push_back(Large("100 MB in ten " + column,
                            "update t_UserData set " + column +
                                "=hex(zeroblob(50000000)) where rowid between 530 and 539"));
  }
  damages.push_back(Sql("one id for all", "update t_UserData set f_nchActId='ID2010050100000001'"));
  damages.push_back(Sql("one start for all",
                        "update t_UserData set f_nchStaDateTime='2010/06/23 00:00:00',"
                        "f_nchEndDateTime='9999/12/31 24:00:00'"));
  damages.push_back(Sql("years",
                        "update t_UserData set f_nchStaDateTime='2010/06/23 00:00:00',"
                        "f_nchEndDateTime='2010/06/22 00:00:00'"));
  damages.push_back(Sql("no Actions", "delete from t_UserData"));
  damages.push_back(Large(
      "two million Actions",
      "with recursive n(i) as (select 1 union all select i+1 from n where i<2000000) insert into "
      "t_UserData(f_nchActId,f_nchStaDateTime,f_nchEndDateTime,f_nvcPlace,f_nvcMemo) select "
      "printf('ID19%014d',i),printf('%04d/%02d/%02d %02d:00:00',1900+i/20000,1+i/1800%12,"
      "1+i/60%28,i%24),printf('%04d/%02d/%02d %02d:30:00',1900+i/20000,1+i/1800%12,1+i/60%28,"
      "i%24),'会社','メモ' from n"));
  damages.push_back(Large("a day of 100,000 Actions",
                          "with recursive n(i) as (select 1 union all select i+1 from n where "
                          "i<100000) insert into t_UserData(f_nchActId,f_nchStaDateTime,"
                          "f_nchEndDateTime,f_nvcPlace) select printf('ID19%014d',i),"
                          "'2010/06/23 10:00:00','2010/06/23 11:00:00','会社' from n"));
}

void AddSideTables(std::vector<Damage>& damages) {
  for (const char* odd : kOddValues) {
    for (const char* table :
         {"t_SysInfo set f_nvcValue=", "t_TextData set f_nvcValue=", "t_LongData set f_i4Value=",
          "t_RcdrData set f_nchActId=", "t_RcdrData set f_i4SNo=", "t_TextData set f_nvcItem="}) {
      damages.push_back(Sql(std::string(table) + odd, std::string("update ") + table + odd));
    }
  }
  for (const char* number : {"2147483647", "-2147483648", "1000000", "-1"}) {
    damages.push_back(Sql(std::string("history of ") + number,
                          std::string("update t_LongData set f_i4Value=") + number));
  }
  for (const char* table : {"t_SysInfo", "t_LongData", "t_TextData", "t_RcdrData"}) {
    damages.push_back(Sql(std::string("empty ") + table, std::string("delete from ") + table));
    damages.push_back(Sql(std::string("double ") + table,
                          std::string("insert into ") + table + " select * from " + table));
  }
  damages.push_back(Large("a recorder's history of a million",
                          "update t_LongData set f_i4Value=1000000; with recursive n(i) as (select "
                          "1 union all select i+1 from n where i<1000000) insert into t_RcdrData "
                          "select i,'ID2010050100000001' from n"));
}

void AddSchemas(std::vector<Damage>& damages) {
  damages.push_back(Foreign("a view", "create view v as select * from t_UserData"));
  damages.push_back(Foreign("a trigger",
                            "create trigger t before insert on t_UserData begin delete from "
                            "t_UserData; end"));
  for (const char* table : {"t_UserData", "t_SysInfo", "t_LongData", "t_TextData", "t_RcdrData"}) {
    const std::string name(table);
    damages.push_back(Foreign("no " + name, "drop table " + name));
    damages.push_back(
        Foreign("another name for " + name, "alter table " + name + " rename to t_x"));
    damages.push_back(Foreign("a view for " + name,
                              "alter table " + name + " rename to t_x; create view " + name +
                                  " as select * from t_x, (with recursive n(i) as (select 1 union "
                                  "all select i+1 from n) select i from n)"));
    damages.push_back(Foreign("other columns in " + name,
                              "drop table " + name + "; create table " + name + "(a,b)"));
    damages.push_back(Sql("a strange column in " + name,
                          "alter table " + name + " add x as (printf('%.*c', 300000000, 'x'))"));
  }
  damages.push_back(Foreign("no memo", "alter table t_UserData drop column f_nvcMemo"));
  damages.push_back(Foreign(
      "no rowid",
      "create table t_x(f_nvcItem NVARCHAR(20), f_nvcValue NVARCHAR(500), f_i4SNo int primary key) "
      "without rowid; drop table t_SysInfo; alter table t_x rename to t_SysInfo"));
  damages.push_back(Sql("no index", "drop index i_UserData"));
  damages.push_back(Sql("an index that allows one of each",
                        "create unique index i_x on t_UserData(f_nchStaDateTime)"));
  damages.push_back(Sql("a check that nothing passes",
                        "pragma writable_schema=on; update sqlite_schema set sql=replace(sql,"
                        "'f_nvcPlace NVARCHAR(500)','f_nvcPlace NVARCHAR(500) check(0)')"));
  damages.push_back(Sql("other types",
                        "pragma writable_schema=on; update sqlite_schema set sql=replace(replace("
                        "sql,'NVARCHAR','x'),'NCHAR','')"));
  damages.push_back(Sql("longer columns",
                        "pragma writable_schema=on; update sqlite_schema set sql=replace(sql,"
                        "'(2000)','(99999999999999999999)')"));
  damages.push_back(Sql("a schema that can't be read",
                        "pragma writable_schema=on; update sqlite_schema set sql='create x'"));
  damages.push_back(Sql("one root for two",
                        "pragma writable_schema=on; update sqlite_schema set "
                        "rootpage=2 where type='table'"));
}

}  // namespace

std::vector<Damage> SqlDamages() {
  std::vector<Damage> damages;
  AddRows(damages);
  AddSideTables(damages);
  AddSchemas(damages);
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
