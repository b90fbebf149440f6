#include "store/kept_index.h"

#include <sys/stat.h>

#include <fstream>
#include <random>

#include "store/action_index.h"
#include "store/store_fixture.h"
#include "store/write_step.h"
#include "support/faulty_files.h"

namespace store_test {
namespace {

using namespace store;

class KeptIndexTest : public StoreTest {
 protected:
  static constexpr int kMany = 6'000;

  static void Write(Engine& writer, int from, int count) {
    ASSERT_EQ(writer.BeginTransaction(), S_OK);
    for (int i = from; i < from + count; ++i) {
      std::u16string id = u"ID" + core::ZeroPadded(i, 16);
      if (i == from) id.back() = u'x';  // one that isn't as short to keep as the others
      const std::u16string start = u"2010/06/23 12:" + core::ZeroPadded(i * 7 % 60, 2) + u":00";
      const Field row[] = {{kActionColumns[kActId], id},
                           {kActionColumns[kStaDateTime], start},
                           {kActionColumns[kEndDateTime], start}};
      ASSERT_EQ(writer.Insert(u"t_UserData", row), S_OK);
    }
    ASSERT_EQ(writer.Commit(), S_OK);
  }

  void CreateLargeFile() {
    CreateFile();
    Write(*dbSession().Session, 0, kMany);
    ASSERT_EQ(LoadActionIndex(app), 0);
    DisconnectDataFile();
    ASSERT_TRUE(Kept());
  }

  // What is kept for the closed file as it is now.
  std::optional<IndexRows> Kept() {
    const std::unique_ptr<Engine> engine = Engine::Open(path);
    const ReadView view(*engine);
    engine->TakeRowChanges();
    const auto mark = engine->Mark();
    const auto kept = mark ? OpenKeptIndex(path, *mark) : std::nullopt;
    if (!kept) return {};
    kept->rows.ReadAhead(SIZE_MAX);
    return kept->blocks->HasFailed() ? std::nullopt : std::optional(kept->rows);
  }

  static std::u16string Lines(const core::TextList& ids, const core::TextList& starts) {
    std::u16string lines;
    for (size_t i = 0; i < ids.Count(); ++i) (lines += ids.At(i)) += starts.At(i);
    return lines;
  }

  // The index of the file opened again is the one that its rows make.
  void ExpectTrueIndex() {
    ASSERT_EQ(ConnectDataFile(path), S_OK);
    EXPECT_EQ(LoadActionIndex(app), 0);
    ReadWholeActionIndex(app);
    DisconnectDataFile();
    const std::string aside = keptPath + ".aside";
    std::rename(keptPath.c_str(), aside.c_str());
    {
      const std::unique_ptr<Engine> other = Engine::Open(path);
      SortedStarts fresh(*other);
      ASSERT_EQ(fresh.Refresh(), 0);
      EXPECT_EQ(Lines(app.ActIds, app.ActStarts), Lines(fresh.Ids(), fresh.Starts()));
    }
    std::rename(aside.c_str(), keptPath.c_str());
  }

