// A diary at random: whatever was written is taken back step by step to the first rows and done
// again to the last; what nobody else may have touched, what is kept, and what isn't.
#include "undo/undo.h"

#include <fstream>
#include <random>

#include "edit/edit_action.h"
#include "exchange/action_lines.h"
#include "exchange/import.h"
#include "recorder/recorder_state.h"
#include "recorder/recording.h"
#include "store/action_index.h"
#include "store/store_fixture.h"
#include "store/write_step.h"
#include "support/disk_calls.h"
#include "support/process.h"
#include "views/selection.h"

namespace undo {
namespace {

using store::StepKind;
using store::Turn;
using Text = std::u16string;

// Every column of every row but the stamps, in the order of the rows; and what the recorder runs,
// which is the last of a chain of Actions that are there.
std::vector<Text> Look() {
  std::vector<Text> found;
  store::CUserDataTable& users = *store::dbSession().UserTable;
  EXPECT_EQ(users.Select(u"select * from t_UserData"), store::S_OK);
  for (store::Action row; users.GetNextRS(row) == store::S_OK;) {
    row[store::kLastUpdate].reset();
    found.emplace_back();
    for (const auto& column : row) found.back() += column.value_or(u"(none)") + u'|';
  }
  users.CloseRS();
  core::CAppState chain;
  EXPECT_EQ(recorder::LoadRecorderData(chain), 0);
  found.push_back(u"running " + chain.RcdrPreActId);
  const size_t count = chain.RcdrHistory.Count();
  EXPECT_EQ(count, static_cast<size_t>(chain.RcdrHistNum));
  for (size_t i = 0; i < count; ++i) {
    store::Action action;
    EXPECT_EQ(users.ReadById(chain.RcdrHistory.At(i), action), store::S_OK);
  }
  EXPECT_TRUE(chain.RcdrPreActId.empty() || chain.RcdrHistory.At(count - 1) == chain.RcdrPreActId);
  return found;
}

class UndoTest : public store_test::StoreTest {
 protected:
  UndoTest() {
    CreateFile();
    app.DataFile = path;
    store::LoadActionIndex(app);
  }

  int Pick(int end) { return static_cast<int>(chance_() % static_cast<unsigned>(end)); }

  void Write(edit::OpenMode mode, int position) {
    GoOn();
    app.SelIndex = position;
    edit::CEditAction screen(app);
    ASSERT_TRUE(screen.Open(mode));
    screen.fields.memo = Text(static_cast<size_t>(minutes_ % 40), u'記') + u"'";
    screen.dirty = true;
    screen.OnCommand(edit::kIdWrite);
  }
  // Of those that the chain doesn't name.
  void Delete(size_t count) {
    views::ViewRows rows;
    std::vector<int> selected;
    for (size_t i = 0; i < app.ActIds.Count() && selected.size() < count; ++i) {
      const Text id(app.ActIds.At(i));
      bool isChained = false;
      for (size_t k = 0; k < app.RcdrHistory.Count(); ++k) {
        isChained = isChained || app.RcdrHistory.At(k) == id;
      }
      if (isChained) continue;
      selected.push_back(static_cast<int>(selected.size()));
      rows.RowActIds.push_back(id);
    }
    if (selected.empty()) return;
    host.answers = {platform::Answer::kYes};
    EXPECT_TRUE(views::FxEditDelete(app, rows, selected));
  }
  void Record(void (recorder::CRecorder::*command)(), bool asks = false) {
    GoOn();
    recorder::CRecorder recorder(app);
    recorder.Open();
    recorder.fields.place = u"所" + core::ZeroPadded(++places_, 1);  // always a movement
    if (asks) host.answers = {platform::Answer::kYes};
    (recorder.*command)();
    recorder.Close();
  }
  // The last one has the id of the one before it.
  void Import(int mode, int count = 3) {
    GoOn();
    Text lines;
    for (int i = 0; i < count; ++i) {
      lines += u"ID201006230000" + core::ZeroPadded(std::min(i, count - 2), 4) +
               u"\t2010/06/23\t12:00:00\t2010/06/23\t12:10:00\t" + core::ZeroPadded(minutes_, 1) +
               u"\t\t\t\r\n";
    }
    testing_support::WriteWholeFile(folder.HostPath("in.txt"), platform::ToUtf8(lines));
    host.answers = {u"インポートが完了しました。"};
    EXPECT_EQ(exchange::RunImport(app, folder.Path(u"in.txt"), exchange::kVer2, mode), 0);
  }

