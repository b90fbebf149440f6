// Files that are no data files, disks that are full, folders that may not be written, files that
// another program holds: the message that belongs to it, nothing lost, nothing changed.
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include <csignal>
#include <filesystem>
#include <fstream>
#include <random>

#include "datafile/compaction.h"
#include "store/action_index.h"
#include "store/store_fixture.h"
#include "store/trouble.h"
#include "support/process.h"

namespace store_test {
namespace {

using namespace store;
using namespace datafile;
using platform::Answer;
using testing_support::WriteWholeFile;

class DamagedFileTest : public StoreTest {
 protected:
  void SetUp() override { app.DataFile = path; }

  std::string SomeDataFile() {
    CreateFile();
    for (int i = 10; i < 60; ++i) {
      InsertAction(u"2010/06/23 10:" + core::ZeroPadded(i, 2) + u":00");
    }
    DisconnectDataFile();
    return FileBytes();
  }
};

std::string RandomBytes(size_t size) {
  std::mt19937 random(1);
  std::string bytes(size, '\0');
  for (char& byte : bytes) byte = static_cast<char>(random());
  return bytes;
}

TEST_F(DamagedFileTest, WhatIsNoDataFileStaysAsItIs) {
  const std::string good = SomeDataFile();
  // What the good file becomes by a statement.
  const auto after = [&](std::u16string_view statement) {
    WriteWholeFile(hostPath, good);
    dbSession().Session = Engine::Open(path);
    dbSession().Session->Execute(statement);
    DisconnectDataFile();
    return FileBytes();
  };
  const std::pair<const char*, std::string> rows[] = {
      {"random bytes", RandomBytes(40000)},
      {"an empty file", ""},
      {"without Actions", after(u"drop table t_UserData")},
      {"without our rows", after(u"delete from t_SysInfo")},
      {"without our tables", after(u"drop table t_SysInfo")},
      {"without our columns", after(u"alter table t_RcdrData rename column f_i4SNo to f_no")},
      {"an endless view in a table's place",
       after(
           u"drop table t_SysInfo; create view t_SysInfo(f_nvcItem, f_nvcValue) as with recursive "
           u"n(i) as (select 1 union all select i + 1 from n) select i, i from n where i < 0")},
      {"a trigger",
       after(u"create trigger t after insert on t_UserData begin delete from t_UserData; end")},
      {"a computed column",
       after(u"alter table t_UserData add x as (printf('%.*c', 300000000, 'x'))")},
      {"an index of an expression",
       after(u"create index i on t_RcdrData(printf('%.*c', f_i4SNo, 'x'))")},
      {"zeros after a good header", good.substr(0, 100) + std::string(8092, '\0')},
  };
  for (const auto& [why, bytes] : rows) {
    SCOPED_TRACE(why);
    WriteWholeFile(hostPath, bytes);
    host.answers = {
        "データファイル不正|データファイルの内容が不正です。\nプログラムを終了します。"};
    EXPECT_EQ(OpenDataFile(app), -110);
    EXPECT_FALSE(dbSession().Session);
    EXPECT_TRUE(FileBytes() == bytes);
    EXPECT_FALSE(std::filesystem::exists(hostPath + "-wal"));
  }
}

TEST_F(DamagedFileTest, AFolderIsNoDataFile) {
  std::filesystem::create_directory(hostPath);
  host.answers = {"データファイル '" + platform::ToUtf8(path) +
                  "' を開けません。\n同じ名前のフォルダがあります。\nプログラムを終了します。"};
  EXPECT_EQ(OpenDataFile(app), -200);
  EXPECT_LT(CreateDataFile(path), 0);
}

TEST_F(DamagedFileTest, AFileThatAnotherProgramHoldsIsWaitedFor) {
  SomeDataFile();
  const auto holder = Engine::Open(path);
  holder->Execute(u"PRAGMA locking_mode=EXCLUSIVE");
  ASSERT_EQ(holder->Execute(u"delete from t_TextData"), S_OK);
  host.answers = {Answer::kOk};
  EXPECT_EQ(OpenDataFile(app), -110);
  EXPECT_EQ(LastTrouble(), Trouble::kBusy);
}

// By whatever name it reaches the file, and though descriptors of the file are closed meanwhile.
TEST_F(DamagedFileTest, TwoOfOursNeverHaveOneFile) {
  const std::string before = SomeDataFile();
  std::filesystem::create_hard_link(hostPath, folder.HostPath("hard.sdf"));
  std::filesystem::create_symlink("user.sdf", folder.HostPath("soft.sdf"));
  ASSERT_EQ(OpenDataFile(app), 0);
  std::ifstream(hostPath).get();
  const auto refuses = [&] {
    dbSession().Session.release();  // the parent's
    int refused = 0;
    host.answers.assign(6, Answer::kOk);
    for (const char16_t* name : {u"user.sdf", u"hard.sdf", u"soft.sdf"}) {
      app.DataFile = folder.Path(name);
      refused += OpenDataFile(app) == -200 && LastTrouble() == Trouble::kInUse &&
                 CompactDataFile(app.DataFile) == -108;
    }
    return refused;
  };
  EXPECT_EQ(testing_support::InACopy(refuses), 3);
  EXPECT_TRUE(FileBytes() == before);
  DisconnectDataFile();
  app.DataFile = folder.Path(u"hard.sdf");
  EXPECT_EQ(OpenDataFile(app), 0) << "closed, it is free";
}

TEST_F(DamagedFileTest, AReaderElsewhereHindersNoWriteAndNoClosing) {
  SomeDataFile();
  ASSERT_EQ(OpenDataFile(app), 0);
  InsertAction(u"2010/06/24 10:00:00");
  {
    const auto reader = Engine::Open(path);
    std::unique_ptr<RowSet> rows;
    ASSERT_EQ(reader->OpenRows(u"select * from t_UserData", rows), S_OK);
    InsertAction(u"2010/06/24 11:00:00");
    EXPECT_EQ(rows->Count(), 51) << "one view of the data for the whole row set";
    DisconnectDataFile();
  }
  ASSERT_EQ(OpenDataFile(app), 0);
  EXPECT_EQ(app.IndexCount, 52);
  DisconnectDataFile();
  EXPECT_EQ(FileBytes().substr(18, 2), "\1\1") << "closed in the rollback form again";
}

// The largest file that this process may write, for a scope: what goes beyond it fails as on a full
// disk.
class FullDisk {
 public:
  explicit FullDisk(rlim_t bytes) {
    std::signal(SIGXFSZ, SIG_IGN);
    getrlimit(RLIMIT_FSIZE, &limit_);
    const rlimit smaller{bytes, limit_.rlim_max};
    setrlimit(RLIMIT_FSIZE, &smaller);
  }
  ~FullDisk() { setrlimit(RLIMIT_FSIZE, &limit_); }

