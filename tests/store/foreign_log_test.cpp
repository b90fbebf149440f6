#include <filesystem>

#include "store/store_fixture.h"
#include "support/process.h"

namespace store_test {
namespace {

using namespace store;

using ForeignLogTest = StoreTest;

// A backup is copied over the file while the log of a killed program lies beside it.
TEST_F(ForeignLogTest, IsNeverMixedIn) {
  app.DataFile = path;
  CreateFile();
  DisconnectDataFile();
  const auto actions = [&](int count) {
    ASSERT_EQ(datafile::OpenDataFile(app), 0);
    for (int i = 0; i < count; ++i) InsertAction(u"2010/06/23 10:00:00");
  };
  actions(1);
  const std::string copiedWhileOpen = FileBytes();
  DisconnectDataFile();
  const std::string closed = FileBytes();
  testing_support::InACopy([&] {
    actions(2);
    return 0;
  });
  const std::string own = FileBytes();
  const std::string log = testing_support::ReadWholeFile(hostPath + "-wal");
  ASSERT_FALSE(log.empty());
  for (const std::string& backup : {closed, copiedWhileOpen}) {
    SCOPED_TRACE(backup == closed ? "a copy of the closed diary" : "a copy of the open one");
    testing_support::WriteWholeFile(hostPath, backup);
    host.answers = {platform::Answer::kNo, platform::Answer::kOk};
    EXPECT_EQ(datafile::OpenDataFile(app), -200);
    EXPECT_TRUE(FileBytes() == backup);
    EXPECT_TRUE(testing_support::ReadWholeFile(hostPath + "-wal") == log);
  }
  host.answers = {platform::Answer::kYes};
  EXPECT_EQ(datafile::OpenDataFile(app), 0);
  EXPECT_EQ(app.IndexCount, 0) << "the Action was not in the copied file yet";
  DisconnectDataFile();
  EXPECT_TRUE(testing_support::ReadWholeFile(hostPath + "-wal.00") == log);
  testing_support::WriteWholeFile(hostPath, own);
  std::filesystem::rename(hostPath + "-wal.00", hostPath + "-wal");
  EXPECT_EQ(datafile::OpenDataFile(app), 0) << "its own log is brought in without a word";
  EXPECT_EQ(app.IndexCount, 3);
}

}  // namespace
}  // namespace store_test
