// The recorder against a model, step by step over random sequences: taps, stops, steps back,
// closings, restarts, kills between any two writes to the file, a clock that jumps, and Actions
// deleted behind the recorder's back. After each step the tables, the list, the buttons and the
// messages must be the model's. MORVENLY_MODEL_STEPS and MORVENLY_MODEL_SEED make it longer.
#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>
#include <random>

#include "recorder/recorder_model.h"
#include "recorder/recording.h"
#include "store/action_index.h"
#include "store/store_fixture.h"
#include "support/disk_calls.h"

namespace recorder_test {
namespace {

int FromEnvironment(const char* name, int otherwise) {
  const char* const value = std::getenv(name);
  return value != nullptr ? std::atoi(value) : otherwise;
}

class RecorderModel : public store_test::StoreTest {
 protected:
  // A command of the program and the model's.
  struct Command {
    void (recorder::CRecorder::*program)();
    void (Model::*model)();
  };
  static constexpr Command kRecord = {&recorder::CRecorder::OnBtnRec, &Model::Record};
  static constexpr Command kStop = {&recorder::CRecorder::OnBtnStop, &Model::StopButton};
  static constexpr Command kBack = {&recorder::CRecorder::OnBtnBack, &Model::Back};
  static constexpr Command kDelete = {&recorder::CRecorder::FxBtnDelete, &Model::Delete};
  static constexpr Command kClear = {&recorder::CRecorder::OnBtnClear, &Model::Clear};

  // Equal chances below `end`.
  size_t Pick(size_t end) { return chance_() % end; }
  bool OneIn(size_t n) { return Pick(n) == 0; }

  void Start() {
    ASSERT_EQ(store::ConnectDataFile(path), 0);
    app = core::CAppState();
    app.PlaceSepaStr = model.separator;
    ASSERT_EQ(store::LoadActionIndex(app), 0);
    OpenScreen();
  }
  void OpenScreen() {
    recorder = std::make_unique<recorder::CRecorder>(app);
    recorder->Open();
    model.OpenScreen();
  }
  void CloseScreen() {
    recorder->Close();
    model.CloseScreen();
  }

  // The clock goes on by seconds or hours, stands still, or jumps days ahead or back.
  void MoveClock() {
    static constexpr int kSteps[] = {0, 1, 40, 700, 700, 700, 5000, 20000, 86400, -3000, -90000};
    seconds_ += kSteps[Pick(std::size(kSteps))];
    const std::tm t = *gmtime(&seconds_);
    host.now = {t.tm_year + 1900, t.tm_mon + 1, t.tm_mday, t.tm_hour, t.tm_min, t.tm_sec};
    model.now = host.now;
    const Text moment = u"ID" + core::FormatDate(host.now.year, host.now.month, host.now.day) +
                        core::FormatTime(host.now.hour, host.now.minute, host.now.second);
    do {
      host.draws = {static_cast<int>(Pick(32767))};
      model.nextId = moment + core::ZeroPadded(host.draws[0] * 100 / 32767, 2);
      std::erase_if(model.nextId, [](char16_t c) { return c == u'/' || c == u':'; });
    } while (model.disk.actions.contains(model.nextId));
  }

  void TypeFields() {
    static const Text kPlaces[] = {u"会社", u"自宅", u"駅前のパン屋", u"", u"－＞裏口"};
    static const Text kTimes[] = {kMark, kMark, kMark, u"08:15", u"23:59", u"00:00", u"25:00"};
    static const Text kLatitudes[] = {u"", u"35/30/0.0", u"取得中"};
    recorder::RecorderFields& fields = recorder->fields;
    fields.place = model.fields.place = kPlaces[Pick(std::size(kPlaces))];
    fields.category1 = model.fields.category1 = OneIn(2) ? u"仕事" : u"";
    fields.time = model.fields.time = kTimes[Pick(std::size(kTimes))];
    fields.latitude = model.fields.latitude = kLatitudes[Pick(std::size(kLatitudes))];
  }

  void Select() {
    model.selected.clear();
    for (size_t i = Pick(4); i > 0 && !model.lines.empty(); i--) {
      model.selected.insert(Pick(model.lines.size()));
    }
    recorder->lines.selected = model.selected;
  }

  void Run(const Command& command) { (*recorder.*command.program)(); }

  // A question is the one message that ends so.
  void Script() {
    host.answers.clear();
    for (const Text& message : model.messages) {
      if (message.ends_with(u"？")) {
        host.answers.push_back(model.yes ? platform::Answer::kYes : platform::Answer::kNo);
      } else {
        host.answers.push_back(platform::ToUtf8(message));
      }
    }
  }

  // Another process runs the command and dies in the middle of it, or right behind it. What the
  // file then holds must be what one of the command's writes left; the next start goes on from it.
  void DieDuring(const Command& command) {
    Model whole = model;
    std::vector<Disk> states = {model.disk};
    whole.writes = &states;
    (whole.*command.model)();
    store::DisconnectDataFile();
    const int lastWrites = static_cast<int>(Pick(30));
    const pid_t child = fork();
    if (child == 0) {
      store::ConnectDataFile(path);
      store::PrepareToWrite();  // its writes belong to no command
      testing_support::diskCalls().writesUntilDeath = lastWrites;
      model = whole;
      Script();
      Run(command);
      _exit(0);
    }
    ASSERT_EQ(waitpid(child, nullptr, 0), child);
    ASSERT_EQ(store::ConnectDataFile(path), 0);
    const Disk left = ReadDisk();
    ASSERT_NE(std::find(states.begin(), states.end(), left), states.end());
    if (left != states.front() && left != states.back()) ++diedBetweenWrites;
    model.disk = left;
    model.EndByKill();
    Start();
  }