  std::string keptPath = hostPath + "-index";
};

TEST_F(KeptIndexTest, IsTheIndexOfTheFileAsLongAsNobodyWritesToIt) {
  CreateLargeFile();
  struct stat status;
  ASSERT_EQ(stat(keptPath.c_str(), &status), 0);
  EXPECT_EQ(status.st_mode & 0777, 0600u);
  EXPECT_NE(stat((hostPath + "-journal").c_str(), &status), 0) << "the file is one file";
  const auto kept = Kept();
  EXPECT_EQ(kept->rowIds.Count(), static_cast<size_t>(kMany));
  ASSERT_EQ(ConnectDataFile(path), S_OK);
  ASSERT_EQ(LoadActionIndex(app), 0);
  EXPECT_EQ(Lines(kept->ids, kept->starts), Lines(app.ActIds, app.ActStarts));
  Write(*dbSession().Session, kMany, 300);
  DisconnectDataFile();
  ASSERT_TRUE(Kept()) << "a session's own writes are in it";
  EXPECT_EQ(Kept()->rowIds.Count(), kMany + 300u);
  Write(*Engine::Open(path), kMany + 300, 1);
  EXPECT_FALSE(Kept()) << "another program has written";
  ExpectTrueIndex();
}

TEST_F(KeptIndexTest, IsNotKeptOfAFileThatSomebodyElseHasOpen) {
  CreateLargeFile();
  ASSERT_EQ(ConnectDataFile(path), S_OK);
  ASSERT_EQ(LoadActionIndex(app), 0);
  Write(*dbSession().Session, kMany, 1);
  const std::unique_ptr<Engine> other = Engine::Open(path);
  std::optional<ReadView> reads(*other);
  other->TakeRowChanges();
  DisconnectDataFile();
  reads.reset();
  Write(*other, kMany + 1, 1);
  EXPECT_FALSE(Kept());
  ExpectTrueIndex();
}

TEST_F(KeptIndexTest, IsNothingOnceItIsDamaged) {
  CreateLargeFile();
  const std::string whole = testing_support::ReadWholeFile(keptPath);
  std::minstd_rand chance;
  for (int round = 0; round < 12; ++round) {
    std::string damaged = whole;
    const size_t place = round < 7 ? static_cast<size_t>(round) * 8 : chance() % whole.size();
    if (round % 3 == 0) {
      damaged.resize(place);
    } else {
      damaged[place] = static_cast<char>(damaged[place] ^ (1 << chance() % 8));
    }
    std::ofstream(keptPath, std::ios::binary) << damaged;
    ASSERT_FALSE(Kept()) << place;
    ExpectTrueIndex();
    ASSERT_TRUE(Kept());
  }
}

TEST_F(KeptIndexTest, IsNothingOnceTheDiskFails) {
  CreateLargeFile();
  testing_support::FaultyFiles faulty;
  for (int read = 1; faulty.Fail(testing_support::FileCall::kRead, read), read < 40; read += 4) {
    ExpectTrueIndex();
    EXPECT_GE(faulty.Count(testing_support::FileCall::kRead), read);
    ASSERT_TRUE(Kept());
  }
}

TEST_F(KeptIndexTest, IsReadAsItIsAskedFor) {
  CreateLargeFile();
  for (const bool isDamaged : {false, true}) {
    SCOPED_TRACE(isDamaged);
    ASSERT_EQ(ConnectDataFile(path), S_OK);
    ASSERT_EQ(LoadActionIndex(app), 0);
    const std::u16string last = app.ActIds.At(app.ActIds.Count() - 1);
    if (isDamaged) truncate(keptPath.c_str(), static_cast<off_t>(8 * kMany));
    const auto touching = TouchingCondition(u"2010/06/23 12:59:00", u"2010/06/23 12:59:30");
    std::unique_ptr<RowSet> rows;
    dbSession().Session->OpenRows(u"select rowid from t_UserData where " + *touching, rows);
    EXPECT_EQ(rows->Count(), kMany / 60);
    rows.reset();
    app.FindWhere = u"what it found stays";
    ReadWholeActionIndex(app);
    EXPECT_TRUE(app.FindWhere);
    InsertAction(u"2010/06/23 12:00:00");
    EXPECT_EQ(LoadActionIndex(app), 0);
    EXPECT_EQ(app.ActIds.At(app.ActIds.Count() - 1), last);
    ExpectTrueIndex();
    ASSERT_TRUE(Kept());
  }
}

TEST_F(KeptIndexTest, TheFirstWriteOfASessionLeavesWhatWasRead) {
  CreateLargeFile();
  for (const bool someoneWrites : {false, true}) {
    SCOPED_TRACE(someoneWrites);
    ASSERT_EQ(ConnectDataFile(path), S_OK);
    Engine& engine = *dbSession().Session;
    engine.TakeRowChanges();
    if (someoneWrites) Write(*Engine::Open(path), kMany, 1);
    engine.PrepareJournal();
    EXPECT_EQ(engine.TakeRowChanges().all, someoneWrites);
    {
      const WriteStep step(StepKind::kSingle, u"新規作成");
      InsertAction(u"2010/06/23 12:00:00");
    }
    EXPECT_FALSE(engine.TakeRowChanges().all) << "the first step makes its table";
    DisconnectDataFile();
  }
}

}  // namespace
}  // namespace store_test