  void GoOn() {
    ++minutes_;
    host.now.hour = minutes_ / 60;
    host.now.minute = minutes_ % 60;
  }
  void DoAnything() {
    const bool hasChain = !app.RcdrHistory.Empty();
    switch (Pick(9)) {
      case 0:
        return Write(edit::kOpenNew, -1);
      case 1:
        return app.IndexCount > 0 ? Write(edit::kOpenChange, Pick(app.IndexCount)) : void();
      case 2:
        return Delete(1 + static_cast<size_t>(Pick(3)));
      case 3:
        return Import(Pick(2) == 0 ? exchange::kReadAdd : exchange::kReadReplace);
      case 4:
      case 5:
        return Record(&recorder::CRecorder::OnBtnRec);
      case 6:
        return hasChain ? Record(&recorder::CRecorder::OnBtnBack, true) : void();
      default:
        return hasChain ? Record(&recorder::CRecorder::OnBtnStop) : void();
    }
  }

  static int64_t ReadNumber(std::u16string_view sql) {
    std::unique_ptr<store::RowSet> rows;
    store::dbSession().Session->OpenRows(sql, rows);
    EXPECT_TRUE(rows != nullptr && rows->Next({}) == store::S_OK);
    return rows->Number(0);
  }
  static int64_t LogBytes() {
    return ReadNumber(u"select f_i8Bytes from t_UndoData order by f_i4No desc limit 1");
  }