  void DeleteBehind(const Text& id) {
    Users().Delete(id);
    model.disk.actions.erase(id);
  }

  // Somebody deletes an Action, or makes it last all day.
  void ChangeBehind() {
    if (model.disk.actions.empty()) return;
    auto row = model.disk.actions.begin();
    std::advance(row, Pick(model.disk.actions.size()));
    if (OneIn(3) && !model.running.empty()) row = model.disk.actions.find(model.running);
    if (row == model.disk.actions.end()) return;
    if (!OneIn(3)) return DeleteBehind(Text(row->first));
    store::Action action;
    Users().ReadById(row->first, action);
    const Text day = row->second.start.substr(0, 11);
    action[store::kStaDateTime] = row->second.start = day + u"00:00:00";
    action[store::kEndDateTime] = row->second.end = day + u"24:00:00";
    Users().Update(row->first, action);
  }

  // Long chains and many Actions would only make the comparing slow.
  void DropOldActions() {
    if (model.disk.actions.size() < 60) return;
    std::vector<Text> ids;
    for (const auto& [id, row] : model.disk.actions) ids.push_back(id);
    for (const Text& id : ids) {
      if (std::find(model.history.begin(), model.history.end(), id) == model.history.end()) {
        DeleteBehind(id);
      }
    }
  }

  Text StoredText(std::u16string_view key) {
    Text text = u"(missing)";
    store::dbSession().TextTable->GetText(key, text);
    return text;
  }

  Disk ReadDisk() {
    Disk disk;
    store::Action action;
    Users().Select(u"select * from t_UserData");
    while (Users().GetNextRS(action) == 0) {
      disk.actions[*action[store::kActId]] = {
          *action[store::kStaDateTime], *action[store::kEndDateTime],
          *action[store::kPlace],       *action[store::kCategory1],
          *action[store::kCategory2],   action[store::kLatitude].value_or(u"-")};
    }
    Users().CloseRS();
    store::dbSession().LongTable->GetLong(u"RcdrHistNum", disk.count);
    disk.running = StoredText(u"RcdrPreActId");
    store::CRcdrDataTable& positions = *store::dbSession().RcdrTable;
    static constexpr std::u16string_view kId[] = {u"f_nchActId"};
    positions.GetRS(u"select f_nchActId from t_RcdrData order by f_i4SNo asc", kId);
    std::optional<Text> id;
    while (positions.GetNextRS({&id, 1}) == 0) disk.positions.push_back(*id);
    positions.CloseRS();
    const Text moment = StoredText(u"RcdrDateTime");
    disk.captured = {moment.empty() ? kMark : moment.substr(11), StoredText(u"RcdrLatitude"),
                     StoredText(u"RcdrPlace"), StoredText(u"RcdrCategory1"),
                     StoredText(u"RcdrCategory2")};
    return disk;
  }

  void Compare() {
    EXPECT_TRUE(ReadDisk() == model.disk);
    EXPECT_EQ(recorder->lines.texts, model.lines);
    EXPECT_EQ(recorder->lines.selected, model.selected);
    EXPECT_EQ(recorder->canGoBack, model.canGoBack);
    EXPECT_EQ(recorder->canStop, model.canStop);
    EXPECT_EQ(recorder->isRunning, model.showsRunning);
    EXPECT_EQ(app.RcdrPreActId, model.running);
    const recorder::RecorderFields& shown = recorder->fields;
    EXPECT_TRUE((Fields{shown.time, shown.latitude, shown.place, shown.category1,
                        shown.category2} == model.fields));
    std::vector<Text> messages;
    for (const platform::Message& m : host.messages) messages.push_back(m.title + u'|' + m.text);
    EXPECT_EQ(messages, model.messages);
    EXPECT_EQ(host.waitDepth, 0);
    host.messages.clear();
    model.messages.clear();
  }

  void Step() {
    MoveClock();
    if (OneIn(2)) TypeFields();
    if (OneIn(8)) ChangeBehind();
    DropOldActions();
    model.yes = !OneIn(4);
    const size_t kind = Pick(100);
    if (kind < 60) {
      static constexpr Command kOften[] = {kRecord, kRecord, kRecord, kRecord, kStop,
                                           kStop,   kStop,   kBack,   kBack,   kDelete};
      const Command& command = kind == 0 ? kClear : kOften[Pick(std::size(kOften))];
      if (command.model == &Model::Delete) Select();
      (model.*command.model)();
      Script();
      Run(command);
    } else if (kind < 75) {
      CloseScreen();
      OpenScreen();
    } else if (kind < 85) {
      CloseScreen();
      recorder::CloseRecorderSession(app);
      model.EndOrderly();
      if (OneIn(5)) model.separator = model.separator.empty() ? u"－＞" : u"";
      Start();
    } else {
      static constexpr Command kAll[] = {kRecord, kStop, kBack, kDelete, kClear};
      DieDuring(kAll[Pick(std::size(kAll))]);
    }
  }

  Model model;
  std::unique_ptr<recorder::CRecorder> recorder;
  int diedBetweenWrites = 0;

 private:
  std::mt19937 chance_{static_cast<unsigned>(FromEnvironment("MORVENLY_MODEL_SEED", 1))};
  time_t seconds_ = 1277251200;  // 2010/06/23
};

TEST_F(RecorderModel, HoldsOverRandomSequences) {
  const int steps = FromEnvironment("MORVENLY_MODEL_STEPS", 3000);
  CreateFile();
  Start();
  for (int step = 0; step < steps && !HasFailure(); ++step) {
    SCOPED_TRACE("step " + std::to_string(step));
    Step();
    Compare();
  }
  EXPECT_GT(diedBetweenWrites, steps / 100);  // or the kills have missed what they are for
}

}  // namespace
}  // namespace recorder_test
