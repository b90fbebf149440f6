// A data file of many Actions for a benchmark: half an hour each, thirty a day from 2000/01/01 on.
// It goes with this object.
#pragma once

#include <sqlite3.h>

#include <cstdlib>
#include <filesystem>
#include <string>

#include "datafile/data_file.h"
#include "platform/device_paths.h"
#include "store/session.h"

inline constexpr int kLargeDiaryActions = 100000;

class LargeDiary {
 public:
  // `name` is the file's, in the folder for temporary files.
  explicit LargeDiary(const std::string& name, int actions = kLargeDiaryActions)
      : actions_(actions), hostPath_(std::filesystem::temp_directory_path() / name) {
    if (datafile::CreateDataFile(Path()) != 0) std::abort();
    store::DisconnectDataFile();
    sqlite3* raw = nullptr;
    sqlite3_open(hostPath_.c_str(), &raw);
    const std::string fill =
        "with recursive n(i) as (select 0 union all select i + 1 from n where i < " +
        std::to_string(actions - 1) + ")," + kFillSql;
    if (sqlite3_exec(raw, fill.c_str(), nullptr, nullptr, nullptr) != SQLITE_OK) std::abort();
    sqlite3_close(raw);
  }
  ~LargeDiary() { std::filesystem::remove(hostPath_); }
  LargeDiary(const LargeDiary&) = delete;
  LargeDiary& operator=(const LargeDiary&) = delete;

  int Actions() const { return actions_; }
  const std::string& HostPath() const { return hostPath_; }
  std::u16string Path() const { return *platform::FromHostPath(hostPath_); }

 private:
  static constexpr char kFillSql[] =
      " times(i, day, start, end) as (select i,"
      "  strftime('%Y/%m/%d', '2000-01-01', '+' || (i / 30) || ' days'),"
      "  printf('%02d:%02d:00', 8 + i % 30 / 2, i % 2 * 30),"
      "  printf('%02d:%02d:00', 8 + (i % 30 + 1) / 2, (i + 1) % 2 * 30) from n)"
      " insert into t_UserData (f_nchActId, f_dtLastUpdate, f_nchStaDateTime, f_nchEndDateTime,"
      "  f_fltLatitude, f_fltLongitude, f_nvcPlace, f_nvcCategory1, f_nvcMemo)"
      " select printf('ID%016d', i), '2010/06/23 10:45:30', day || ' ' || start, day || ' ' || end,"
      "  35.7 + i % 5 * 0.15, 139.8 + i % 6 * 0.2,"
      "  '東京都千代田区丸の内一丁目の喫茶店', '食事', '昼食にとんかつ定食を食べた。次は友人と。'"
      " from times";

  int actions_;
  std::string hostPath_;
};
