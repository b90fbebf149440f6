// Compaction on real files: what the user is asked, and what stands when it is cut short.
#include "datafile/compaction.h"

#include <filesystem>

#include "recorder/recorder_state.h"
#include "store/action_index.h"
#include "store/store_fixture.h"
#include "store/write_burst.h"
#include "support/disk_calls.h"
#include "support/faulty_files.h"
#include "support/process.h"

namespace store_test {
namespace {

using namespace store;
using namespace datafile;
using platform::Answer;
using platform::files;

constexpr int kRows = 300;

class Compaction : public StoreTest {
 protected:
  Compaction() {
    app.DataFile = path;
    CreateFile();
    const WriteBurst burst(*dbSession().Session);
    for (int i = 0; i < 2 * kRows; ++i) {
      const auto id = InsertAction(u"2010/06/23 10:00:00");
      if (i % 2 == 0) Users().Delete(id);
    }
  }
  std::u16string backup = folder.Path(u"user.bak");
};

TEST_F(Compaction, KeepsTheRowsAndTheOldFile) {
  ASSERT_EQ(recorder::LoadRecorderData(app), 0);
  app.RcdrPlace = u"会社";
  app.RcdrLoaded = true;
  for (int i = 0; i <= 5; ++i) {
    files().Create(folder.Path(u"$$TmpAUD.00" + core::ZeroPadded(i, 1)));
  }
  host.answers = {Answer::kYes, "圧縮完了"};
  EXPECT_EQ(OnBtnCompact(app, path), 0);
  EXPECT_EQ(app.IndexCount, kRows) << "it is open again";
  EXPECT_FALSE(files().Exists(folder.Path(u"$$TmpAUD.006")));
  DisconnectDataFile();
  const std::string old = testing_support::ReadWholeFile(folder.HostPath("user.bak"));
  EXPECT_LT(FileBytes().size(), old.size());
  EXPECT_EQ(FileBytes().substr(18, 2), "\1\1") << "in the rollback form";
  EXPECT_EQ(RowsIn(backup), kRows);
  ASSERT_EQ(ConnectDataFile(path), 0);
  EXPECT_EQ(recorder::LoadRecorderData(app), 0);
  EXPECT_EQ(app.RcdrPlace, u"会社") << "saved before the file was closed";
}

TEST_F(Compaction, ALinkStaysALinkToTheFile) {
  DisconnectDataFile();
  const std::string target = folder.HostPath("far/diary.sdf");
  std::filesystem::create_directory(folder.HostPath("far"));
  std::filesystem::rename(hostPath, target);
  std::filesystem::create_symlink("far/diary.sdf", hostPath);
  host.answers = {Answer::kYes};
  EXPECT_EQ(CompactDataFile(path), 0);
  EXPECT_TRUE(std::filesystem::is_symlink(hostPath));
  EXPECT_FALSE(std::filesystem::is_symlink(target));
  EXPECT_EQ(RowsIn(path), kRows);
  EXPECT_EQ(RowsIn(folder.Path(u"far\\diary.bak")), kRows);
}

TEST_F(Compaction, EachNoLeavesTheFileOpenAsItWas) {
  ASSERT_TRUE(files().Create(backup));
  const std::tuple<const char*, std::u16string, std::deque<testing_support::Reply>, int> rows[] = {
      {"another name", u"other.sdf", {Answer::kNo, "圧縮中止"}, -102},
      {"another name that is not there", u"other.sdf", {Answer::kYes, "ファイル名エラー"}, 0},
      {"no compaction", u"user.sdf", {Answer::kNo, "圧縮中止"}, 0},
      {"the backup stays", u"user.sdf", {Answer::kYes, Answer::kNo, "圧縮中止"}, 0},
  };
  for (const auto& [why, file, answers, result] : rows) {
    SCOPED_TRACE(why);
    host.answers = answers;
    EXPECT_EQ(OnBtnCompact(app, folder.Path(file)), result);
    ASSERT_TRUE(dbSession().Session);
    EXPECT_TRUE(files().Exists(backup));
  }
  EXPECT_EQ(app.IndexCount, kRows);
}

TEST_F(Compaction, AFailureLeavesTheFileAsItWas) {
  using testing_support::FileCall;
  for (const auto& [call, nth] :
       {std::pair(FileCall::kCreate, 1), std::pair(FileCall::kSync, 1),
        std::pair(FileCall::kRename, 1), std::pair(FileCall::kRename, 2)}) {
    SCOPED_TRACE(testing::Message() << static_cast<int>(call) << " number " << nth);
    testing_support::FaultyFiles faulty;
    faulty.Fail(call, nth);
    host.answers = {Answer::kYes, "圧縮中にエラーが発生しました。\n処理を中止します。"};
    EXPECT_EQ(OnBtnCompact(app, path), 0);
    EXPECT_EQ(app.IndexCount, kRows);
    EXPECT_FALSE(files().Exists(folder.Path(u"$$TmpAUD.000")));
  }
}

TEST_F(Compaction, AKillLeavesAWholeFileUnderItsName) {
  DisconnectDataFile();
  const auto dies = [&](int writes, int calls) {
    const int result = testing_support::InACopy([&] {
      testing_support::FaultyFiles dying;
      dying.Die(calls);
      testing_support::diskCalls().writesUntilDeath = writes;
      host.answers = {Answer::kYes, Answer::kYes};
      return CompactDataFile(path) == 0 ? 1 : 2;
    });
    EXPECT_TRUE(result == 0 || result == 1) << result;
    return result == 0;
  };
  int writes = 0;
  for (; dies(writes, -1); writes += 3) {
    SCOPED_TRACE(testing::Message() << "killed at write " << writes);
    ASSERT_EQ(RowsIn(path), kRows);
    ASSERT_FALSE(files().Exists(backup));
  }
  EXPECT_GT(writes, 10) << "the copy was not written here";
  files().Remove(backup);
  int calls = 0;
  for (; dies(-1, calls); ++calls) {
    SCOPED_TRACE(testing::Message() << "killed at call " << calls);
    ASSERT_EQ(RowsIn(path), kRows);
  }
  EXPECT_GT(calls, 1) << "none was between the names";
}

TEST(BackupNames, ReplaceTheLastExtensionAndNeverTheFileItself) {
  for (const auto& [name, backup] :
       {std::pair(u"user.sdf", u"user.bak"), std::pair(u"a.b.c", u"a.b.bak"),
        std::pair(u"user", u"user.bak"), std::pair(u"user.BAK", u"user.BAK.bak")}) {
    SCOPED_TRACE(platform::ToUtf8(name));
    EXPECT_EQ(BackupName(name), backup);
  }
}

}  // namespace
}  // namespace store_test