  int places_ = 0, minutes_ = 600;
  std::mt19937 chance_{7};
};

TEST_F(UndoTest, EverythingGoesBackToTheFirstRowsAndForthToTheLast) {
  for (int round = 0; round < 12 && !HasFailure(); ++round) {
    SCOPED_TRACE(round);
    std::vector<std::vector<Text>> states;  // after each step
    Record(&recorder::CRecorder::OnBtnClear);
    Record(&recorder::CRecorder::OnBtnRec);
    states.push_back(Look());
    for (int i = 0; i < 12; ++i) {
      DoAnything();
      if (Look() != states.back()) states.push_back(Look());
    }
    if (Pick(2) == 0) {  // what can be taken back survives the night
      recorder::CloseRecorderSession(app);
      ASSERT_EQ(datafile::OpenDataFile(app), 0);
    }
    for (size_t i = states.size() - 1; i-- > 0;) {
      ASSERT_TRUE(Take(app, Turn::kUndo)) << i;
      ASSERT_EQ(Look(), states[i]) << i;
    }
    for (size_t i = 1; i < states.size(); ++i) {
      ASSERT_TRUE(Take(app, Turn::kRedo)) << i;
      ASSERT_EQ(Look(), states[i]) << i;
    }
    EXPECT_EQ(CommandText(Turn::kRedo), std::nullopt);
  }
}

// Whatever a kill leaves can be taken back to the empty diary.
TEST_F(UndoTest, AKillLeavesStepsAndRowsInAgreement) {
  recorder::CloseRecorderSession(app);
  const std::string empty = FileBytes();
  bool killed = true;
  for (int writes = 0; killed && !HasFailure(); writes += 1 + writes / 12) {
    SCOPED_TRACE("killed at write " + std::to_string(writes));
    testing_support::WriteWholeFile(hostPath, empty);
    killed = 0 == testing_support::InACopy([&] {
               datafile::OpenDataFile(app);
               testing_support::diskCalls().writesUntilDeath = writes;
               Write(edit::kOpenNew, -1);
               for (int i = 0; i < 2; ++i) Record(&recorder::CRecorder::OnBtnRec);
               Record(&recorder::CRecorder::OnBtnBack, true);
               Import(exchange::kReadReplace, 1001);
               Delete(2);
               Take(app, Turn::kUndo);
               Take(app, Turn::kUndo);
               Take(app, Turn::kRedo);
               return 1;
             });
    ASSERT_EQ(datafile::OpenDataFile(app), 0);
    while (CommandText(Turn::kUndo)) ASSERT_TRUE(Take(app, Turn::kUndo));
    EXPECT_EQ(app.IndexCount, 0);
    recorder::CloseRecorderSession(app);
  }
}

TEST_F(UndoTest, RefusesWhatOthersHaveChangedAndWhatWouldBreakTheChain) {
  Write(edit::kOpenNew, -1);
  Write(edit::kOpenChange, 0);
  EXPECT_EQ(CommandText(Turn::kUndo), u"元に戻す: 変更");
  store::Engine& engine = *store::dbSession().Session;
  ASSERT_EQ(engine.Execute(u"update t_UserData set f_nvcPlace='x'"), store::S_OK);
  const std::vector<Text> found = Look();
  host.answers = {u"「変更」のあとでアクションが変わっているため、元に戻せません。"};
  EXPECT_FALSE(Take(app, Turn::kUndo));
  EXPECT_EQ(Look(), found);
  Record(&recorder::CRecorder::OnBtnRec);
  app.RcdrHistory.Append(app.ActIds.At(0));
  host.answers = {u"「記録」のあとでレコーダーの記録が変わっているため、元に戻せません。"};
  EXPECT_FALSE(Take(app, Turn::kUndo));
}

TEST_F(UndoTest, SaysWhyTheChainCannotBeRead) {
  Record(&recorder::CRecorder::OnBtnRec);
  const auto page = static_cast<std::streamoff>(
      4096 * (ReadNumber(u"select rootpage from sqlite_schema where name='t_RcdrData'") - 1));
  recorder::CloseRecorderSession(app);
  std::fstream(hostPath, std::ios::in | std::ios::out).seekp(page) << std::string(4096, 'x');
  app.RcdrLoaded = false;
  ASSERT_EQ(datafile::OpenDataFile(app), 0);
  host.answers = {u"「記録」は元に戻せません。\nデータファイルが壊れています。"};
  EXPECT_FALSE(Take(app, Turn::kUndo));
  EXPECT_EQ(app.IndexCount, 1);
}

TEST_F(UndoTest, OneCommandIsOneStepAndSelectsWhatItBroughtBack) {
  Import(exchange::kReadAdd, 10000);
  Delete(3);
  const std::vector<Text> few = Look();
  app.FindWhere = u"f_nvcPlace = 'x'";
  core::SetCurDate(u"2012/01/01");
  EXPECT_EQ(CommandText(Turn::kUndo), u"元に戻す: 3件の削除");
  ASSERT_TRUE(Take(app, Turn::kUndo));
  EXPECT_EQ(app.IndexCount, 10000);
  EXPECT_EQ(app.FindWhere, std::nullopt);
  EXPECT_EQ(app.SelActId, app.ActIds.At(static_cast<size_t>(app.SelIndex)));
  EXPECT_EQ(core::CurDate(), u"2010/06/23");
  EXPECT_EQ(CommandText(Turn::kUndo), u"元に戻す: 10000件のインポート");
  ASSERT_TRUE(Take(app, Turn::kUndo));
  EXPECT_EQ(app.IndexCount, 0);
  ASSERT_TRUE(Take(app, Turn::kRedo));
  EXPECT_EQ(CommandText(Turn::kRedo), u"やり直す: 3件の削除");
  Write(edit::kOpenNew, -1);
  host.answers = {u"やり直す操作がありません。"};
  EXPECT_FALSE(Take(app, Turn::kRedo)) << "another write ends it";
}

TEST_F(UndoTest, AnImportThatIsNotedInGroupsGoesBackAndCountsAsItsRows) {
  Import(exchange::kReadReplace, 1002);
  Users().Delete(u"ID2010062300000250");  // so that both kinds are in one group
  const std::vector<Text> first = Look();
  const int64_t before = LogBytes();
  Import(exchange::kReadReplace, 1002);
  EXPECT_EQ(CommandText(Turn::kUndo), u"元に戻す: 1001件のインポート");
  const std::vector<Text> second = Look();
  EXPECT_NE(second, first);
  EXPECT_EQ(LogBytes() - before, 2001 * (100 + 3)) << "what a row takes, and its place";
  ASSERT_TRUE(Take(app, Turn::kUndo));
  EXPECT_EQ(Look(), first);
  ASSERT_TRUE(Take(app, Turn::kRedo));
  EXPECT_EQ(Look(), second);
}

TEST_F(UndoTest, AWriteThatFailsLeavesNoTraceInItsTransaction) {
  const Text id = InsertAction(u"2010/06/23 10:00:00");
  store::Engine& engine = *store::dbSession().Session;
  for (const bool changesFirst : {false, true}) {
    const store::WriteStep step(StepKind::kSingle, u"変更");
    store::Action action = MakeAction(u"2010/06/23 11:00:00", u"2010/06/23 11:00:00");
    ASSERT_EQ(engine.BeginTransaction(), store::S_OK);
    EXPECT_TRUE(!changesFirst || Users().Update(id, action) == store::S_OK);
    EXPECT_EQ(Users().Update(u"ID9999999999999999", action), store::DB_E_NOTFOUND);
    ASSERT_EQ(engine.Commit(), store::S_OK);
    EXPECT_EQ(CommandText(Turn::kUndo).has_value(), changesFirst);
  }
  EXPECT_TRUE(Take(app, Turn::kUndo));
}

TEST_F(UndoTest, KeepsTwoHundredSteps) {
  store::Action action = MakeAction(u"2010/06/23 10:00:00", u"2010/06/23 10:00:00");
  const Text id = InsertAction(action);
  for (int i = 0; i < store::UndoLog::kMaxSteps + 30; ++i) {
    const store::WriteStep step(StepKind::kSingle, u"変更");
    action[store::kMemo] = core::ZeroPadded(i, 1);
    ASSERT_EQ(Users().Update(id, action), store::S_OK);
  }
  int steps = 0;
  while (CommandText(Turn::kUndo)) steps += Take(app, Turn::kUndo);
  EXPECT_EQ(steps, store::UndoLog::kMaxSteps);
  Users().ReadById(id, action);
  EXPECT_EQ(action[store::kMemo], u"29");
}

TEST_F(UndoTest, DeletedTextsCanBeForgotten) {
  store::Action action = MakeAction(u"2010/06/23 10:00:00", u"2010/06/23 10:00:00");
  for (const bool clears : {true, false}) {
    action[store::kMemo] = u"SECRET";
    InsertAction(action);
    store::ReloadActionIndex(app);
    Delete(1);
    host.answers = {platform::Answer::kYes};
    if (clears) ClearHistory();
    host.answers.clear();
    recorder::CloseRecorderSession(app);
    EXPECT_EQ(FileBytes().find("SECRET") == std::string::npos, clears);
    ASSERT_EQ(datafile::OpenDataFile(app), 0);
  }
  store::Engine& engine = *store::dbSession().Session;
  engine.PrepareJournal();
  engine.StartCopy(
      folder.Path(u"daily.sdf"), [] {}, [](store::HRESULT) {});
  recorder::CloseRecorderSession(app);
  ASSERT_EQ(store::Engine::Compact(path, folder.Path(u"copy.sdf")), store::S_OK);
  for (const char* name : {"daily.sdf", "copy.sdf"}) {
    const std::string copy = testing_support::ReadWholeFile(folder.HostPath(name));
    EXPECT_NE(copy.find("t_UserData"), std::string::npos) << name;
    EXPECT_EQ(copy.find("SECRET"), std::string::npos) << name;
    EXPECT_EQ(copy.find("t_UndoData"), std::string::npos) << name;
  }
}

}  // namespace
}  // namespace undo
