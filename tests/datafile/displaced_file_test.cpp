// The data file is renamed over, moved or removed while it is open: nothing is written to what took
// its place, and nothing is lost.
#include <filesystem>

#include "recorder/recorder_state.h"
#include "store/action_index.h"
#include "store/store_fixture.h"
#include "store/trouble.h"
#include "store/write_burst.h"

namespace store_test {
namespace {

using namespace store;
using namespace datafile;
using enum platform::Answer;

class DisplacedFile : public StoreTest {
 protected:
  DisplacedFile() { core::g_App = &app; }
  ~DisplacedFile() override { core::g_App = nullptr; }

  // An open file with one Action; beside it a new one with two.
  void Begin() {
    DisconnectDataFile();
    for (const char* name : {"user.sdf", "user_2.sdf", "moved.sdf"}) {
      std::filesystem::remove(folder.HostPath(name));
    }
    ASSERT_EQ(CreateDataFile(newPath), 0);
    InsertAction(u"2010/06/23 10:00:00");
    InsertAction(u"2010/06/23 10:00:00");
    CreateFile();
    app.DataFile = path;
    ASSERT_EQ(OpenDataFile(app), 0);
    InsertAction(u"2010/06/23 11:00:00");
    LoadActionIndex(app);
  }
  void Move(const char* from, const char* to) {
    std::filesystem::rename(folder.HostPath(from), folder.HostPath(to));
  }
  HRESULT Write() {
    Action action = MakeAction(u"2010/06/23 12:00:00", u"2010/06/23 12:00:00");
    action[kActId] = u"ID9" + core::ZeroPadded(++written_, 15);
    return Users().Insert(action);
  }

  int written_ = 0;
  const std::u16string newPath = folder.Path(u"new.sdf");
  const std::u16string kept = folder.Path(u"user_2.sdf");
  const std::u16string moved = folder.Path(u"moved.sdf");
};

TEST_F(DisplacedFile, ItsUserChoosesWhatToGoOnWith) {
  const struct {
    const char* why;
    const char* movedTo;  // what is done to the file
    bool replaced;
    platform::Answer answer;  // Yes: what was written stays, and goes on
    std::u16string dataFile;
    std::u16string keptIn;  // the file that was open
  } rows[] = {
      {"replaced, Yes", nullptr, true, kYes, kept, kept},
      {"replaced, No", nullptr, true, kNo, path, kept},
      {"moved and replaced, Yes", "moved.sdf", true, kYes, moved, moved},
      {"moved and replaced, No", "moved.sdf", true, kNo, path, moved},
      {"moved away, Yes", "moved.sdf", false, kYes, moved, moved},
      {"removed, Yes", "new.sdf", false, kYes, path, path},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.why);
    Begin();
    if (row.movedTo) Move("user.sdf", row.movedTo);
    const bool removed = row.movedTo && std::string_view(row.movedTo) == "new.sdf";
    if (removed) std::filesystem::remove(folder.HostPath("new.sdf"));
    if (row.replaced) Move("new.sdf", "user.sdf");
    const std::string before = row.replaced ? FileBytes() : "";
    host.answers = {row.answer};
    const bool goesOn = row.answer == kYes;
    EXPECT_EQ(Write(), goesOn ? S_OK : E_FAIL);
    EXPECT_EQ(LastTrouble() == Trouble::kExchanged, !goesOn);
    EXPECT_EQ(LoadActionIndex(app), 0);
    EXPECT_EQ(app.DataFile, row.dataFile);
    EXPECT_EQ(app.IndexCount, 2);
    EXPECT_EQ(RowsIn(row.keptIn), goesOn ? 2 : 1);
    EXPECT_TRUE(!row.replaced || FileBytes() == before);
  }
}

TEST_F(DisplacedFile, ARefusedWriteLeavesAllAsItIs) {
  Begin();
  Move("new.sdf", "user.sdf");
  const std::string before = FileBytes();
  host.answers = {kCancel, kCancel, kCancel};
  EXPECT_EQ(Write(), E_FAIL);
  EXPECT_EQ(dbSession().Session->BeginTransaction(), E_FAIL);
  EXPECT_EQ(dbSession().Session->Commit(), E_FAIL) << "asks nothing again";
  {
    WriteBurst burst(*dbSession().Session);
    EXPECT_EQ(Write(), E_FAIL) << "a burst is refused as a whole, after one question";
    EXPECT_EQ(Write(), E_FAIL);
  }
  EXPECT_EQ(LastTrouble(), Trouble::kDisplaced);
  EXPECT_EQ(LoadActionIndex(app), 0);
  EXPECT_EQ(app.IndexCount, 1) << "what is open can still be read";
  // Closing asks again: what had been written would go with the file.
  host.answers = {kYes};
  recorder::CloseRecorderSession(app);
  EXPECT_EQ(app.DataFile, kept);
  EXPECT_EQ(RowsIn(kept), 1);
  EXPECT_TRUE(FileBytes() == before);
}

TEST_F(DisplacedFile, InATransactionNothingIsAskedAndAllIsUndone) {
  Begin();
  ASSERT_EQ(dbSession().Session->BeginTransaction(), S_OK);
  EXPECT_EQ(Write(), S_OK);
  Move("new.sdf", "user.sdf");
  Write();
  EXPECT_EQ(dbSession().Session->Commit(), E_FAIL);
  EXPECT_EQ(LoadActionIndex(app), 0);
  EXPECT_EQ(app.IndexCount, 1);
}

TEST_F(DisplacedFile, WhatIsNoDataFileIsNotTaken) {
  Begin();
  testing_support::WriteWholeFile(folder.HostPath("new.sdf"), "no data file");
  Move("new.sdf", "user.sdf");
  host.answers = {kNo, kOk};
  EXPECT_EQ(Write(), E_FAIL);
  EXPECT_EQ(app.DataFile, kept);
  EXPECT_EQ(Write(), S_OK);
  EXPECT_EQ(RowsIn(kept), 2);
  EXPECT_EQ(FileBytes(), "no data file");
}

}  // namespace
}  // namespace store_test
