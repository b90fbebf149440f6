#include "playground.h"

#include <sqlite3.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <memory>
#include <string_view>

#include "sample/sample_diary.h"
#include "texts.h"
#include "watch.h"

namespace hands {
namespace {

namespace fs = std::filesystem;

using Database = std::unique_ptr<sqlite3, int (*)(sqlite3*)>;

constexpr std::string_view kMagic("SQLite format 3\0", 16);
constexpr const char* kTorn = "torn.sdf";  // is broken from the beginning

// Run in order over the sample diary, with the column's value for "?".
constexpr const char* kStrange[] = {"'x'",
                                    "''",
                                    "null",
                                    "'24:00:00'",
                                    "'2026/1/011'",
                                    "'2026/13/45 99:99:99'",
                                    "'9999/12/31 24:00:00'",
                                    "'0000/00/00 00:00:00'",
                                    "'2026/02/30 10:00:00'",
                                    "12345",
                                    "-1.5e300",
                                    "x'ff00fe'",
                                    "'ID''or 1=1 or 1  >'''",
                                    "'\"'",
                                    "'#if (1) {'",
                                    "'a=1' || char(9) || 'b'",
                                    "replace(hex(zeroblob(1000)), '00', '長文')",
                                    "char(0xd83d) || 'あ' || char(0)"};
constexpr const char* kColumns[] = {"f_nchActId",       "f_dtLastUpdate", "f_nchStaDateTime",
                                    "f_nchEndDateTime", "f_fltLatitude",  "f_fltLongitude",
                                    "f_nvcSubject",     "f_nvcPlace",     "f_nvcCategory1",
                                    "f_nvcCategory2",   "f_nvcMemo",      "f_nvcExtItems"};

Database Open(const fs::path& path, int flags) {
  sqlite3* database = nullptr;
  sqlite3_open_v2(path.c_str(), &database, flags, nullptr);
  return Database(database, sqlite3_close);
}

void Run(sqlite3* database, const std::string& sql) {
  if (sqlite3_exec(database, sql.c_str(), nullptr, nullptr, nullptr) != SQLITE_OK) {
    Fault(std::string(sqlite3_errmsg(database)) + ": " + sql);
  }
}

// Each strange value in three columns of rows of these days, chosen by `seed`, or in copies of
// them.
void PlantStrangeRows(const fs::path& diary, unsigned seed) {
  Chance chance(seed + 1);
  const Database database = Open(diary, SQLITE_OPEN_READWRITE);
  Run(database.get(), "begin");
  for (const char* value : kStrange) {
    for (int k = 0; k < 3; ++k) {
      const std::string column = kColumns[Below(chance, std::size(kColumns))];
      const std::string row = " where rowid = (select max(rowid) from t_UserData) - " +
                              std::to_string(Below(chance, 40));
      if (OneIn(chance, 2))
        Run(database.get(), "insert into t_UserData select * from t_UserData" + row);
      Run(database.get(), "update t_UserData set " + column + " = " + value + row);
    }
  }
  Run(database.get(), "commit");
}

void Write(const fs::path& path, std::string_view content) {
  std::ofstream(path, std::ios::binary) << content;
}

void MakeOtherFiles(const fs::path& folder, unsigned seed) {
  fs::create_directory(folder / "backup");
  fs::create_directory(folder / "とても長い名前のフォルダ、その中には何もない、空のままである");
  static constexpr char kNoise[] = "\x82\xff\t\0\n\n\xef\xbb\xbf\t\t\t\t\t\t\t\t\t\t\t\t";
  Write(folder / "noise.txt", std::string_view(kNoise, sizeof kNoise));
  Write(folder / "ver1.txt",
        "2026/1/011\t2026/11/22 10:00:00\tx\ty\tz\n2026/11/22 09:00:00\t\t\t\n");
  std::string bytes(kMagic);
  Chance chance(seed + 2);
  for (int k = 0; k < 20000; ++k) bytes += static_cast<char>(Below(chance, 256));
  Write(folder / kTorn, bytes);
  const Database foreign = Open(folder / "foreign.sdf", SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE);
  Run(foreign.get(),
      "create view t_UserData as with recursive n(i) as (select 1 union all select i + 1 from n "
      "where i < 99) select i as f_nchActId from n; create table t_SysInfo (f_nvcItem, "
      "f_nvcValue)");
}

bool IsDatabase(const fs::path& path) {
  std::string head(kMagic.size(), ' ');
  std::ifstream(path, std::ios::binary)
      .read(head.data(), static_cast<std::streamsize>(head.size()));
  return head == kMagic;
}

std::string CheckOf(sqlite3* database) {
  std::string result = "no answer";
  const auto take = [](void* to, int, char** values, char**) {
    *static_cast<std::string*>(to) = values[0];
    return 1;  // the first line says it
  };
  sqlite3_exec(database, "pragma integrity_check", take, &result, nullptr);
  return result;
}

// Each key with one of its values, or one that means nothing.
void ChooseSettings(const fs::path& settings, unsigned seed) {
  static constexpr struct {
    const char* key;
    int least;
    int most;
  } kChoices[] = {{"StartupMode", 0, 3},        {"InitView", 1, 5},
                  {"SeqViewRng", 0, 30},        {"MonViewTapOpeMode", 1, 2},
                  {"DayVwMltDayMode", 1, 2},    {"OkBtnVwMode", 1, 2},
                  {"ToolBarVwMode", 1, 2},      {"TimeInitForNewMode", 0, 4},
                  {"NoMemPlaceSepaStr", 0, 1},  {"TimeInitForFollowMode", 0, 3},
                  {"EditOpeCont", 0, 1},        {"DispListAfterFind", 0, 1},
                  {"ActTxtMode", 1, 2},         {"ItmSelMode", 1, 2},
                  {"ViewAutoUpdate", 0, 1},     {"AutoBackup", 0, 1},
                  {"WindowWidth", 0, 700},      {"WindowHeight", 0, 700},
                  {"DayVwGrdFntSize", -20, 60}, {"WekVwGrdFntSize", -20, 60},
                  {"RcdrFntSize", -20, 60}};
  Chance chance(seed + 4);
  std::ofstream out(settings, std::ios::binary | std::ios::app);
  out << "\r\n[System]\r\n";
  for (const auto& [key, least, most] : kChoices) {
    out << key << ':';
    OneIn(chance, 12) ? out << "99999999999" : out << least + Below(chance, most - least + 1);
    out << "\r\n";
  }
  out << "\r\n";
}

}  // namespace

void MakePlayground(const std::string& folder, unsigned seed) {
  MakeOtherFiles(folder, seed);
  const fs::path settings = fs::path(folder) / "Morvenly.dat";
  if (seed % 4 == 0) return ChooseSettings(settings, seed);
  const std::string why = sample::MakeDiary(folder + "/sample");
  if (!why.empty()) Fault("no sample diary: " + why);
  for (const char* name : {"user.sdf", "Morvenly.dat"}) {
    fs::rename(fs::path(folder) / "sample" / name, fs::path(folder) / name);
  }
  fs::copy_file(fs::path(folder) / "user.sdf", fs::path(folder) / "backup" / "user.sdf");
  ChooseSettings(settings, seed);
  if (seed % 4 != 1) PlantStrangeRows(fs::path(folder) / "user.sdf", seed);
}

void CheckPlayground(const std::string& folder) {
  for (const auto& entry : fs::recursive_directory_iterator(folder)) {
    const fs::path& path = entry.path();
    if (!entry.is_regular_file() || path.filename() == kTorn || !IsDatabase(path)) continue;
    if (fs::exists(path.string() + "-wal")) Fault("a log is left beside " + path.string());
    const Database database = Open(path, SQLITE_OPEN_READONLY);
    const std::string result = CheckOf(database.get());
    if (result != "ok") Fault(path.string() + ": " + result);
  }
}

}  // namespace hands