 private:
  rlimit limit_;
};

TEST_F(DamagedFileTest, AFullDiskLosesNothing) {
  SomeDataFile();
  ASSERT_EQ(OpenDataFile(app), 0);
  int written = app.IndexCount;
  {
    const FullDisk full(200000);
    HRESULT result = S_OK;
    for (int i = 0; i < 2000 && !Failed(result); ++i) {
      Action action = MakeAction(u"2010/06/24 10:00:00", u"2010/06/24 10:00:00");
      action[kActId] = u"ID9" + core::ZeroPadded(i, 15);
      action[kMemo] = std::u16string(500, u'長');
      result = Users().Insert(action);
      if (!Failed(result)) ++written;
    }
    EXPECT_EQ(static_cast<uint32_t>(result), 0x80004005u);
    EXPECT_EQ(LastTrouble(), Trouble::kDiskFull);
    EXPECT_EQ(LoadActionIndex(app), 0);
    EXPECT_EQ(app.IndexCount, written) << "what was written can still be read";
    dbSession().Session->BeginTransaction();
    for (int i = 0; i < 100; ++i) InsertAction(u"2010/06/24 10:00:00");
    LoadActionIndex(app);
    EXPECT_EQ(app.IndexCount, written + 100);
    EXPECT_TRUE(Failed(dbSession().Session->Commit()));
    LoadActionIndex(app);
    EXPECT_EQ(app.IndexCount, written) << "what was undone is not in the index";
  }
  InsertAction(u"2010/06/25 10:00:00");
  DisconnectDataFile();
  EXPECT_EQ(OpenDataFile(app), 0);
  EXPECT_EQ(app.IndexCount, written + 1);
}

TEST_F(DamagedFileTest, CreationOnAFullDiskTellsItself) {
  for (const rlim_t bytes : {0, 1000, 4096, 9000, 30000, 60000, 90000}) {
    SCOPED_TRACE(bytes);
    const FullDisk full(bytes);
    host.answers = {Answer::kYes,
                    "の初期化に失敗しました。(0)\nプログラムを終了します。\n"
                    "保存先の空き容量が不足しています。"};
    if (bytes == 60000) host.answers.emplace(++host.answers.begin(), "システム情報設定エラー");
    const int result = OpenDataFile(app);
    EXPECT_EQ(dbSession().Session != nullptr, result == -1);
    if (result == -1) {
      host.answers.clear();
      DisconnectDataFile();
      std::filesystem::remove(hostPath);
      continue;
    }
    EXPECT_EQ(result, -101);
    EXPECT_TRUE(std::filesystem::is_empty(folder.HostPath())) << "the next start asks again";
  }
}

TEST_F(DamagedFileTest, AnUpgradeOnAFullDiskIsMadeAgain) {
  SomeDataFile();
  ASSERT_EQ(ConnectDataFile(path), 0);
  dbSession().Session->Execute(u"alter table t_UserData drop column f_nvcExtItems");
  dbSession().SysInfoTable->SetText(u"DBFmtVer", u"3.1.2010.0429");
  // With pages so large that the log outgrows its index: below its 32 KB there is no log at all.
  dbSession().Session->Execute(u"PRAGMA page_size=16384");
  dbSession().Session->Execute(u"PRAGMA journal_mode=DELETE");
  dbSession().Session->Execute(u"VACUUM");
  DisconnectDataFile();
  const std::string old = FileBytes();
  int refused = 0;
  for (rlim_t bytes = 0; bytes < 300000; bytes += 12000) {
    SCOPED_TRACE(bytes);
    WriteWholeFile(hostPath, old);
    host.answers = {Answer::kYes, Answer::kYes, ""};
    {
      const FullDisk full(bytes);
      if (OpenDataFile(app) == -110) ++refused;
      DisconnectDataFile();
    }
    host.answers = {Answer::kYes, Answer::kYes, "更新完了"};
    const OpenResult opened = OpenDataFile(app);
    if (opened == kOpened) host.answers.clear();
    EXPECT_TRUE(opened == kOpened || opened == kOpenedUpgraded);
    EXPECT_EQ(app.IndexCount, 50);
    Action action = MakeAction(u"2010/06/24 10:00:00", u"2010/06/24 10:00:00");
    action[kExtItems] = u"x";
    EXPECT_EQ(Users().Insert(action), S_OK);
    DisconnectDataFile();
  }
  EXPECT_GT(refused, 5);
}

// Without root's rights for a scope.
class AsNobody {
 public:
  static constexpr uid_t kNobody = 65534;
  AsNobody() { EXPECT_EQ(seteuid(kNobody), 0); }
  ~AsNobody() {
    if (seteuid(0) != 0) std::abort();
  }
};

TEST_F(DamagedFileTest, AReadOnlyFolderCanBeRead) {
  if (geteuid() != 0) GTEST_SKIP() << "needs root, to be somebody else";
  const std::string before = SomeDataFile();
  ASSERT_EQ(chown(hostPath.c_str(), AsNobody::kNobody, AsNobody::kNobody), 0);
  ASSERT_EQ(chmod(folder.HostPath().c_str(), 0555), 0);
  for (const mode_t fileMode : {0600, 0400}) {
    SCOPED_TRACE(fileMode);
    ASSERT_EQ(chmod(hostPath.c_str(), fileMode), 0);
    const AsNobody nobody;
    EXPECT_EQ(OpenDataFile(app), 0);
    EXPECT_EQ(app.IndexCount, 50);
    Action action = MakeAction(u"2010/06/24 10:00:00", u"2010/06/24 10:00:00");
    EXPECT_EQ(static_cast<uint32_t>(Users().Insert(action)), 0x80004005u);
    EXPECT_EQ(LastTrouble(), Trouble::kReadOnly);
    EXPECT_FALSE(action[kActId]);
    EXPECT_EQ(LoadActionIndex(app), 0);
    DisconnectDataFile();
    EXPECT_TRUE(FileBytes() == before);
  }
}

}  // namespace
}  // namespace store_test
