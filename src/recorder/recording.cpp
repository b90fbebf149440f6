// The tap: the running Action is closed, the next one opened, and the chain made to last. Nothing
// is undone over these steps: what was written before a failure stays, and since the steps keep
// their order, the next tap goes on from whatever the last of them left.
#include "recorder/recording.h"

#include "core/date_time.h"
#include "core/text.h"
#include "core/time_list.h"
#include "platform/host.h"
#include "store/action_index.h"
#include "store/session.h"
#include "store/trouble.h"

namespace recorder {
namespace {

using platform::Icon;
using store::Action;

constexpr ReadSite kRecordSite = {u"CRecorderDlg::OnBtnRec", 3963, u"CRecorderDlg::OnBtnRec", 3978};
constexpr ReadSite kStopSite = {u"CRecorderDlg::RecStop", 4810, u"CRecorderDlg::RecStop", 4827};

}  // namespace

void CRecorder::Open() {
  fields.latitude = app_.RcdrLatitude;
  fields.longitude = app_.RcdrLongitude;
  fields.place = app_.RcdrPlace;
  fields.category1 = app_.RcdrCategory1;
  fields.category2 = app_.RcdrCategory2;
  ReadStartChoice();
  if (!app_.RcdrLoaded && !Load()) return;
  SetActList();
}

bool CRecorder::Load() {
  const int loaded = LoadRecorderData(app_);
  if (loaded != 0) {
    Tell(u"レコーダーデータ読込み中にエラーが発生しました。(" + core::ZeroPadded(loaded, 1) + u")",
         u"読込みエラー", Icon::kStop);
    return false;
  }
  app_.RcdrLoaded = true;
  fields = {app_.RcdrTime,  app_.RcdrLatitude,  app_.RcdrLongitude,
            app_.RcdrPlace, app_.RcdrCategory1, app_.RcdrCategory2};
  return true;
}

bool CRecorder::Close() {
  if (ValidateInlineEdit() != 0) return false;
  CaptureRecorderFields(app_, fields);
  StoreStartChoice();
  return true;
}

void CRecorder::OnBtnRec() {
  if (ValidateInlineEdit() != 0) return;
  const std::optional<Moment> tap = TakeMoment();
  if (!tap) return;
  const platform::WaitCursor wait;
  std::optional<Action> running;
  if (!app_.RcdrPreActId.empty() && !ReadRunning(kRecordSite, running)) return;
  const std::optional<Ending> ending =
      InBurst(store::StepKind::kTap, u"記録", [&] { return WriteRecording(*tap, running); });
  if (ending) return EndWith(*ending);
  store::ReloadActionIndex(app_);
  ShowRecording(*tap, running);
}

void CRecorder::OnBtnStop() {
  if (app_.RcdrPreActId.empty()) {
    RecReopen();
  } else {
    RecStop();
  }
}

void CRecorder::RecStop() {
  if (ValidateInlineEdit() != 0) return;
  const std::optional<Moment> tap = TakeMoment();
  if (!tap) return;
  const platform::WaitCursor wait;
  std::optional<Action> running;
  if (!ReadRunning(kStopSite, running)) return;
  const std::optional<Ending> ending =
      InBurst(store::StepKind::kStop, u"記録の停止", [&] { return WriteStop(*tap, running); });
  if (ending) return EndWith(*ending);
  store::ReloadActionIndex(app_);
  SetActList();
  ResetMoment();
  ShowButtons(false);
}

// The date is always today's: a frozen time that is kept over midnight belongs to the new day.
std::optional<Moment> CRecorder::TakeMoment() const {
  const platform::LocalTime now = platform::host().Now();
  int hour = now.hour, minute = now.minute, second = now.second;
  if (fields.time != kCurrentTimeMark && core::ParseTime(fields.time, hour, minute, second) != 0) {
    core::ShowBadTime();
    return {};
  }
  return Moment{core::DateOf(now), core::FormatTime(hour, minute, second)};
}

// Leaves `running` none, after a message, if the Action has been deleted meanwhile: the recording
// goes on without it.
bool CRecorder::ReadRunning(const ReadSite& site, std::optional<Action>& running) const {
  Action action;
  const Found found = ReadRow(app_.RcdrPreActId, site, action);
  if (found == Found::kYes) running = std::move(action);
  if (found == Found::kNo) {
    Tell(u"直前のアクションが見つかりません。手動にて場所および終了日時を修正してください。",
         u"アクション修正不可", Icon::kStop);
  }
  return found != Found::kFailed;
}

std::optional<CRecorder::Ending> CRecorder::WriteRecording(const Moment& tap,
                                                           std::optional<Action>& running) {
  std::optional<Ending> ending;
  if (app_.RcdrPreActId.empty()) ending = StartChain();
  if (running) ending = CloseRunning(tap, *running);
  if (!ending) ending = OpenNext(tap);
  if (!ending) ending = AppendToHistory();
  return ending;
}

std::optional<CRecorder::Ending> CRecorder::WriteStop(const Moment& tap,
                                                      std::optional<Action>& running) {
  std::optional<Ending> ending;
  if (running) ending = CloseRunning(tap, *running);
  if (ending) return ending;
  SetRunning(u"", {});
  return WritePreActId();
}

std::optional<CRecorder::Ending> CRecorder::StartChain() {
  app_.RcdrHistory.Clear();
  const store::HRESULT result = WriteHistNum();
  if (store::Failed(result)) return Ending{CountFault(core::Hex(result)), kWriteFaultTitle, true};
  lines = {};
  return {};
}

std::optional<CRecorder::Ending> CRecorder::CloseRunning(const Moment& tap, Action& running) {
  const Moment start = StartOf(running);
  app_.RcdrPreDate = start.date;
  app_.RcdrPreTime = start.time;
  CloseAction(running, tap, fields.place, app_.PlaceSepaStr);
  const store::HRESULT result = store::dbSession().UserTable->Update(app_.RcdrPreActId, running);
  if (!store::Failed(result)) return {};
  return Ending{store::WithReason(u"レコード更新エラー(" + core::Hex(result) + u")", result),
                u"DB更新エラー", true};
}

std::optional<CRecorder::Ending> CRecorder::OpenNext(const Moment& tap) {
  Action action = NewAction(tap, fields);
  if (store::Failed(store::dbSession().UserTable->Insert(action))) {
    app_.SelActId.clear();
    return Ending{u"", u"", true};  // kept on purpose: without a message
  }
  SetRunning(*action[store::kActId], tap);
  app_.SelActId = app_.RcdrPreActId;
  if (core::SetCurDate(tap.date) != 0) return Ending{};
  app_.RcdrHistory.Append(app_.RcdrPreActId);
  return {};
}

// The length goes first: a length without its row is put right by the next loading, and a row
// without its length would only be lost.
std::optional<CRecorder::Ending> CRecorder::AppendToHistory() {
  const auto count = static_cast<int32_t>(app_.RcdrHistory.Count());
  const store::HRESULT counted = WriteHistNum();
  if (store::Failed(counted)) return KeyFault(kHistNumKey, core::Hex(counted));
  const store::HRESULT appended =
      store::dbSession().RcdrTable->SetRcdrRow(count - 1, app_.RcdrPreActId);
  if (!store::Failed(appended)) return WritePreActId();
  return Ending{
      store::WithReason(u"レコーダーデータ書込みに時にエラー発生。(" + core::Hex(appended) + u")",
                        appended),
      kWriteFaultTitle};
}

void CRecorder::ShowRecording(const Moment& tap, const std::optional<Action>& closed) {
  if (closed && !lines.texts.empty()) lines.texts.back() = ListLine(*closed, false);
  lines.texts.push_back(ListLine(NewAction(tap, fields), true));
  lines.SelectOnly(lines.texts.size() - 1);
  ResetMoment();
  ShowButtons(true);
}

}  // namespace recorder
